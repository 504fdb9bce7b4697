#pragma once

#include "epochassembler.h"
#include "lineartimegrid.h"

#include <QCoreApplication>
#include <QSize>
#include <QString>
#include <QStringList>

/// What the command line asks for.
struct Options
{
    Q_DECLARE_TR_FUNCTIONS(Options)
public:
    static constexpr double slowestReplay = 0.1;
    static constexpr double fastestReplay = 1e6;
    /// Pixels; a picture beyond it is a slip of the finger.
    static constexpr int largestSide = 16384;

    QString logPath;
    QString snapshotPath; ///< empty for a window
    QSize size = QSize(1200, 900); ///< logical pixels, of the window or the picture
    double speed = 10.0; ///< seconds of the log in a second of replay, within the limits above
    ETimeType timeType = eSHOW_UTC;
    Placement placement;

    /**
     * Reads a command line, the program's name first. Needs a QCoreApplication.
     *
     * @return an empty text, or in one line what is wrong; @p options is then of no use
     */
    static QString parse(QStringList const& arguments, Options& options);

    /// The text of --help.
    static QString help();

    /// True if the command line asks for nothing but the help text.
    static bool asksForHelp(QStringList const& arguments);
};

/// Names of the ways to show time on the command line, in the order of ETimeType.
QStringList timeTypeNames();
