#ifndef ZEPHYR_SANDBOX_PROGRAM_BATCH_H
#define ZEPHYR_SANDBOX_PROGRAM_BATCH_H

#include "sandbox/program/Options.h"

#include <QString>

namespace zephyr::sandbox {

/// Runs a console file in a sandbox without a window, after the startup file, and prints the log to standard output
/// while it is being written. A command that fails doesn't stop the file.
/// \return the program's exit code: 0; 1 if a command failed; 2 if a file couldn't be run to its end, or the log not be
/// printed. One line on standard error says what failed.
int runBatch(const QString& file, const StartupChoice& startup);

} // namespace zephyr::sandbox

#endif
