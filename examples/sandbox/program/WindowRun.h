#ifndef ZEPHYR_SANDBOX_PROGRAM_WINDOWRUN_H
#define ZEPHYR_SANDBOX_PROGRAM_WINDOWRUN_H

namespace zephyr::sandbox {

struct Options;

/// Runs a sandbox in a window until the window is closed or `quit` is run. Needs a QGuiApplication, whose event loop it
/// runs. \return the program's exit code: 0 on success. Otherwise one line on standard error says what failed, and the
/// code is 2 if the startup file can't be run, else 1.
int runWindow(const Options& options);

} // namespace zephyr::sandbox

#endif
