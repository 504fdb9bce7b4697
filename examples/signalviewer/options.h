#pragma once

#include <QCoreApplication>
#include <QSize>
#include <QString>
#include <QStringList>

/// What the command line asks for.
struct Options
{
    Q_DECLARE_TR_FUNCTIONS(Options)
public:
    QString snapshotPath; ///< empty for a window
    QSize size = QSize(1300, 700); ///< logical pixels, of the window or the picture
    int prn = 0; ///< satellite to show first; 0 for the first that was acquired
    unsigned seed = 1; ///< of the noise

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
