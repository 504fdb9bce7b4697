#include "monitorwindow.h"
#include "options.h"

#include <QApplication>
#include <QTextStream>

namespace {

int fail(QString const& reason)
{
    QTextStream(stderr) << "receivermonitor: " << reason << Qt::endl;
    return EXIT_FAILURE;
}

/// What the log holds, and one line for each kind of thing that was left out of it.
void report(ReceiverLog const& log, Placement const& placement)
{
    QTextStream out(stdout);
    out << "epochs shown: " << log.epochs.size() << "\n"
        << "sound sentences: " << log.soundSentences << "\n";
    if (!log.isDateKnown && !log.epochs.isEmpty()) {
        out << "The log never tells its date: placed on "
            << (placement.date.isValid() ? placement.date.toString(Qt::ISODate)
                                         : QStringLiteral("day 0 of GNSS time, 1980-01-06"))
            << "\n";
    }
    struct Line
    {
        qint64 count;
        char const* what;
    };
    Line const lines[] = {
        {log.failedChecksums, "failed checksums"},
        {log.noSentences, "lines that are no sentence"},
        {log.leftOut.beforeFirstTime, "epochs before the first known time"},
        {log.leftOut.withoutTime, "later epochs without a time"},
        {log.leftOut.backInTime, "epochs that step back in time"},
        {log.leftOut.cn0WithoutNumber, "C/N0 without a satellite number"},
    };
    for (Line const& line : lines)
        out << "left out, " << line.what << ": " << line.count << "\n";
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    ReceiverLog log;
    {
        // Bad input gets its answer before anything asks for a display.
        QCoreApplication const core(argc, argv);
        QStringList const arguments = QCoreApplication::arguments();
        if (Options::asksForHelp(arguments)) {
            QTextStream(stdout) << Options::help();
            return EXIT_SUCCESS;
        }
        QString reason = Options::parse(arguments, options);
        if (reason.isEmpty())
            reason = LogReader::readFile(options.logPath, options.placement, log);
        if (!reason.isEmpty())
            return fail(reason);
    }

    bool const wantsWindow = options.snapshotPath.isEmpty();
    if (!wantsWindow && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication const application(argc, argv);
    MonitorWindow window(log, options.placement.leapSeconds, options.timeType, options.speed);
    int status = EXIT_SUCCESS;
    if (wantsWindow) {
        window.keepScope();
        window.resize(options.size);
        window.show();
        window.replay();
        status = QApplication::exec();
    } else if (!window.picture(options.size).save(options.snapshotPath)) {
        status = fail(Options::tr("%1: the picture cannot be written").arg(options.snapshotPath));
    }
    report(log, options.placement);
    return status;
}
