#include "LogMirror.h"

#include "BorrowedConsole.h"
#include "LogText.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <chrono>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr std::chrono::milliseconds kInterval{10};

} // namespace

LogMirror::LogMirror(std::weak_ptr<Console> console, const QString& fileName)
    : mConsole(std::move(console)), mFile(fileName)
{
    if (mFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        catchUp();
        mThread = std::jthread([this](const std::stop_token& stop) { follow(stop); });
    }
}

LogMirror::~LogMirror()
{
    mThread.request_stop();
    if (mThread.joinable()) {
        mThread.join();
    }
    catchUp();
}

bool LogMirror::isOpen() const
{
    const std::lock_guard lock(mMutex);
    return mFile.isOpen();
}

void LogMirror::follow(const std::stop_token& stop)
{
    while (catchUp()) {
        std::unique_lock lock(mMutex);
        mStopped.wait_for(lock, stop, kInterval, [] { return false; });
        if (stop.stop_requested()) {
            return;
        }
    }
}

bool LogMirror::catchUp()
{
    const BorrowedConsole console(mConsole);
    const std::lock_guard lock(mMutex);
    if (!console || !mFile.isOpen()) {
        return false;
    }
    if (mSnapshot) {
        console->refresh(*mSnapshot);
    } else {
        mSnapshot = console->snapshot();
    }
    for (; mWritten < mSnapshot->lines().size(); ++mWritten) {
        if (!writeEntry(mSnapshot->lines()[mWritten])) {
            giveUp(*console);
            return false;
        }
    }
    return true;
}

bool LogMirror::writeEntry(const LogEntry& entry)
{
    const std::string line = StringUtil::toString(logText(entry));
    const auto size = static_cast<qint64>(line.size());
    return mFile.write(line.data(), size) == size && mFile.flush();
}

void LogMirror::giveUp(Console& console)
{
    const QString message =
        QStringLiteral("The log is no longer written to '%1': %2").arg(mFile.fileName(), mFile.errorString());
    mFile.close();
    console.write(message.toStdU32String(), Output);
}

} // namespace zephyr::console::qt
