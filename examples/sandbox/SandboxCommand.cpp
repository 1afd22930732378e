#include "sandbox/SandboxCommand.h"

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

bool contains(const std::vector<std::u32string>& list, const std::u32string& text)
{
    return std::find(list.begin(), list.end(), text) != list.end();
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

/// What may stand behind a sub-command: the switches that the line doesn't have yet, and the examples.
std::vector<std::u32string> furtherWords(const SubCommand& subCommand, const ConsoleArgs& args)
{
    std::vector<std::u32string> words;
    for (const std::u32string& name : subCommand.switches) {
        const std::u32string opened = name + U"=";
        if (!anyWordBeginsWith(args, opened)) {
            words.push_back(opened);
        }
    }
    words.insert(words.end(), subCommand.examples.begin(), subCommand.examples.end());
    return words;
}

} // namespace

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
        } else if (!contains(subCommand.switches, word.switchArg())) {
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
    // Nobody can tell a finished word from one that is being typed, as the space at the line's end is not
    // among the words: a whole sub-command and a switch with its equals sign count as finished.
    const std::u32string last = args.arg(args.argCount() - 1);
    const bool isFinished = args.argCount() == kFirstWord || last.find(U'=') != std::u32string::npos;
    return beginningWith(isFinished ? std::u32string() : last, furtherWords(found->second, args));
}

std::vector<std::u32string> SandboxCommand::subCommandNames() const
{
    std::vector<std::u32string> names;
    forEachArg([&](const std::u32string& name) { names.push_back(name); });
    return names;
}

} // namespace zephyr::sandbox
