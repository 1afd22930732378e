#ifndef ZEPHYR_SANDBOX_PROGRAM_BATCH_H
#define ZEPHYR_SANDBOX_PROGRAM_BATCH_H

namespace zephyr::sandbox {

struct Options;

/// Runs the console file that `--batch` names in a sandbox without a window, after the one that is run at the start, and
/// prints the log to standard output while it is written. \return the program's exit code: 0, or 2 after one line on
/// standard error that says what failed.
int runBatch(const Options& options);

} // namespace zephyr::sandbox

#endif
