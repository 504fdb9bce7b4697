#include "dataarraytemplate.h"
#include "librarytest.h"

#include <cmath>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The answers by a visit to each cell.
struct Visit
{
    RunSummary summary;
    int hole;
    int valid;
    int step;
    int other;
};

Visit visit(DataArray const& column, int first, int last, double limit)
{
    Visit seen{{}, last + 1, last + 1, last + 1, last + 1};
    for (int i = last; i >= first; --i) {
        double const cell = column.getValue(i);
        if (cell != column.getValue(first))
            seen.other = i;
        if (std::isnan(cell)) {
            seen.hole = i;
            ++seen.summary.holes;
            continue;
        }
        seen.valid = i;
        seen.summary.smallest = std::fmin(seen.summary.smallest, cell);
        seen.summary.largest = std::fmax(seen.summary.largest, cell);
        double const before = i > first ? column.getValue(i - 1) : NaN;
        if (std::isnan(before))
            continue;
        double const step = std::isnan(cell - before) ? infinity : cell - before;
        seen.summary.largestStep = std::fmax(seen.summary.largestStep, step);
        if (step > limit)
            seen.step = i;
    }
    return seen;
}

bool equal(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

class tst_ColumnSummary : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void agreesWithAVisitToEachCell();
};

void tst_ColumnSummary::agreesWithAVisitToEachCell()
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        std::mt19937 random(seed);
        auto const below = [&](int limit) { return int(random() % unsigned(qMax(limit, 1))); };
        auto const cell = [&]() -> double {
            // Few holes, or long stretches of them; a sentinel that is an ordinary value.
            if (below(seed % 2 == 0 ? 3 : 400) == 0)
                return NaN;
            return below(300) == 0 ? (below(2) == 0 ? infinity : -infinity)
                                   : below(seed == 5 ? 1 : 1000) - 500; // or one value
        };
        DataArrayTemplate<double> column(seed % 3 == 0 ? 7.0 : NaN);
        for (int i = 0; i < 9000; ++i)
            column.append(cell());
        for (int step = 0; step < 3000; ++step) {
            int const size = column.dataSize();
            switch (below(20)) {
            case 0:
                column.leftshift(below(seed == 1 ? 3 : 300));
                break;
            case 1:
                column.replace(below(size), cell());
                break;
            case 2:
                if (below(100) == 0)
                    column.removeData(below(size / 2), below(size / 2));
                else if (below(100) == 0)
                    column.decimateKeepEven();
                else if (below(400) == 0)
                    column.reinit();
                break;
            default:
                for (int i = below(40); i >= 0; --i)
                    column.append(cell());
            }
            if (column.dataSize() == 0)
                continue;
            int const first = below(column.dataSize());
            int const last = first + below(below(3) == 0 ? 150 : column.dataSize() - first);
            double const limit = below(1000) - 500;
            if (last >= column.dataSize())
                continue;
            Visit const expected = visit(column, first, last, limit);
            RunSummary const found = column.summarize(first, last);
            QString const place = QStringLiteral("seed %1, step %2").arg(seed).arg(step);
            QVERIFY2(equal(found.smallest, expected.summary.smallest)
                         && equal(found.largest, expected.summary.largest)
                         && found.largestStep == expected.summary.largestStep
                         && found.holes == expected.summary.holes,
                     qPrintable(place));
            if (expected.hole > first) {
                column.fetchAhead(below(column.dataSize())); // changes nothing
                Visit const solid = visit(column, first, expected.hole - 1, limit);
                Extremes const extremes = column.extremesOf(first, expected.hole - 1);
                QVERIFY2(extremes.smallest == solid.summary.smallest
                             && extremes.largest == solid.summary.largest,
                         qPrintable(place));
            }
            QVERIFY2(column.firstHole(first, last) == expected.hole, qPrintable(place));
            QVERIFY2(column.firstValid(first, last) == expected.valid, qPrintable(place));
            QVERIFY2(column.firstOther(first, last, column.getValue(first)) == expected.other,
                     qPrintable(place));
            QVERIFY2(column.firstStepAbove(first, last, limit) == expected.step, qPrintable(place));
        }
    }
}

QTEST_GUILESS_MAIN(tst_ColumnSummary)
#include "tst_columnsummary.moc"
