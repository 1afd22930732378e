#ifndef ZEPHYR_SANDBOX_PROGRAM_OPTIONS_H
#define ZEPHYR_SANDBOX_PROGRAM_OPTIONS_H

#include "zephyr/console/commands/Reference.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace zephyr::sandbox {

/// Runs startup.console at the start if there is one.
struct UsualStartup
{};

/// Runs a console file at the start in place of startup.console. The file must exist.
struct NamedStartup
{
    QString name; ///< As the user gave it.
};

/// Runs no console file at the start.
struct NoStartup
{};

using StartupChoice = std::variant<UsualStartup, NamedStartup, NoStartup>;

/// What the command line asks for.
struct Options
{
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool probesKeys = false;                                     ///< Only show what keys send.
    std::optional<console::commands::ReferenceFormat> reference; ///< Only print what can be typed.
    StartupChoice startup;
    std::optional<QString> batch;      ///< Console file to run without a window.
    bool keepsGoing = false;           ///< Go on after a line of that file that fails.
    bool isHeadless = false;           ///< Run the simulation without a window.
    std::optional<QString> serve;      ///< The name under which other programs reach the console.
    QSize size{1280, 720};             ///< Size of the window, in logical pixels.
    QStringList lines;                 ///< Lines to run once the window is shown.
    QString keys;                      ///< Text to type after that.
    std::optional<QString> screenshot; ///< File for a picture of the window after that.
    bool quits = false;                ///< End the program after that.
    bool isPlain = false;              ///< Draw the console as it is without a view.
    bool printsLog = false;            ///< Print the console's log when the program ends.
};

/// What is wrong with a command line, in one line for the user.
struct OptionsError
{
    QString text;
};

using ParsedOptions = std::variant<Options, OptionsError>;

/// Reads a command line, which begins with the program's name. Needs no application object.
ParsedOptions parseOptions(const QStringList& arguments);

/// The text of `--help`. Needs an application object, whose name it shows.
QString helpText();

} // namespace zephyr::sandbox

#endif
