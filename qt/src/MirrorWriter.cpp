#include "MirrorWriter.h"

#include "LogText.h"
#include "MirrorFile.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <QCoreApplication>

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

namespace {

constexpr std::size_t kMostEntries = 256; // in one write
constexpr std::chrono::milliseconds kMemoryInterval{10};

/// Entries as text for the file.
std::string textOf(const std::vector<LogEntry>& entries)
{
    std::string text;
    for (const LogEntry& entry : entries) {
        text += StringUtil::toString(logText(entry));
    }
    return text;
}

} // namespace

MirrorWriter::MirrorWriter(const Console& console)
    : mProcess(QCoreApplication::applicationPid()), mConsole(&console)
{}

bool MirrorWriter::isInItsProcess() const { return mProcess == QCoreApplication::applicationPid(); }

void MirrorWriter::run(std::unique_ptr<MirrorFile> file)
{
    blockWriteSignals();
    Lock lock(mMutex);
    mThread = std::this_thread::get_id();
    openFile(*file, lock);
    while (mState == State::Writing && (hasWork() || !mStops)) {
        if (hasWork()) {
            writeSome(*file, lock);
        } else {
            mIsIdle = true;
            mWork.wait(lock);
        }
    }
    mState = State::Closing;
    mProgress.notify_all();
    lock.unlock();
    file.reset(); // which may hang like a write
    lock.lock();
    mState = State::Closed;
    mProgress.notify_all();
}

void MirrorWriter::writeUpTo(std::size_t size)
{
    Lock lock(mMutex);
    if (mWanted < size) {
        wake();
        mWanted = size;
    }
    waitUntil(lock, [&] { return mWritten >= size || mState >= State::Closing; });
}

bool MirrorWriter::isOpen() const
{
    const std::lock_guard lock(mMutex);
    return mState == State::Writing;
}

QString MirrorWriter::takeError()
{
    const std::lock_guard lock(mMutex);
    return std::exchange(mError, {});
}

void MirrorWriter::forgetConsole()
{
    const std::lock_guard lock(mMutex);
    mConsole = nullptr;
}

bool MirrorWriter::stop()
{
    Lock lock(mMutex);
    wake();
    mStops = true;
    waitUntil(lock, [&] { return mState == State::Closed; });
    return mState == State::Closed;
}

bool MirrorWriter::hasWork() const { return mConsole != nullptr && mWritten < mWanted; }

void MirrorWriter::wake()
{
    if (std::exchange(mIsIdle, false)) {
        mBusySince = Clock::now();
    }
    mWork.notify_one();
}

template <typename Condition>
void MirrorWriter::waitUntil(Lock& lock, const Condition& isMet)
{
    bool waits = mThread != std::this_thread::get_id(); // which must not wait for itself
    while (waits && !isMet()) {
        const Clock::time_point deadline = mBusySince + kOrdinaryStep + mPatience;
        waits = mProgress.wait_until(lock, deadline) == std::cv_status::no_timeout;
    }
}

void MirrorWriter::openFile(MirrorFile& file, Lock& lock)
{
    lock.unlock();
    const bool isOpen = file.open();
    lock.lock();
    mState = isOpen ? State::Writing : State::Closing;
    endStep();
}

void MirrorWriter::writeSome(MirrorFile& file, Lock& lock)
{
    std::vector<LogEntry> entries;
    std::string text;
    try {
        mConsole->readLog(mWritten, std::min(mWanted - mWritten, kMostEntries), entries);
        text = textOf(entries);
    } catch (const std::bad_alloc&) {
        mWork.wait_for(lock, kMemoryInterval); // and try again
        return;
    }
    lock.unlock();
    const bool isWritten = file.write(text);
    lock.lock();
    if (isWritten) {
        mWritten += entries.size();
    } else {
        mError = file.errorString();
        mState = State::Closing;
    }
    endStep();
}

/// Shortens the patience of those who wait by what this step took too long.
void MirrorWriter::endStep()
{
    const Clock::time_point now = Clock::now();
    const Clock::duration delay = now - mBusySince - kOrdinaryStep;
    mPatience -= std::clamp(delay, Clock::duration::zero(), mPatience);
    mBusySince = now;
    mProgress.notify_all();
}

} // namespace zephyr::console::qt
