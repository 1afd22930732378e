#include "console/LogPrinter.h"

#include "console/Texts.h"
#include "zephyr/console/Console.h"

#include <cerrno>
#include <vector>

namespace zephyr::console::remote {

namespace {

constexpr std::size_t kEntriesAtATime = 64;

} // namespace

LogPrinter::LogPrinter(Console& console, std::FILE* out)
    : mConsole(console),
      mOut(out),
      mPrinter(out != nullptr ? out : stdout),
      mObserver(console.addObserver([this] { printNew(); })),
      mNext(console.logSize())
{}

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

void LogPrinter::printNew()
{
    const std::lock_guard lock(mMutex);
    std::vector<LogEntry> entries;
    do {
        mConsole.readLog(mNext, kEntriesAtATime, entries);
        for (const LogEntry& entry : entries) {
            if (mOut != nullptr && !mError && !mPrinter.print(entryOf(mNext, entry))) {
                mError = std::error_code(errno, std::generic_category());
            }
            ++mNext;
        }
    } while (!entries.empty());
}

} // namespace zephyr::console::remote
