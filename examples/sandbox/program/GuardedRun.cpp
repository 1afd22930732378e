#include "sandbox/program/GuardedRun.h"

#include "sandbox/commands/QuitCommand.h"
#include "sandbox/program/Sandbox.h"

#include <algorithm>
#include <exception>
#include <string>

namespace zephyr::sandbox {

namespace {

constexpr char kErrorStart[] = "The console caught an exception: "; // as ConsoleHost has it
constexpr char kUnknownError[] = "unknown exception";

void reportError(std::string what, console::Console& console)
{
    std::replace(what.begin(), what.end(), '\n', ' ');
    console.write(kErrorStart + what, console::Output);
}

} // namespace

void runGuarded(Sandbox& sandbox, const std::function<void(console::Console& console)>& run)
{
    if (sandbox.isQuitting()) {
        return;
    }
    try {
        run(sandbox.console());
    } catch (const QuitRequest&) {
        return;
    } catch (const std::exception& error) {
        reportError(error.what(), sandbox.console());
    } catch (...) {
        reportError(kUnknownError, sandbox.console());
    }
}

} // namespace zephyr::sandbox
