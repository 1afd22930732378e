#ifndef ZEPHYR_FUZZ_GUARDEDCOMMANDS_H
#define ZEPHYR_FUZZ_GUARDEDCOMMANDS_H

#include "AliasConsoleCommand.h"
#include "HostCommands.h"
#include "zephyr/console/RunConsoleFileCommand.h"

namespace zephyr::fuzz {

/// The command `alias` without what the console lets a user do at his own risk: an alias that leads back to
/// itself, which ends the program, or that stands for more lines than a fuzzer has time for, is taken away
/// again.
class GuardedAlias : public console::AliasConsoleCommand
{
public:
    GuardedAlias(AliasTable& aliases, Budget& budget);
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

private:
    AliasTable& mAliases;
    Budget& mBudget;
};

/// The command `run`, as often in one step as the budget allows: a console file may run itself.
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
