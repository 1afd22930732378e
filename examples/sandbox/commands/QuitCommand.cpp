#include "sandbox/commands/QuitCommand.h"

#include "sandbox/commands/SandboxCommand.h"

namespace zephyr::sandbox {

using console::Console;
using console::ConsoleArgs;

namespace {

constexpr char32_t kName[] = U"quit"; // stands in help, too, in front of the description
constexpr char32_t kQuitDescription[] = U"Ends the program; whatever stands behind it in a file is not run.";
constexpr char32_t kQuitHelp[] = U"Usage: quit";

} // namespace

QuitCommand::QuitCommand(const std::function<void()>& quitting) : mQuitting(quitting)
{
    registerArgHandler(kName, {}, kQuitDescription, kQuitHelp); // for help only; execute() does the work
}

std::u32string QuitCommand::name() const
{
    return kName;
}

void QuitCommand::execute(const ConsoleArgs& args, Console& console)
{
    if (args.argCount() > 1) {
        printIncorrectUsage(kName, console, kAnswerIndent);
        return;
    }
    mQuitting();
    throw QuitRequest();
}

} // namespace zephyr::sandbox
