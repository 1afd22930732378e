#include "LastAnswer.h"

#include "LogText.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <new>
#include <vector>

namespace zephyr::console::qt {

void LastAnswer::find(const Console& console, std::size_t sizeBefore)
{
    const std::size_t size = console.logSize();
    std::size_t echo =
        sizeBefore; // looked for in the entries that the line added, of which it is nearly always the first
    while (echo < size && console.readLogPart(echo, 0, 0).type != Input) {
        ++echo;
    }
    if (echo < size) {
        mBegin = echo + 1;
        mEnd = size - (console.readLogPart(size - 1, 0, 0).length == 0 ? 1 : 0);
    }
}

QString LastAnswer::text(const Console& console) const
{
    std::vector<LogEntry> entries;
    console.readLog(mBegin, mEnd - mBegin, entries);
    return logText(entries, 0, entries.size());
}

} // namespace zephyr::console::qt
