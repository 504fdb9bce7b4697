#include "options.h"

#include <QCommandLineParser>
#include <QRegularExpression>
#include <cmath>
#include <limits>

namespace {

struct Parser : QCommandLineParser
{
    Q_DECLARE_TR_FUNCTIONS(Options)
public:
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, tr("Show this text.")};
    QCommandLineOption snapshot{QStringLiteral("snapshot"),
                                tr("Write a picture of the whole log instead of opening a window."),
                                tr("FILE.png")};
    QCommandLineOption size{QStringLiteral("size"), tr("Size of window or picture."),
                            tr("WIDTHxHEIGHT"), QStringLiteral("1200x900")};
    QCommandLineOption speed{QStringLiteral("speed"),
                             tr("Seconds of the log in one second of replay."), tr("FACTOR"),
                             QStringLiteral("10")};
    QCommandLineOption time{QStringLiteral("time"),
                            tr("Form of the time axis: %1.").arg(timeTypeNames().join(", ")),
                            tr("FORM"), QStringLiteral("utc")};
    QCommandLineOption leapSeconds{QStringLiteral("leap-seconds"),
                                   tr("GNSS time less UTC at the time of the log."), tr("SECONDS"),
                                   QStringLiteral("18")};
    QCommandLineOption date{QStringLiteral("date"),
                            tr("UTC day of the first epoch, for a log that never tells its date."),
                            tr("YYYY-MM-DD")};

    Parser()
    {
        setApplicationDescription(tr("Shows the log of a satellite-navigation receiver: NMEA 0183 "
                                     "with GGA, GSA, GSV and RMC."));
        addOptions({help, snapshot, size, speed, time, leapSeconds, date});
        addPositionalArgument(QStringLiteral("LOG"), tr("The log to show."));
    }
};

bool readSize(QString const& text, QSize& size)
{
    static QRegularExpression const form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    QRegularExpressionMatch const match = form.match(text);
    if (!match.hasMatch())
        return false;
    size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    return size.width() >= 1 && size.height() >= 1 && size.width() <= Options::largestSide
        && size.height() <= Options::largestSide;
}

} // namespace

QStringList timeTypeNames()
{
    return {QStringLiteral("gnss"), QStringLiteral("utc"), QStringLiteral("local"),
            QStringLiteral("tow"), QStringLiteral("seconds")};
}

QString Options::parse(QStringList const& arguments, Options& options)
{
    Parser parser;
    if (!parser.parse(arguments))
        return parser.errorText().simplified();
    QStringList const logs = parser.positionalArguments();
    if (logs.size() != 1)
        return tr("Name one log to show; --help tells the options.");
    options.logPath = logs.first();
    options.snapshotPath = parser.value(parser.snapshot);
    if (parser.isSet(parser.snapshot) && options.snapshotPath.isEmpty())
        return tr("--snapshot needs the name of a file.");
    if (!readSize(parser.value(parser.size), options.size))
        return tr("--size takes two numbers from 1 to %1, as in 1200x900.").arg(largestSide);

    bool ok = false;
    options.speed = parser.value(parser.speed).toDouble(&ok);
    if (!ok || !(options.speed >= slowestReplay && options.speed <= fastestReplay))
        return tr("--speed takes a number from %1 to %2.")
            .arg(slowestReplay)
            .arg(fastestReplay, 0, 'f', 0);
    qsizetype const form = timeTypeNames().indexOf(parser.value(parser.time));
    if (form < 0)
        return tr("--time takes one of %1.").arg(timeTypeNames().join(QStringLiteral(", ")));
    options.timeType = static_cast<ETimeType>(form);
    // The time axis keeps leap seconds in eight bits, one value of which means unknown.
    options.placement.leapSeconds = parser.value(parser.leapSeconds).toInt(&ok);
    if (!ok || qAbs(options.placement.leapSeconds) > std::numeric_limits<qint8>::max())
        return tr("--leap-seconds takes a whole number from -127 to 127.");
    if (parser.isSet(parser.date)) {
        options.placement.date = QDate::fromString(parser.value(parser.date), Qt::ISODate);
        if (!options.placement.date.isValid() || options.placement.date < QDate(1980, 1, 6))
            return tr("--date takes a day from 1980-01-06 on, as in 2020-02-07.");
    }
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
