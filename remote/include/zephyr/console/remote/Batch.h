#ifndef ZEPHYR_CONSOLE_REMOTE_BATCH_H
#define ZEPHYR_CONSOLE_REMOTE_BATCH_H

#include "zephyr/console/remote/detail/Export.h"

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

/// How a batch is run.
struct BatchOptions
{
    /// Whether the lines behind one that fails are run.
    bool keepsGoing = false;

    /// Where what is written to the log meanwhile is printed, in UTF-8 and each entry as it comes; null for nowhere. It
    /// stays the caller's.
    std::FILE* output = stdout;

    /// Called with each failure, in one sentence in UTF-8 such as "storm.console:12: speed: 75 is above 60 m/s."; if
    /// empty, they are printed to standard error.
    std::function<void(const std::string& failure)> report;
};

inline constexpr int kBatchSucceeded = 0;  ///< Every line ran well.
inline constexpr int kBatchLineFailed = 1; ///< A line failed.
inline constexpr int kBatchImpossible =
    2; ///< The file can't be read to its end, or the transcript can't be printed.

/// Runs the lines of a console file as Console::runFile() does, without a window and for programs that must know how it
/// went: tests, scripts, services. A line fails if it names neither a command nor an alias, or runs one that does so; if a
/// command made with the commands library fails; and if an exception leaves it, which becomes a line in the log. An EndOfRun
/// ends the batch, and is no failure.
///
/// Lines are trimmed; empty ones and those that begin with `//` are skipped. A file that can't be read is reported in a sentence,
/// and is no mistake of the program.
/// \return an exit status for the program, the greatest that holds of kBatchSucceeded, kBatchLineFailed, kBatchImpossible.
/// For the console's thread; needs no event loop. Throws `std::bad_alloc`.
ZEPHYR_CONSOLE_REMOTE_EXPORT int runBatch(Console& console, const std::filesystem::path& file,
                                          const BatchOptions& options = {});

/// As above, for lines that are run as they are. A failure is named after the line's number, from 1: "line 3: ...".
ZEPHYR_CONSOLE_REMOTE_EXPORT int runBatch(Console& console, const std::vector<std::u32string>& lines,
                                          const BatchOptions& options = {});

} // namespace zephyr::console::remote

#endif
