#include "LogMirror.h"

#include "ConsoleLender.h"
#include "LogText.h"
#include "SnapshotRefresh.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <QScopeGuard>

#include <chrono>
#include <new>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr std::chrono::milliseconds kInterval{10};
constexpr std::chrono::seconds kLongestWait{1}; // before a program ends

const char* const kWriteError = "The log is no longer written to '%1': %2";

} // namespace

LogMirror::LogMirror(std::shared_ptr<ConsoleLender> console, const QString& fileName)
    : mConsole(std::move(console)), mFile(fileName)
{
    if (mFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        tryCatchUp();
        mThread = std::jthread([this](const std::stop_token& stop) { follow(stop); });
    }
}

LogMirror::~LogMirror()
{
    mThread.request_stop();
    if (mThread.joinable()) {
        mThread.join();
    }
    tryCatchUp();
}

bool LogMirror::isOpen() const
{
    const std::lock_guard lock(mMutex);
    return mFile.isOpen();
}

void LogMirror::follow(const std::stop_token& stop)
{
    while (tryCatchUp()) {
        std::unique_lock lock(mMutex);
        mStopped.wait_for(lock, stop, kInterval, [] { return false; });
        if (stop.stop_requested()) {
            return;
        }
    }
}

bool LogMirror::tryCatchUp()
{
    const BorrowedConsole console(mConsole); // may destroy the console at its end, so outside the lock
    const std::lock_guard lock(mMutex);
    return tryWriteNew(console);
}

void LogMirror::catchUpBeforeTheEnd()
{
    if (mWriter == std::this_thread::get_id()) {
        return;
    }
    const BorrowedConsole console(mConsole);
    const auto deadline = std::chrono::steady_clock::now() + kLongestWait;
    std::unique_lock lock(mMutex, std::try_to_lock);
    while (!lock && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::yield();
        lock.try_lock();
    }
    if (lock) {
        tryWriteNew(console);
    }
}

bool LogMirror::tryWriteNew(const BorrowedConsole& console)
{
    mWriter = std::this_thread::get_id();
    const auto written = qScopeGuard([this] { mWriter = std::thread::id(); });
    if (!console || !mFile.isOpen()) {
        return false;
    }
    if (!takeOrRefresh(mSnapshot, *console)) {
        return true; // what is missing is written the next time
    }
    try {
        for (; mWritten < mSnapshot->lines().size(); ++mWritten) {
            if (!tryWriteEntry(mSnapshot->lines()[mWritten])) {
                giveUp(*console);
                return false;
            }
        }
    } catch (const std::bad_alloc&) {
        return true; // as above
    }
    return true;
}

bool LogMirror::tryWriteEntry(const LogEntry& entry)
{
    const std::string line = StringUtil::toString(logText(entry));
    const auto size = static_cast<qint64>(line.size());
    return mFile.write(line.data(), size) == size && mFile.flush();
}

void LogMirror::giveUp(Console& console)
{
    const QString message = QString(kWriteError).arg(mFile.fileName(), mFile.errorString());
    mFile.close();
    console.write(message.toStdU32String(), Output);
}

} // namespace zephyr::console::qt
