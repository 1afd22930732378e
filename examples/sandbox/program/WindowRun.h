#ifndef ZEPHYR_SANDBOX_PROGRAM_WINDOWRUN_H
#define ZEPHYR_SANDBOX_PROGRAM_WINDOWRUN_H

namespace zephyr::sandbox {

struct Options;

/// Runs a sandbox in a window until it is closed or told to quit. Needs a QGuiApplication, whose event loop
/// it runs. \return the program's exit code: 0, or after one line on standard error that says what failed 1, or 2 if the
/// file that is run at the start can't be.
int runWindow(const Options& options);

} // namespace zephyr::sandbox

#endif
