#include "sandbox/program/GuardedRun.h"

#include "sandbox/program/Sandbox.h"
#include "zephyr/console/DepthLimitError.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/ExceptionLine.h"

#include <exception>

namespace zephyr::sandbox {

void runGuarded(Sandbox& sandbox, const std::function<void(console::Console& console)>& run)
{
    if (sandbox.isQuitting()) {
        return;
    }
    try {
        run(sandbox.console());
    } catch (const console::EndOfRun&) {
        return;
    } catch (const console::DepthLimitError&) {
        return; // the log says so already
    } catch (...) {
        sandbox.console().write(console::exceptionLine(std::current_exception()), console::Output);
    }
}

} // namespace zephyr::sandbox
