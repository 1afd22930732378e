#ifndef ZEPHYR_SANDBOX_COMMANDS_SANDBOXCOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_SANDBOXCOMMAND_H

#include "zephyr/console/ConsoleCommand.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::sandbox {

/// The indent of every answer of the sandbox's commands, in spaces.
constexpr unsigned kAnswerIndent = 4;

/// The words behind a sub-command, sorted.
struct SubCommandWords
{
    std::vector<std::u32string> plain;                 ///< Those that are no switch, in order.
    std::map<std::u32string, std::u32string> switches; ///< Switch, such as `/speed`, to its value.
};

/// The value given as the plain word `index` or in the switch `name`, if any.
std::optional<std::u32string> givenValue(const SubCommandWords& words, std::size_t index,
                                         const std::u32string& name);

/// A switch that a sub-command knows.
struct SubCommandSwitch
{
    std::u32string name;                     ///< With its slash and without `=`.
    std::vector<std::u32string> values = {}; ///< What Tab offers; none begins with another.
};

/// A sub-command as help and completion show it.
struct SubCommand
{
    std::u32string name;
    std::u32string description;
    std::u32string helpText;
    std::vector<SubCommandSwitch> switches = {};
    std::vector<std::u32string> examples = {}; ///< Values that Tab offers.
};

/// A command whose second word says what to do: the base of the sandbox's commands.
///
/// - It is: the part that they share, which is sorting words, answering bad ones, and completion. It is not:
///   a command by itself.
/// - Threads, ownership: as for every ConsoleCommand.
/// - Failure: an unknown sub-command, a switch given twice and whatever a handler refuses are answered with
///   printIncorrectUsage(), an unknown switch with printUnrecognizedSwitch(); the handler has then changed
///   nothing.
class SandboxCommand : public console::ConsoleCommand
{
public:
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

    /// Sub-commands that begin with the second word; behind a whole sub-command its switches, bare and then with their
    /// values, and example values; for the beginning of one switch only, or behind its equals sign, that switch with its
    /// values.
    std::vector<std::u32string> getAutoCompleteResults(const console::ConsoleArgs& args) override;

protected:
    /// Answers false, before it changed or wrote anything, when the words make no sense.
    using Handler = std::function<bool(const SubCommandWords& words, console::Console& console)>;

    /// Makes `handler` run for the sub-command's name.
    void addSubCommand(const SubCommand& subCommand, const Handler& handler);

private:
    void run(const SubCommand& subCommand, const Handler& handler, const console::ConsoleArgs& args,
             console::Console& console) const;
    bool sortWords(const SubCommand& subCommand, const console::ConsoleArgs& args, console::Console& console,
                   SubCommandWords& words) const;

    std::vector<std::u32string> subCommandNames() const;

    std::map<std::u32string, SubCommand> mSubCommands;
};

} // namespace zephyr::sandbox

#endif
