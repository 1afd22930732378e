#include "sandbox/commands/SandboxCommand.h"

#include "sandbox/commands/AnswerIndent.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSwitchArg.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace zephyr::sandbox {

using console::Console;
using console::ConsoleArgs;
using console::ConsoleSwitchArg;

namespace {

constexpr unsigned kFirstWord = 2; // after the command and the sub-command

bool knowsSwitch(const SubCommand& subCommand, const std::u32string& name)
{
    return std::any_of(subCommand.switches.begin(), subCommand.switches.end(),
                       [&](const SubCommandSwitch& known) { return known.name == name; });
}

/// The switch as it is typed before its value.
std::u32string opened(const SubCommandSwitch& known) { return known.name + U"="; }

std::vector<std::u32string> beginningWith(std::u32string_view prefix, const std::vector<std::u32string>& all)
{
    std::vector<std::u32string> matches;
    std::copy_if(all.begin(), all.end(), std::back_inserter(matches),
                 [&](const std::u32string& text) { return text != prefix && text.starts_with(prefix); });
    return matches;
}

bool anyWordBeginsWith(const ConsoleArgs& args, const std::u32string& prefix)
{
    for (unsigned i = kFirstWord; i < args.argCount(); ++i) {
        if (args.arg(i).starts_with(prefix)) {
            return true;
        }
    }
    return false;
}

/// Every switch with each of its values.
std::vector<std::u32string> withValues(const std::vector<SubCommandSwitch>& switches)
{
    std::vector<std::u32string> words;
    for (const SubCommandSwitch& known : switches) {
        for (const std::u32string& value : known.values) {
            words.push_back(opened(known) + value);
        }
    }
    return words;
}

/// The switches that begin with `prefix` and are not in the line yet.
std::vector<SubCommandSwitch> furtherSwitches(std::u32string_view prefix, const SubCommand& subCommand,
                                              const ConsoleArgs& args)
{
    std::vector<SubCommandSwitch> further;
    std::copy_if(subCommand.switches.begin(), subCommand.switches.end(), std::back_inserter(further),
                 [&](const SubCommandSwitch& known) {
                     return opened(known).starts_with(prefix) && !anyWordBeginsWith(args, opened(known));
                 });
    return further;
}

/// The switches and examples that may follow and begin with `prefix`. Switches come with their values as well, since
/// further presses of Tab only step through the first offer.
std::vector<std::u32string> furtherWords(std::u32string_view prefix, const SubCommand& subCommand,
                                         const ConsoleArgs& args)
{
    const std::vector<SubCommandSwitch> switches = furtherSwitches(prefix, subCommand, args);
    const std::vector<std::u32string> valued = withValues(switches);
    std::vector<std::u32string> words;
    if (switches.size() > 1 || valued.empty()) { // a bare switch alone would waste a press of Tab
        std::transform(switches.begin(), switches.end(), std::back_inserter(words), opened);
    }
    words.insert(words.end(), valued.begin(), valued.end());
    words.insert(words.end(), subCommand.examples.begin(), subCommand.examples.end());
    return beginningWith(prefix, words);
}

} // namespace

bool hasOneForm(const SubCommandWords& words) { return words.plain.empty() != words.switches.empty(); }

std::optional<std::u32string> givenValue(const SubCommandWords& words, std::size_t index,
                                         const std::u32string& name)
{
    if (index < words.plain.size()) {
        return words.plain[index];
    }
    const auto found = words.switches.find(name);
    return found == words.switches.end() ? std::nullopt : std::optional(found->second);
}

void SandboxCommand::addSubCommand(const SubCommand& subCommand, const Handler& handler)
{
    mSubCommands.emplace(subCommand.name, subCommand);
    registerArgHandler(
        subCommand.name,
        [this, subCommand, handler](const ConsoleArgs& args, Console& console) {
            run(subCommand, handler, args, console);
        },
        subCommand.description, subCommand.helpText);
}

void SandboxCommand::execute(const ConsoleArgs& args, Console& console)
{
    if (!args.subCmd().empty() && !mSubCommands.contains(args.subCmd())) {
        printIncorrectUsage(args.subCmd(), console, kAnswerIndent);
        return;
    }
    ConsoleCommand::execute(args, console);
}

void SandboxCommand::run(const SubCommand& subCommand, const Handler& handler, const ConsoleArgs& args,
                         Console& console) const
{
    const std::optional<SubCommandWords> words = sortedWords(subCommand, args, console);
    if (words && !handler(*words, console)) {
        printIncorrectUsage(subCommand.name, console, kAnswerIndent);
    }
}

/// Answers bad words, and returns nothing then.
std::optional<SubCommandWords> SandboxCommand::sortedWords(const SubCommand& subCommand,
                                                           const ConsoleArgs& args, Console& console) const
{
    SubCommandWords words;
    for (unsigned i = kFirstWord; i < args.argCount(); ++i) {
        const ConsoleSwitchArg word(args, i);
        if (args.arg(i).empty()) {
            continue; // two spaces enclose an empty word
        }
        if (word.switchArg().empty()) {
            words.plain.push_back(args.arg(i));
        } else if (!knowsSwitch(subCommand, word.switchArg())) {
            printUnrecognizedSwitch(subCommand.name, word.switchArg(), console, kAnswerIndent);
            return std::nullopt;
        } else if (!words.switches.emplace(word.switchArg(), word.value()).second) {
            printIncorrectUsage(subCommand.name, console, kAnswerIndent);
            return std::nullopt;
        }
    }
    if (words.plain.size() > subCommand.maxPlainWords) {
        printIncorrectUsage(subCommand.name, console, kAnswerIndent);
        return std::nullopt;
    }
    return words;
}

std::vector<std::u32string> SandboxCommand::getAutoCompleteResults(const ConsoleArgs& args)
{
    if (args.hasRedirect() || args.hasRedirectOpen()) {
        return {}; // the last word names a file
    }
    const auto found = mSubCommands.find(args.subCmd());
    if (found == mSubCommands.end()) {
        return args.argCount() > kFirstWord ? std::vector<std::u32string>()
                                            : beginningWith(args.subCmd(), subCommandNames());
    }
    const std::u32string last = args.arg(args.argCount() - 1);
    const bool isSwitch = last.find(U'=') != std::u32string::npos;
    if (isSwitch) {
        std::vector<std::u32string> values = beginningWith(last, withValues(found->second.switches));
        if (!values.empty()) {
            return values;
        }
    }
    // The words don't show whether the line ends with a space, that is, whether the last word is finished. A whole
    // sub-command, and a switch whose value can't be continued, count as finished.
    const bool isFinished = isSwitch || args.argCount() == kFirstWord;
    return furtherWords(isFinished ? std::u32string() : last, found->second, args);
}

std::vector<std::u32string> SandboxCommand::subCommandNames() const
{
    std::vector<std::u32string> names;
    forEachArg([&](const std::u32string& name) { names.push_back(name); });
    return names;
}

} // namespace zephyr::sandbox
