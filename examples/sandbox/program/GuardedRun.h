#ifndef ZEPHYR_SANDBOX_PROGRAM_GUARDEDRUN_H
#define ZEPHYR_SANDBOX_PROGRAM_GUARDEDRUN_H

#include <functional>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

class Sandbox;

/// Calls `run`, which passes lines or console files to the sandbox's console, unless `quit` has been run before. An
/// exception becomes one line in the log, just as for a line that is typed. On the thread that owns the sandbox.
void runGuarded(Sandbox& sandbox, const std::function<void(console::Console& console)>& run);

} // namespace zephyr::sandbox

#endif
