#include "options.h"
#include "viewerwindow.h"

#include <QApplication>
#include <QTextStream>

namespace {

int fail(QString const& reason)
{
    QTextStream(stderr) << "signalviewer: " << reason << Qt::endl;
    return EXIT_FAILURE;
}

/// What was found, a line for each satellite.
void report(SignalSession const& session)
{
    QTextStream out(stdout);
    out << "simulated signal, " << session.seconds() << " s\n";
    for (qsizetype i = 0; i < session.satelliteCount(); ++i) {
        SignalTracker const& tracker = session.tracker(i);
        out << "PRN " << tracker.prn() << ": code phase " << tracker.phase().codeChips
            << " chips, Doppler " << tracker.phase().dopplerHz << " Hz, C/N0 " << tracker.cn0()
            << " dB-Hz\n";
    }
}

/// False if the session has no satellite @p prn.
bool select(SignalSession& session, int prn)
{
    for (qsizetype i = 0; i < session.satelliteCount(); ++i) {
        if (session.tracker(i).prn() != prn)
            continue;
        session.select(i);
        return true;
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    {
        // Bad input gets its answer before anything asks for a display.
        QCoreApplication const core(argc, argv);
        QStringList const arguments = QCoreApplication::arguments();
        if (Options::asksForHelp(arguments)) {
            QTextStream(stdout) << Options::help();
            return EXIT_SUCCESS;
        }
        QString const reason = Options::parse(arguments, options);
        if (!reason.isEmpty())
            return fail(reason);
    }
    SignalSession session(options.seed);
    if (options.prn != 0 && !select(session, options.prn))
        return fail(Options::tr("PRN %1 is not in the signal.").arg(options.prn));

    bool const wantsWindow = options.snapshotPath.isEmpty();
    if (!wantsWindow && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication const application(argc, argv);
    ViewerWindow window(session);
    int status = EXIT_SUCCESS;
    if (wantsWindow) {
        window.resize(options.size);
        window.show();
        window.start();
        status = QApplication::exec();
    } else if (!window.picture(options.size).save(options.snapshotPath)) {
        status = fail(Options::tr("%1: the picture cannot be written").arg(options.snapshotPath));
    }
    report(session);
    return status;
}
