#include "sandbox/program/LogPrinter.h"

#include "sandbox/program/Printing.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <vector>

namespace zephyr::sandbox {

namespace {

constexpr std::size_t kEntriesAtATime = 1024;

} // namespace

void LogPrinter::printNew()
{
    std::vector<console::LogEntry> entries;
    mConsole.readLog(mPrinted, kEntriesAtATime, entries);
    while (!mError && !entries.empty()) {
        std::string text;
        for (const console::LogEntry& entry : entries) {
            text += StringUtil::toString(shownText(entry)) + '\n';
        }
        mError = print(text, mStream);
        mPrinted += entries.size();
        mConsole.readLog(mPrinted, kEntriesAtATime, entries);
    }
}

} // namespace zephyr::sandbox
