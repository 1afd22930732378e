#ifndef ZEPHYR_SANDBOX_PROGRAM_LOGFOLLOWER_H
#define ZEPHYR_SANDBOX_PROGRAM_LOGFOLLOWER_H

#include "sandbox/program/LogPrinter.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace zephyr::sandbox {

/// Prints a console's log while it is being written, from a thread of its own, so that the lines of one long
/// command come out while it works.
///
/// - It is: a LogPrinter that looks for new lines every few milliseconds. It is not: a way to slow the
///   console down; it rests several times as long as a look took.
/// - Threads: made, stopped and destroyed by one thread.
/// - Ownership: borrows console and stream until it is destroyed.
/// - Failure: as stop() answers.
class LogFollower
{
public:
    LogFollower(const console::Console& console, std::FILE* stream);

    /// Stops as stop() does, if that hasn't been called.
    ~LogFollower();

    LogFollower(const LogFollower&) = delete;
    LogFollower& operator=(const LogFollower&) = delete;

    /// Ends the thread when every line written before the call is printed.
    /// \return why a line couldn't be printed, in the system's words; empty when all were.
    std::string stop();

private:
    void follow();

    LogPrinter mPrinter; // the thread's until it has ended
    std::mutex mMutex;   // guards mIsStopping
    std::condition_variable mStopping;
    bool mIsStopping = false;
    std::thread mThread;
};

} // namespace zephyr::sandbox

#endif
