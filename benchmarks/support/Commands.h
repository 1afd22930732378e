#ifndef ZEPHYR_BENCHMARKS_SUPPORT_COMMANDS_H
#define ZEPHYR_BENCHMARKS_SUPPORT_COMMANDS_H

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace zephyr::bench {

constexpr int kCommands = 1000;
constexpr int kCommandInLine = 500;
constexpr int kCandidates = 1000;

inline std::string commandName(int number) { return "command" + std::to_string(number); }

inline std::vector<std::string> commandNames()
{
    std::vector<std::string> names;
    for (int i = 0; i < kCommands; ++i) {
        names.push_back(commandName(i));
    }
    return names;
}

/// A line of five words, the first of which names a command.
inline std::u32string fiveWords(int command)
{
    return StringUtil::toU32String(commandName(command)) + U" first second third fourth";
}

/// Does nothing.
class EmptyCommand : public console::ConsoleCommand
{
public:
    explicit EmptyCommand(const std::string& name) : mName(StringUtil::toU32String(name)) {}

    std::u32string name() const override { return mName; }
    void execute(const console::ConsoleArgs& args, console::Console&) override
    {
        benchmark::DoNotOptimize(&args);
    }

private:
    std::u32string mName;
};

/// Registers kCommands commands that do nothing.
inline void addCommands(console::Console& console)
{
    for (const std::string& name : commandNames()) {
        console.registerCommand(std::make_unique<EmptyCommand>(name));
    }
}

/// Offers many candidates. The console asks for them at the first Tab, so every later Tab measures only the console.
class ManyCandidates : public console::ConsoleCommand
{
public:
    std::u32string name() const override { return U"choose"; }
    void execute(const console::ConsoleArgs&, console::Console&) override {}

    std::vector<std::u32string> getAutoCompleteResults(const console::ConsoleArgs&) override
    {
        return std::vector<std::u32string>(kCandidates, U"candidate");
    }
};

} // namespace zephyr::bench

#endif
