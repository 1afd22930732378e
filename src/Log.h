#ifndef ZEPHYR_CONSOLE_LOG_H
#define ZEPHYR_CONSOLE_LOG_H

#include "zephyr/console/ConsoleMessageType.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

namespace zephyr::console {

/// Everything that was written, oldest first, and the file that a redirected line writes it to as well. Entries never
/// change and are never removed.
class Log
{
public:
    Log();

    /// Appends an entry and writes its text, with a line feed behind, to the redirect file if there is one that takes it.
    void append(std::u32string&& text, ConsoleMessageType type, unsigned indent);

    /// The entries so far.
    const std::vector<LogEntry>& entries() const { return mLog; }

    /// Copies up to `count` entries from index `first` on into `entries`, which held others.
    void read(std::size_t first, std::size_t count, std::vector<LogEntry>& entries) const;

    /// Whether there is a redirect file, open.
    bool isRedirected() const { return mRedirectStream.is_open(); }

    /// Writes entries from now on to `file` as well, if it could be opened. There must be no redirect file.
    void redirectTo(std::ofstream&& file) { mRedirectStream = std::move(file); }

    /// Writes no more to the redirect file, which stays open: what a second redirection does (oddity 7).
    void failRedirection() { mRedirectStream.setstate(std::ios::failbit); }

    /// Closes the redirect file, if there is one.
    void endRedirection();

private:
    std::vector<LogEntry> mLog;
    std::ofstream mRedirectStream;
};

} // namespace zephyr::console

#endif
