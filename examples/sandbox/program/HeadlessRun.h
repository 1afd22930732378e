#ifndef ZEPHYR_SANDBOX_PROGRAM_HEADLESSRUN_H
#define ZEPHYR_SANDBOX_PROGRAM_HEADLESSRUN_H

namespace zephyr::sandbox {

struct Options;

/// Runs a sandbox in real time without a window, for clients that attach to it, until `quit` is run. Needs a
/// QCoreApplication, whose event loop it runs. Prints the name under which it is served once it is.
/// \return the program's exit code: 0 on success. Otherwise one line on standard error says what failed, and the code is 2
///     if the startup file can't be run, else 1.
int runHeadless(const Options& options);

} // namespace zephyr::sandbox

#endif
