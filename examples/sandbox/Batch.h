#ifndef ZEPHYR_SANDBOX_BATCH_H
#define ZEPHYR_SANDBOX_BATCH_H

#include <QString>

namespace zephyr::sandbox {

/// Runs the console file `file` in a sandbox without a window, after startup.console unless `skipsStartup`,
/// and prints the log to standard output while it is written. \return the program's exit code: 0, or 2 after
/// one line on standard error that says what failed.
int runBatch(const QString& file, bool skipsStartup);

} // namespace zephyr::sandbox

#endif
