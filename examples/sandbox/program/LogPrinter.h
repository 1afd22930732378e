#ifndef ZEPHYR_SANDBOX_PROGRAM_LOGPRINTER_H
#define ZEPHYR_SANDBOX_PROGRAM_LOGPRINTER_H

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

/// Prints a console's log as it is shown to a stream, each entry once, in UTF-8.
///
/// - Threads: used by one thread at a time, which needn't be the console's.
/// - Ownership: borrows console and stream.
/// - Failure: if a write fails, error() says why and nothing more is written.
class LogPrinter
{
public:
    LogPrinter(const console::Console& console, std::FILE* stream) : mConsole(console), mStream(stream) {}

    /// Prints the entries that are new since the last call, and flushes.
    void printNew();

    /// Why writing failed, in the system's words; nothing while all is well.
    const std::optional<std::string>& error() const { return mError; }

private:
    const console::Console& mConsole;
    std::FILE* mStream;
    std::size_t mPrinted = 0; // entries
    std::optional<std::string> mError;
};

} // namespace zephyr::sandbox

#endif
