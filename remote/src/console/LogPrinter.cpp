#include "console/LogPrinter.h"

#include "console/Texts.h"
#include "zephyr/console/Console.h"

#include <algorithm>
#include <cerrno>
#include <vector>

namespace zephyr::console::remote {

namespace {

constexpr std::size_t kEntriesAtATime = 64;

} // namespace

LogPrinter::LogPrinter(Console& console, std::FILE* out)
    : mConsole(console), mOut(out), mPrinter(out != nullptr ? out : stdout), mNext(console.logSize())
{
    mObserver = console.addObserver([this] { printNew(); }); // last, as other threads call it at once
}

LogPrinter::~LogPrinter()
{
    mConsole.removeObserver(mObserver);
    printNew();
}

std::optional<std::error_code> LogPrinter::error() const
{
    const std::lock_guard lock(mMutex);
    return mError;
}

/// Prints what is in the log now. What comes meanwhile is printed by the call that is made for it.
void LogPrinter::printNew()
{
    const std::lock_guard lock(mMutex);
    const std::size_t end = mConsole.logSize();
    std::vector<LogEntry> entries;
    while (mNext < end) {
        mConsole.readLog(mNext, std::min(kEntriesAtATime, end - mNext), entries);
        for (const LogEntry& entry : entries) {
            if (mOut != nullptr && !mError && !mPrinter.print(entryOf(mNext, entry))) {
                mError = std::error_code(errno, std::generic_category());
            }
            ++mNext;
        }
    }
}

} // namespace zephyr::console::remote
