#include "LogText.h"

#include "zephyr/console/ConsoleSnapshot.h"

namespace zephyr::console::qt {

std::u32string logText(const LogEntry& entry) { return shownText(entry) + U'\n'; }

QString logText(const std::vector<LogEntry>& entries, std::size_t first, std::size_t last)
{
    std::u32string text;
    for (std::size_t i = first; i < last; ++i) {
        text += logText(entries[i]);
    }
    return QString::fromStdU32String(text);
}

} // namespace zephyr::console::qt
