#ifndef ZEPHYR_SANDBOX_PROGRAM_GUARDEDRUN_H
#define ZEPHYR_SANDBOX_PROGRAM_GUARDEDRUN_H

#include <functional>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

class Sandbox;

/// Has `run` pass lines or console files to a sandbox's console, unless `quit` has run already. What they throw becomes
/// one line in the log, as it does for a line that is typed. On the thread that owns the sandbox.
void runGuarded(Sandbox& sandbox, const std::function<void(console::Console& console)>& run);

} // namespace zephyr::sandbox

#endif
