#ifndef ZEPHYR_CONSOLE_LOG_H
#define ZEPHYR_CONSOLE_LOG_H

#include "LogEntries.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <cstddef>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console {

/// Everything that was written, oldest first, and the redirect file, which gets a copy of what is written while it is
/// open. Entries never change and are never removed.
class Log
{
public:
    /// Appends an entry. If a redirect file is open and no write to it has failed, it gets the text and a line feed.
    void append(LogEntry&& entry);

    /// The entries so far.
    const LogEntries& entries() const { return mLog; }

    /// Replaces the contents of `entries` by up to `count` entries of the log, from index `first` on.
    void read(std::size_t first, std::size_t count, std::vector<LogEntry>& entries) const;

    /// Up to `count` code points of the entry `index`, from code point `first` on; an empty part of length 0 if there is
    /// no such entry.
    LogPart readPart(std::size_t index, std::size_t first, std::size_t count) const;

    /// Whether a redirect file is open.
    bool isRedirected() const { return mRedirectStream.is_open(); }

    /// Makes `file` the redirect file if it could be opened. No redirect file may be open.
    void redirectTo(std::ofstream&& file) { mRedirectStream = std::move(file); }

    /// Stops writing to the redirect file, but leaves it open. A second redirection does this to the first (oddity 7).
    void failRedirection() { mRedirectStream.setstate(std::ios::failbit); }

    /// Closes the redirect file if one is open.
    void endRedirection();

private:
    void mirror(const std::u32string& text);

    LogEntries mLog;
    std::ofstream mRedirectStream;
};

} // namespace zephyr::console

#endif
