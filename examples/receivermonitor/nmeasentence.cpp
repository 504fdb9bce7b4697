#include "nmeasentence.h"

#include <algorithm>
#include <charconv>

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// -1 if it is no hex digit.
int hexValue(char c)
{
    if (isDigit(c))
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

bool isAddress(QByteArrayView text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) {
        return isDigit(c) || (c >= 'A' && c <= 'Z');
    });
}

NmeaSentence::Kind kindOf(QByteArrayView address)
{
    using Kind = NmeaSentence::Kind;
    // P opens the addresses that makers give out themselves, of any length: $PRGSA is no GSA.
    if (address.size() != 5 || address.front() == 'P')
        return Kind::Other;
    QByteArrayView const type = address.last(3);
    if (type == QByteArrayView("GGA"))
        return Kind::Gga;
    if (type == QByteArrayView("GSA"))
        return Kind::Gsa;
    if (type == QByteArrayView("GSV"))
        return Kind::Gsv;
    if (type == QByteArrayView("RMC"))
        return Kind::Rmc;
    return Kind::Other;
}

} // namespace

NmeaSentence::Verdict NmeaSentence::read(QByteArrayView text)
{
    qsizetype const star = text.indexOf('*');
    if (star < 1 || star + 2 >= text.size() || (text.front() != '$' && text.front() != '!'))
        return Verdict::NoSentence;
    int const high = hexValue(text[star + 1]);
    int const low = hexValue(text[star + 2]);
    if (high < 0 || low < 0 || (star + 3 < text.size() && hexValue(text[star + 3]) >= 0))
        return Verdict::NoSentence;

    QByteArrayView const body = text.sliced(1, star - 1);
    int sum = 0;
    bool printable = true;
    for (char const c : body) {
        sum ^= static_cast<unsigned char>(c);
        printable = printable && c >= ' ' && c <= '~';
    }
    if (sum != high * 16 + low)
        return Verdict::FailedChecksum;
    // A NUL changes no checksum, and two equal flipped bits cancel: soundness takes more than that.
    qsizetype const comma = body.indexOf(',');
    QByteArrayView const address = comma < 0 ? body : body.first(comma);
    if (!printable || !isAddress(address))
        return Verdict::NoSentence;

    m_fields.clear();
    m_talker = {};
    m_kind = text.front() == '$' ? kindOf(address) : Kind::Other;
    if (m_kind == Kind::Other)
        return Verdict::Sound;
    m_talker = address.first(2);
    for (qsizetype begin = comma; begin >= 0;) {
        qsizetype const next = body.indexOf(',', begin + 1);
        qsizetype const end = next < 0 ? body.size() : next;
        m_fields.append(body.sliced(begin + 1, end - begin - 1));
        begin = next;
    }
    return Verdict::Sound;
}

QByteArrayView NmeaSentence::field(qsizetype index) const
{
    return index < m_fields.size() ? m_fields[index] : QByteArrayView();
}

std::optional<int> NmeaSentence::integer(qsizetype index) const
{
    QByteArrayView const digits = field(index);
    if (digits.isEmpty() || digits.size() > 9
        || !std::all_of(digits.begin(), digits.end(), isDigit))
        return std::nullopt;
    int value = 0;
    for (char const c : digits)
        value = value * 10 + (c - '0');
    return value;
}

std::optional<double> NmeaSentence::decimal(qsizetype index) const
{
    QByteArrayView const text = field(index);
    // from_chars would also take "inf" and "nan".
    if (!std::all_of(text.begin(), text.end(),
                     [](char c) { return isDigit(c) || c == '.' || c == '-'; }))
        return std::nullopt;
    double value = 0.0;
    auto const [end, error]
        = std::from_chars(text.begin(), text.end(), value, std::chars_format::fixed);
    if (error != std::errc() || end != text.end())
        return std::nullopt;
    return value;
}
