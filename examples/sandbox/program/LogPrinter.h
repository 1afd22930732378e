#ifndef ZEPHYR_SANDBOX_PROGRAM_LOGPRINTER_H
#define ZEPHYR_SANDBOX_PROGRAM_LOGPRINTER_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <cstddef>
#include <cstdio>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

/// An entry of a log as it is printed: in UTF-8, with the prompt in front of an executed line as the screen has
/// it, and a line feed behind.
std::string printedEntry(const console::LogEntry& entry);

/// Prints a console's log to a stream, each entry once.
///
/// - It is: a reader of snapshots that knows how far it got. It is not: told when something is written.
/// - Threads: used by one thread at a time, which needn't be the console's.
/// - Ownership: borrows console and stream.
/// - Failure: after a failed write error() says why, and nothing more is written.
class LogPrinter
{
public:
    LogPrinter(const console::Console& console, std::FILE* stream);

    /// Prints what the log has that wasn't printed yet, and flushes.
    void printNew();

    /// The system's word on why writing failed; empty while nothing has.
    const std::string& error() const { return mError; }

private:
    const console::Console& mConsole;
    console::ConsoleSnapshot mLog;
    std::FILE* mStream;
    std::size_t mPrinted = 0; // entries
    std::string mError;
};

} // namespace zephyr::sandbox

#endif
