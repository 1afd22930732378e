#ifndef ZEPHYR_FUZZ_GUARDEDCOMMANDS_H
#define ZEPHYR_FUZZ_GUARDEDCOMMANDS_H

#include "AliasConsoleCommand.h"
#include "HostCommands.h"
#include "zephyr/console/RunConsoleFileCommand.h"

namespace zephyr::fuzz {

/// The command `alias` without the definitions that the console leaves to a user's own risk. It removes an alias
/// that leads back to itself, which would crash the program, and one that expands to more lines than a fuzzer has
/// time for.
class GuardedAlias : public console::AliasConsoleCommand
{
public:
    GuardedAlias(AliasTable& aliases, Budget& budget);
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

private:
    AliasTable& mAliases;
    Budget& mBudget;
};

/// The command `run`, limited by the budget of a step, since a console file may run itself.
class GuardedRun : public console::RunConsoleFileCommand
{
public:
    explicit GuardedRun(Budget& budget);
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

private:
    Budget& mBudget;
};

} // namespace zephyr::fuzz

#endif
