#include "LogText.h"

#include "zephyr/console/ConsoleSnapshot.h"

namespace zephyr::console::qt {

namespace {

const char32_t* const kPrompt = U">> ";

} // namespace

std::u32string logText(const LogEntry& entry)
{
    return (entry.type == Input ? kPrompt : U"") + entry.text + U'\n';
}

QString logText(const std::vector<LogEntry>& entries, std::size_t first, std::size_t last)
{
    std::u32string text;
    for (std::size_t i = first; i < last; ++i) {
        text += logText(entries[i]);
    }
    return QString::fromStdU32String(text);
}

} // namespace zephyr::console::qt
