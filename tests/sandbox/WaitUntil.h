#ifndef ZEPHYR_TESTS_SANDBOX_WAITUNTIL_H
#define ZEPHYR_TESTS_SANDBOX_WAITUNTIL_H

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <functional>
#include <stdexcept>
#include <string>

namespace zephyr::test {

constexpr int kPatience = 120000; // milliseconds, below CTest's own

/// Lets the event loop run until `isSo`. Throws where that takes too long; `what` says what was waited for.
inline void waitUntil(const std::string& what, const std::function<bool()>& isSo)
{
    const QDeadlineTimer deadline(kPatience);
    while (!isSo()) {
        if (deadline.hasExpired()) {
            throw std::runtime_error("waited in vain until " + what);
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

} // namespace zephyr::test

#endif
