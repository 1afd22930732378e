#include "sandbox/commands/QuitCommand.h"

#include "sandbox/commands/AnswerIndent.h"

namespace zephyr::sandbox {

using console::Console;
using console::ConsoleArgs;

namespace {

constexpr char32_t kName[] = U"quit"; // help shows it in front of the description
constexpr char32_t kDescription[] = U"Ends the program; whatever stands behind it in a file is not run.";
constexpr char32_t kHelp[] = U"Usage: quit";

} // namespace

QuitCommand::QuitCommand(const std::function<void()>& beforeThrow) : mBeforeThrow(beforeThrow)
{
    registerArgHandler(kName, {}, kDescription, kHelp); // only so that help describes it
}

std::u32string QuitCommand::name() const { return kName; }

void QuitCommand::execute(const ConsoleArgs& args, Console& console)
{
    if (args.argCount() > 1) {
        printIncorrectUsage(kName, console, kAnswerIndent);
        return;
    }
    mBeforeThrow();
    throw QuitRequest();
}

} // namespace zephyr::sandbox
