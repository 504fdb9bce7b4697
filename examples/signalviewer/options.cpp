#include "options.h"

#include "cacode.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace {

/// Pixels. Less does not hold the two plots, and more is a slip of the finger.
constexpr QSize smallest(1300, 650);
constexpr int largestSide = 16384;

struct Parser : QCommandLineParser
{
    Q_DECLARE_TR_FUNCTIONS(Options)
public:
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, tr("Show this text.")};
    QCommandLineOption snapshot{
        QStringLiteral("snapshot"),
        tr("Write a picture after the first second of signal instead of opening a window."),
        tr("FILE.png")};
    QCommandLineOption size{QStringLiteral("size"), tr("Size of window or picture."),
                            tr("WIDTHxHEIGHT"), QStringLiteral("1300x700")};
    QCommandLineOption prn{QStringLiteral("prn"), tr("Satellite to show first."), tr("PRN")};
    QCommandLineOption seed{QStringLiteral("seed"), tr("Where the random noise starts."),
                            tr("NUMBER"), QStringLiteral("1")};

    Parser()
    {
        setApplicationDescription(
            tr("Simulates the C/A signals of a few satellites in noise, acquires and tracks them, "
               "and shows correlation and spectrum. No receiver is involved."));
        addOptions({help, snapshot, size, prn, seed});
    }
};

bool readSize(QString const& text, QSize& size)
{
    static QRegularExpression const form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    QRegularExpressionMatch const match = form.match(text);
    if (!match.hasMatch())
        return false;
    size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    return size.expandedTo(smallest) == size
        && size.boundedTo(QSize(largestSide, largestSide)) == size;
}

} // namespace

QString Options::parse(QStringList const& arguments, Options& options)
{
    Parser parser;
    if (!parser.parse(arguments))
        return parser.errorText().simplified();
    if (!parser.positionalArguments().isEmpty())
        return tr("There is nothing to name but options; --help tells them.");
    options.snapshotPath = parser.value(parser.snapshot);
    if (parser.isSet(parser.snapshot) && options.snapshotPath.isEmpty())
        return tr("--snapshot needs the name of a file.");
    if (!readSize(parser.value(parser.size), options.size)) {
        return tr("--size takes two numbers, from %1x%2 to %3x%3, as in 1500x800.")
            .arg(smallest.width())
            .arg(smallest.height())
            .arg(largestSide);
    }

    bool ok = false;
    if (parser.isSet(parser.prn)) {
        options.prn = parser.value(parser.prn).toInt(&ok);
        if (!ok || options.prn < firstPrn || options.prn > lastPrn)
            return tr("--prn takes a number from %1 to %2.").arg(firstPrn).arg(lastPrn);
    }
    options.seed = parser.value(parser.seed).toUInt(&ok);
    if (!ok)
        return tr("--seed takes a whole number from 0 on.");
    return QString();
}

QString Options::help()
{
    return Parser().helpText();
}

bool Options::asksForHelp(QStringList const& arguments)
{
    Parser parser;
    return parser.parse(arguments) && parser.isSet(parser.help);
}
