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

/// Prints a console's log as it is shown to a stream, each entry once, in UTF-8.
///
/// - It is: a reader of snapshots that remembers how far it got. It is not: notified when something is written.
/// - Threads: used by one thread at a time, which needn't be the console's.
/// - Ownership: borrows console and stream.
/// - Failure: if a write fails, error() says why and nothing more is written.
class LogPrinter
{
public:
    LogPrinter(const console::Console& console, std::FILE* stream);

    /// Prints the entries that are new since the last call, and flushes.
    void printNew();

    /// Why writing failed, in the system's words; empty while all is well.
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
