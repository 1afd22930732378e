#ifndef ZEPHYR_SANDBOX_PROGRAM_BATCH_H
#define ZEPHYR_SANDBOX_PROGRAM_BATCH_H

namespace zephyr::sandbox {

struct Options;

/// Runs the console file that the options name in a sandbox without a window, after the startup file, and prints the log
/// to standard output while it is being written. It ends at the first line that fails, unless the options say otherwise.
/// \return the program's exit code: 0; 1 if a line failed; 2 if a file couldn't be run, or the log not be printed. A line on
///     standard error names the place and the reason of each failure.
int runBatch(const Options& options);

} // namespace zephyr::sandbox

#endif
