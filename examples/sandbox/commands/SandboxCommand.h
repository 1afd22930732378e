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

/// The words after a sub-command.
struct SubCommandWords
{
    std::vector<std::u32string> plain; ///< The words that are not switches, in order.
    std::map<std::u32string, std::u32string>
        switches; ///< Values by the names of their switches, such as `/speed`.
};

/// Whether all values are plain words or all are switches, and there is at least one.
bool hasOneForm(const SubCommandWords& words);

/// The value given as the plain word `index`, or else in the switch `name`, if any.
std::optional<std::u32string> givenValue(const SubCommandWords& words, std::size_t index,
                                         const std::u32string& name);

// Where a list of values ends early, GCC warns of members without an initializer.
// NOLINTBEGIN(readability-redundant-member-init)

/// A switch that a sub-command knows.
struct SubCommandSwitch
{
    std::u32string name;                     ///< With the slash and without `=`.
    std::vector<std::u32string> values = {}; ///< Values that Tab offers. None may begin with another.
};

/// A sub-command as help and completion show it.
struct SubCommand
{
    std::u32string name;
    std::u32string description;
    std::u32string helpText;
    std::size_t maxPlainWords = 0;
    std::vector<SubCommandSwitch> switches = {};
    std::vector<std::u32string> examples = {}; ///< Plain words that Tab offers.
};

// NOLINTEND(readability-redundant-member-init)

/// Base of the sandbox's commands whose second word says what to do. They share how words are sorted, how bad ones are
/// answered, and completion.
///
/// - Failure: an unknown sub-command, too many plain words, a switch given twice and whatever a handler refuses are
///   answered with printIncorrectUsage(), an unknown switch with printUnrecognizedSwitch(). Nothing has changed then.
class SandboxCommand : public console::ConsoleCommand
{
public:
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

    /// The sub-commands that begin with the second word. After a whole sub-command: its switches, first bare and then
    /// with their values, and its examples. For the beginning of a single switch, or after its equals sign: that switch
    /// with its values.
    std::vector<std::u32string> getAutoCompleteResults(const console::ConsoleArgs& args) override;

protected:
    /// Returns false, before it changes or writes anything, if the words make no sense.
    using Handler = std::function<bool(const SubCommandWords& words, console::Console& console)>;

    /// Makes `handler` run for the name of the sub-command.
    void addSubCommand(const SubCommand& subCommand, const Handler& handler);

private:
    void run(const SubCommand& subCommand, const Handler& handler, const console::ConsoleArgs& args,
             console::Console& console) const;
    std::optional<SubCommandWords> sortedWords(const SubCommand& subCommand, const console::ConsoleArgs& args,
                                               console::Console& console) const;
    std::vector<std::u32string> subCommandNames() const;

    std::map<std::u32string, SubCommand> mSubCommands;
};

} // namespace zephyr::sandbox

#endif
