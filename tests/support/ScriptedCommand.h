#ifndef ZEPHYR_TESTS_SUPPORT_SCRIPTEDCOMMAND_H
#define ZEPHYR_TESTS_SUPPORT_SCRIPTEDCOMMAND_H

#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleArgs.h"
#include "zephyr/console/ConsoleCommand.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::test {

/// A command whose behaviour a test sets. By default it does nothing and completes nothing.
class ScriptedCommand : public console::ConsoleCommand
{
public:
    using Run = std::function<void(const console::ConsoleArgs&, console::Console&)>;
    using Complete = std::function<std::vector<std::u32string>(const console::ConsoleArgs&)>;

    explicit ScriptedCommand(std::u32string name) : mName(std::move(name)) {}

    std::u32string name() const override { return mName; }

    void execute(const console::ConsoleArgs& args, console::Console& console) override
    {
        if (onExecute) {
            onExecute(args, console);
        }
    }

    std::vector<std::u32string> getAutoCompleteResults(const console::ConsoleArgs& args) override
    {
        return onComplete ? onComplete(args) : std::vector<std::u32string>();
    }

    Run onExecute;
    Complete onComplete;

private:
    std::u32string mName;
};

/// Registers a scripted command, which the console then owns.
inline ScriptedCommand& addCommand(console::Console& console, const std::u32string& name)
{
    auto command = std::make_unique<ScriptedCommand>(name);
    ScriptedCommand& registered = *command;
    console.registerCommand(std::move(command));
    return registered;
}

/// Registers a command that always offers the same candidates.
inline ScriptedCommand& addCompletingCommand(console::Console& console, const std::u32string& name,
                                             std::vector<std::u32string> candidates)
{
    ScriptedCommand& command = addCommand(console, name);
    command.onComplete = [candidates = std::move(candidates)](const console::ConsoleArgs&) {
        return candidates;
    };
    return command;
}

/// All words of a line, as its command gets them.
inline std::vector<std::u32string> wordsOf(const console::ConsoleArgs& args)
{
    std::vector<std::u32string> words;
    for (unsigned i = 0; i < args.argCount(); ++i) {
        words.push_back(args.arg(i));
    }
    return words;
}

} // namespace zephyr::test

#endif
