#include "LastAnswer.h"

#include "LogText.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <algorithm>

namespace zephyr::console::qt {

void LastAnswer::find(const std::vector<LogEntry>& log, std::size_t sizeBefore)
{
    if (sizeBefore > log.size()) {
        return;
    }
    const auto echo = std::find_if(log.begin() + static_cast<std::ptrdiff_t>(sizeBefore), log.end(),
                                   [](const LogEntry& entry) { return entry.type == Input; });
    if (echo != log.end()) {
        mBegin = static_cast<std::size_t>(echo - log.begin()) + 1;
        mEnd = log.size() - (log.back().text.empty() ? 1 : 0);
    }
}

QString LastAnswer::text(const std::vector<LogEntry>& log) const { return logText(log, mBegin, mEnd); }

} // namespace zephyr::console::qt
