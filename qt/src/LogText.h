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

/// An entry as text for a file or the clipboard: as the user sees it, with a line feed at its end.
std::u32string logText(const LogEntry& entry);

/// logText() of the entries in the half-open range of indices [first, last).
QString logText(const std::vector<LogEntry>& entries, std::size_t first, std::size_t last);

} // namespace zephyr::console::qt

#endif
