#ifndef ZEPHYR_CONSOLE_CONSOLECOMMAND_H
#define ZEPHYR_CONSOLE_CONSOLECOMMAND_H

#include "zephyr/console/ConsoleArgs.h"
#include "zephyr/console/detail/Export.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace zephyr::console {

class Console;

/// What runs when an argument word is given: called with the whole line and the console that runs it.
using ArgHandlerFn = std::function<void(const ConsoleArgs& args, Console& console)>;

/// One argument (sub-command) of a command.
struct ArgHandler
{
    std::u32string name;        ///< The argument word.
    ArgHandlerFn handler;       ///< What runs for it.
    std::u32string description; ///< One line; may be empty.
    std::u32string helpText;    ///< May be empty.
};

/// The base of every console command: a name, what runs under it, and a table of argument handlers with their help. A
/// host derives from it and passes objects of its class to Console::registerCommand(). A command holds no console: each
/// call passes the console that makes it.
///
/// - Threads: a command runs on the thread that executes the line, the one that owns the console.
/// - Ownership: the console owns a registered command. It destroys the command when another takes its name, at
///   Console::unregisterCommand(), at Console::shutdown() and in its own destructor; at once, unless a function of the command is running. A command's
///   destructor must not use the console.
/// - Failure: a command answers bad usage by lines in the console. An exception that it throws leaves through
///   Console::execute(), Console::keyPressed() and Console::runFile() to the host.
///
/// Names are matched whole and case-sensitively; they are ordered by code point, so that `Z` comes before
/// `a`.
class ZEPHYR_CONSOLE_EXPORT ConsoleCommand
{
public:
    virtual ~ConsoleCommand() = 0;

    /// The name under which the command is registered; it must not change while it is. Called by
    /// Console::registerCommand() and the help command.
    virtual std::u32string name() const = 0;

    /// Runs the command for a line whose first word named it. The default runs the argument handler of the
    /// second word; where there is none it asks "What do you want to do?" and lists the arguments. Throws
    /// what the handler throws.
    virtual void execute(const ConsoleArgs& args, Console& console);

    /// The candidates for the last word of the line in `args`, in the order in which Tab offers them. The
    /// default has none. Each candidate replaces the last word of the line whole.
    virtual std::vector<std::u32string> getAutoCompleteResults(const ConsoleArgs& args);

    /// Files `handler` under the word `name`. If the word is taken, its first handler stays and nothing happens. A
    /// handler under the empty word answers the bare command. Empty descriptions and help texts are stored as they are;
    /// a default text stands in for them when they are printed. Throws `std::bad_alloc` and what copying `handler`
    /// throws.
    void registerArgHandler(const std::u32string& name, const ArgHandlerFn& handler,
                            const std::u32string& description, const std::u32string& helpText);

    /// The number of argument handlers.
    unsigned argHandlerCount() const;

    /// Calls `fn` with each argument's name in ascending order. Throws `std::bad_function_call` when `fn` is
    /// empty and there is an argument, and what `fn` throws.
    void forEachArg(const std::function<void(const std::u32string&)>& fn) const;

    /// Runs the handler of `args.subCmd()` and answers true, or answers false when there is none. For
    /// `execute` overrides. Throws `std::bad_function_call` when the handler was registered empty, and what
    /// it throws.
    bool executeArgHandler(const ConsoleArgs& args, Console& console)
    {
        const auto found = mArgHandlers.find(args.subCmd());
        if (found == mArgHandlers.end()) {
            return false;
        }
        found->second.handler(args, console);
        return true;
    }

    /// Writes each argument as "name: description" at indent 4, followed by an empty line; nothing when there
    /// is no argument.
    void printArguments(Console& console) const;

    /// Writes the description and then the help text of the argument `argName`, each at `indent` spaces. An
    /// unknown argument is answered with "'argName' is not a valid argument." at indent 4, whatever `indent`
    /// says.
    void printHelp(const std::u32string& argName, Console& console, unsigned indent) const;

    /// Writes "Invalid usage" at `indent` spaces, an empty line of indent 4, and printHelp().
    void printIncorrectUsage(const std::u32string& argName, Console& console, unsigned indent) const;

    /// Writes "Unrecognized switch 'switchText'" at `indent` spaces, and printHelp().
    void printUnrecognizedSwitch(const std::u32string& argName, const std::u32string& switchText,
                                 Console& console, unsigned indent) const;

protected:
    /// A command without arguments.
    ConsoleCommand();

    /// Copies the argument handlers, for derived classes that are to be copied. A handler that holds a pointer to its
    /// command still calls the command that registered it.
    ConsoleCommand(const ConsoleCommand&) = default;

    /// Takes the argument handlers over, which go on calling the command that registered them.
    ConsoleCommand(ConsoleCommand&&) = default;

    /// As the constructor that copies.
    ConsoleCommand& operator=(const ConsoleCommand&) = default;

    /// As the constructor that moves.
    ConsoleCommand& operator=(ConsoleCommand&&) = default;

private:
    std::map<std::u32string, ArgHandler> mArgHandlers;
};

} // namespace zephyr::console

#endif
