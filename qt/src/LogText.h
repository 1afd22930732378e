#ifndef ZEPHYR_CONSOLE_QT_LOGTEXT_H
#define ZEPHYR_CONSOLE_QT_LOGTEXT_H

#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console {
struct LogEntry;
}

namespace zephyr::console::qt {

/// What leaves the console for a file or the clipboard: the entry's text, after the prompt if it is a line that was
/// run, and a line feed.
std::u32string logText(const LogEntry& entry);

/// logText() of the entries from index `first` to before index `last`.
QString logText(const std::vector<LogEntry>& entries, std::size_t first, std::size_t last);

} // namespace zephyr::console::qt

#endif
