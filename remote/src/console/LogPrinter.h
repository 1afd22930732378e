#ifndef ZEPHYR_CONSOLE_REMOTE_CONSOLE_LOGPRINTER_H
#define ZEPHYR_CONSOLE_REMOTE_CONSOLE_LOGPRINTER_H

#include "terminal/EntryPrinter.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <optional>
#include <system_error>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

/// Prints what is written to a console's log while it lives, by whatever thread, each entry once and in order, as it
/// comes.
class LogPrinter
{
public:
    /// Prints to `out`, which must outlive it, as must the console. A null stream prints nothing.
    LogPrinter(Console& console, std::FILE* out);

    /// Prints the rest.
    ~LogPrinter();

    LogPrinter(const LogPrinter&) = delete;
    LogPrinter& operator=(const LogPrinter&) = delete;
    LogPrinter(LogPrinter&&) = delete;
    LogPrinter& operator=(LogPrinter&&) = delete;

    /// Why the stream takes no more, after which nothing is printed; nothing while all is well. From any thread.
    std::optional<std::error_code> error() const;

private:
    void printNew();

    Console& mConsole;
    std::FILE* mOut;
    EntryPrinter mPrinter;
    std::uint64_t mObserver = 0;

    mutable std::mutex mMutex; // guards what follows
    std::size_t mNext;         // entry to be printed
    std::optional<std::error_code> mError;
};

} // namespace zephyr::console::remote

#endif
