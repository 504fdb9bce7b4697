#include "cacode.h"

#include <QTest>
#include <algorithm>
#include <set>

namespace {
/// The first ten chips of each code as table 3-Ia of IS-GPS-200 prints them, in octal.
constexpr int firstChips[]
    = {01440, 01620, 01710, 01744, 01133, 01455, 01131, 01454, 01626, 01504, 01642,
       01750, 01764, 01772, 01775, 01776, 01156, 01467, 01633, 01715, 01746, 01763,
       01063, 01706, 01743, 01761, 01770, 01774, 01127, 01453, 01625, 01712};
} // namespace

/// Faults: a wrong tap or selector, a code that starts at the wrong chip.
class tst_CaCode : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void isThePublishedCode();
};

void tst_CaCode::isThePublishedCode()
{
    for (int prn = firstPrn; prn <= lastPrn; ++prn) {
        CaCode const code = caCode(prn);
        int chips = 0;
        for (std::size_t i = 0; i < 10; ++i)
            chips = chips << 1 | (code[i] < 0 ? 1 : 0);
        QCOMPARE(chips, firstChips[prn - firstPrn]);
        QCOMPARE(std::count(code.begin(), code.end(), -1), 512);
        // Only a Gold code takes no more than these values at all other shifts.
        std::set<int> correlations;
        for (std::size_t shift = 1; shift < code.size(); ++shift) {
            int sum = 0;
            for (std::size_t i = 0; i < code.size(); ++i)
                sum += code[i] * code[(i + shift) % code.size()];
            correlations.insert(sum);
        }
        QCOMPARE(correlations, (std::set<int>{-65, -1, 63}));
    }
}

QTEST_APPLESS_MAIN(tst_CaCode)
#include "tst_cacode.moc"
