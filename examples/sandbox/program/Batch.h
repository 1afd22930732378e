#ifndef ZEPHYR_SANDBOX_PROGRAM_BATCH_H
#define ZEPHYR_SANDBOX_PROGRAM_BATCH_H

#include "sandbox/program/Options.h"

#include <QString>

namespace zephyr::sandbox {

/// Runs a console file in a sandbox without a window, after the startup file, and prints the log to standard output
/// while it is being written. \return the program's exit code: 0, or 2 after one line on standard error that says what
/// failed.
int runBatch(const QString& file, const StartupChoice& startup);

} // namespace zephyr::sandbox

#endif
