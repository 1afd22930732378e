#include "HostCommands.h"

#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <string>
#include <vector>

namespace zephyr::fuzz {

namespace {

using console::Console;
using console::ConsoleArgs;

constexpr std::size_t kLongWord = 2100; // code points, more than fit into the input line

std::u32string joinedArguments(const ConsoleArgs& args)
{
    std::u32string line;
    for (unsigned i = 1; i < args.argCount(); ++i) {
        line.append(i == 1 ? U"" : U" ").append(args.arg(i));
    }
    return line;
}

std::vector<std::u32string> candidatesFor(const ConsoleArgs& args)
{
    if (args.argCount() > 3) {
        return {};
    }
    return {U"alpha", U"beta gamma", U"", std::u32string(kLongWord, U'w'), args.subCmd()};
}

/// Calls `run` if commands may still run lines in this step.
template <typename Run>
void runInside(Budget& budget, Run run)
{
    budget.ranInnerLines = true;
    if (budget.innerLines > 0) {
        --budget.innerLines;
        run();
    }
}

void registerWriters(Console& console)
{
    test::addCommand(console, U"say").onExecute = [](const ConsoleArgs& args, Console& c) {
        c.write(joinedArguments(args), console::Output);
    };
    test::addCommand(console, U"many").onExecute = [](const ConsoleArgs& args, Console& c) {
        for (unsigned i = 0; i < args.argCount(); ++i) {
            c.writeIndented(args.arg(i) + U'\n', console::Prompt, i);
        }
    };
    test::addCommand(console, U"fail").onExecute = [](const ConsoleArgs&, Console& c) {
        c.newline();
        throw CommandFailure();
    };
    test::addCommand(console, U"pick").onComplete = candidatesFor;
}

void registerRunners(Console& console, Budget& budget)
{
    test::addCommand(console, U"nest").onExecute = [&budget](const ConsoleArgs& args, Console& c) {
        runInside(budget, [&] { c.execute(joinedArguments(args)); });
    };
    test::addCommand(console, U"press").onExecute = [&budget](const ConsoleArgs&, Console& c) {
        runInside(budget, [&] { c.keyPressed(Qt::Key_Return, Qt::NoModifier, {}); });
    };
}

void registerChangers(Console& console)
{
    test::addCommand(console, U"swap").onExecute = [](const ConsoleArgs& args, Console& c) {
        test::addCommand(c, args.subCmd());
        c.write(args.cmd(), console::Output);
    };
    test::addCommand(console, U"quit").onExecute = [](const ConsoleArgs& args, Console& c) {
        c.shutdown();
        c.write(args.cmd(), console::Output);
    };
    test::addCommand(console, U"reopen").onExecute = [](const ConsoleArgs&, Console& c) {
        c.close();
        c.open();
    };
}

} // namespace

void registerHostCommands(Console& console, Budget& budget)
{
    registerWriters(console);
    registerRunners(console, budget);
    registerChangers(console);
}

} // namespace zephyr::fuzz
