#include "HistoryWriter.h"

#include "HistoryStore.h"
#include "MirrorFile.h"

#include <QCoreApplication>

#include <chrono>
#include <cstddef>
#include <new>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr std::chrono::seconds kPatience{1}; // of who waits for the thread

QString memoryError() { return QStringLiteral("Memory ran out"); }

} // namespace

HistoryWriter::HistoryWriter(std::function<void()> notify)
    : mProcess(QCoreApplication::applicationPid()), mNotify(std::move(notify))
{}

bool HistoryWriter::isInItsProcess() const { return mProcess == QCoreApplication::applicationPid(); }

void HistoryWriter::run(std::unique_ptr<HistoryStore> store)
{
    blockWriteSignals();
    Lock lock(mMutex);
    readFile(*store, lock);
    while (mState == State::Writing && (mHasWork || !mStops)) {
        if (mHasWork) {
            addPending(*store, lock);
        } else {
            mWork.wait(lock);
        }
    }
    mState = State::Ended;
    mProgress.notify_all();
}

bool HistoryWriter::waitUntilRead()
{
    Lock lock(mMutex);
    mProgress.wait_for(lock, kPatience, [this] { return mState != State::Reading; });
    return mState == State::Writing;
}

std::vector<std::u32string> HistoryWriter::takeLines()
{
    const std::lock_guard lock(mMutex);
    return std::exchange(mRead, {});
}

QString HistoryWriter::takeError()
{
    const std::lock_guard lock(mMutex);
    return std::exchange(mError, {});
}

void HistoryWriter::append(std::u32string line)
{
    const std::lock_guard lock(mMutex);
    if (mState != State::Ended) {
        mPending.push_back(std::move(line));
        mHasWork = true;
        mWork.notify_one();
    }
}

bool HistoryWriter::stop()
{
    Lock lock(mMutex);
    mNotify = nullptr;
    mStops = true;
    mHasWork = !mPending.empty();
    mWork.notify_one();
    mProgress.wait_for(lock, kPatience, [this] { return mState == State::Ended; });
    return mState == State::Ended;
}

void HistoryWriter::readFile(const HistoryStore& store, Lock& lock)
{
    std::vector<std::u32string> lines;
    QString error;
    lock.unlock();
    try {
        error = store.read(lines);
    } catch (const std::bad_alloc&) {
        error = memoryError();
    }
    lock.lock();
    mRead = std::move(lines);
    mState = error.isNull() ? State::Writing : State::Ended;
    publish(error);
}

/// Tries to add the lines that wait for it. Those that come meanwhile are tried next.
void HistoryWriter::addPending(const HistoryStore& store, Lock& lock)
{
    std::vector<std::u32string> lines;
    QString error;
    mHasWork = false;
    try {
        lines = mPending;
        lock.unlock();
        error = store.append(lines);
    } catch (const std::bad_alloc&) {
        error = memoryError();
    }
    if (!lock.owns_lock()) {
        lock.lock();
    }
    if (error.isNull()) {
        mPending.erase(mPending.begin(), mPending.begin() + static_cast<std::ptrdiff_t>(lines.size()));
    } else {
        publish(error);
    }
}

/// Tells that the file was read, or why it can't be used.
void HistoryWriter::publish(const QString& error)
{
    mError = error;
    mProgress.notify_all();
    if (mNotify) {
        mNotify();
    }
}

} // namespace zephyr::console::qt
