#include "sandbox/QuitCommand.h"

#include "sandbox/SandboxCommand.h"

namespace zephyr::sandbox {

using console::Console;
using console::ConsoleArgs;

namespace {

constexpr char32_t kBare[] = U""; // the word behind a command that stands alone
constexpr char32_t kDescription[] = U"Ends the program; whatever stands behind it in a file is not run.";
constexpr char32_t kHelp[] = U"Usage: quit";

} // namespace

QuitCommand::QuitCommand(const std::function<void()>& quitting)
{
    registerArgHandler(
        kBare,
        [quitting](const ConsoleArgs&, Console&) {
            quitting();
            throw QuitRequest();
        },
        kDescription, kHelp);
}

std::u32string QuitCommand::name() const
{
    return U"quit";
}

void QuitCommand::execute(const ConsoleArgs& args, Console& console)
{
    if (args.argCount() > 1) {
        printIncorrectUsage(kBare, console, kAnswerIndent);
        return;
    }
    executeArgHandler(args, console);
}

} // namespace zephyr::sandbox
