#include "sandbox/commands/SandboxCommand.h"

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

constexpr unsigned kFirstWord = 2; // behind the command and the sub-command

bool knowsSwitch(const SubCommand& subCommand, const std::u32string& name)
{
    return std::any_of(subCommand.switches.begin(), subCommand.switches.end(),
                       [&](const SubCommandSwitch& known) { return known.name == name; });
}

/// The switch as far as its value.
std::u32string opened(const SubCommandSwitch& known)
{
    return known.name + U"=";
}

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

/// Each of `switches` with each of its values.
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

/// The switches that the line doesn't have yet and that begin with `prefix`.
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

/// What may stand behind a sub-command and begins with `prefix`: switches and examples. Each switch comes with its
/// values as well, since Tab only walks along what was offered at first and never completes that further.
std::vector<std::u32string> furtherWords(std::u32string_view prefix, const SubCommand& subCommand,
                                         const ConsoleArgs& args)
{
    const std::vector<SubCommandSwitch> switches = furtherSwitches(prefix, subCommand, args);
    const std::vector<std::u32string> valued = withValues(switches);
    std::vector<std::u32string> words;
    if (switches.size() > 1 || valued.empty()) { // or else the bare one would be a Tab that tells nothing
        std::transform(switches.begin(), switches.end(), std::back_inserter(words), opened);
    }
    words.insert(words.end(), valued.begin(), valued.end());
    words.insert(words.end(), subCommand.examples.begin(), subCommand.examples.end());
    return beginningWith(prefix, words);
}

} // namespace

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
    SubCommandWords words;
    if (sortWords(subCommand, args, console, words) && !handler(words, console)) {
        printIncorrectUsage(subCommand.name, console, kAnswerIndent);
    }
}

bool SandboxCommand::sortWords(const SubCommand& subCommand, const ConsoleArgs& args, Console& console,
                               SubCommandWords& words) const
{
    for (unsigned i = kFirstWord; i < args.argCount(); ++i) {
        const ConsoleSwitchArg word(args, i);
        if (args.arg(i).empty()) {
            continue; // between two spaces
        }
        if (word.switchArg().empty()) {
            words.plain.push_back(args.arg(i));
        } else if (!knowsSwitch(subCommand, word.switchArg())) {
            printUnrecognizedSwitch(subCommand.name, word.switchArg(), console, kAnswerIndent);
            return false;
        } else if (!words.switches.emplace(word.switchArg(), word.value()).second) {
            printIncorrectUsage(subCommand.name, console, kAnswerIndent);
            return false;
        }
    }
    return true;
}

std::vector<std::u32string> SandboxCommand::getAutoCompleteResults(const ConsoleArgs& args)
{
    if (args.hasRedirect() || args.hasRedirectOpen()) {
        return {}; // the word at the end is a file's name
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
    // Nobody can tell a finished word from one that is being typed, as the space at the line's end is not
    // among the words: a whole sub-command and a switch whose value can't go on count as finished.
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
