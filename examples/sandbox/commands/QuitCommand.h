#ifndef ZEPHYR_SANDBOX_COMMANDS_QUITCOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_QUITCOMMAND_H

#include "zephyr/console/ConsoleCommand.h"

#include <functional>

namespace zephyr::sandbox {

/// What QuitCommand throws through the console, so that nothing behind it runs, neither the rest of an alias nor of a
/// console file. It is no std::exception, as nothing went wrong.
struct QuitRequest
{};

/// The command `quit`: tells that the program shall end and then throws a QuitRequest.
class QuitCommand : public console::ConsoleCommand
{
public:
    /// `quitting` is called before each throw.
    explicit QuitCommand(const std::function<void()>& quitting);

    std::u32string name() const override;
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

private:
    std::function<void()> mQuitting;
};

} // namespace zephyr::sandbox

#endif
