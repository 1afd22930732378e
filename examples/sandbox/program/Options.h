#ifndef ZEPHYR_SANDBOX_PROGRAM_OPTIONS_H
#define ZEPHYR_SANDBOX_PROGRAM_OPTIONS_H

#include <QSize>
#include <QString>
#include <QStringList>

namespace zephyr::sandbox {

/// What the command line asks for.
struct Options
{
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool probesKeys = false;   ///< Only show what keys send.
    bool skipsStartup = false; ///< Leave startup.console out.
    QString startup;           ///< The console file to run in its place; empty for none.
    QString batch;             ///< The console file to run without a window; empty for a window.
    QSize size{1280, 720};     ///< Of the window, in logical pixels.
    QStringList lines;         ///< To run once the window is shown.
    QString keys;              ///< To type after that.
    QString screenshot;        ///< The file for a picture of the window after that; empty for none.
    bool quits = false;        ///< End the program after that.
    bool printsLog = false;    ///< Print the console's log when the program ends.
};

/// Options, or why there are none.
struct ParsedOptions
{
    Options options;
    QString error; ///< One line; empty if all is well.
};

/// Reads a command line, the program's name first. Needs no application object.
ParsedOptions parseOptions(const QStringList& arguments);

/// What `--help` prints. Needs an application object, whose name it shows.
QString helpText();

} // namespace zephyr::sandbox

#endif
