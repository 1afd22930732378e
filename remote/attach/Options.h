#ifndef ZEPHYR_ATTACH_OPTIONS_H
#define ZEPHYR_ATTACH_OPTIONS_H

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <optional>
#include <variant>

namespace zephyr::attach {

/// What the command line asks for.
struct Options
{
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool lists = false;          ///< Only print what runs.
    std::optional<QString> name; ///< The program; nothing for the only one that runs.
    std::optional<QString> line; ///< A line to run.
    std::optional<QString> file; ///< A file whose lines are run; "-" is standard input.
    bool keepsGoing = false;     ///< Run the lines behind one that failed.
    bool follows = false;        ///< Print the log as it grows.
    qint64 last = 10;            ///< The number of entries to print of the log that there is.
    bool isJson = false;         ///< Print JSON lines.
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

} // namespace zephyr::attach

#endif
