#ifndef ZEPHYR_SANDBOX_COMMANDS_QUITCOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_QUITCOMMAND_H

#include "zephyr/console/ConsoleCommand.h"

#include <functional>

namespace zephyr::sandbox {

/// QuitCommand throws this through the console, so that neither the rest of an alias nor that of a console file runs.
/// It is no std::exception, since nothing went wrong.
struct QuitRequest
{};

/// The command `quit`: calls back and then throws a QuitRequest.
class QuitCommand : public console::ConsoleCommand
{
public:
    /// `beforeThrow` is called before each throw.
    explicit QuitCommand(const std::function<void()>& beforeThrow);

    std::u32string name() const override;
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

private:
    std::function<void()> mBeforeThrow;
};

} // namespace zephyr::sandbox

#endif
