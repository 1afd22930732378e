#ifndef ZEPHYR_TESTS_SUPPORT_WAITUNTIL_H
#define ZEPHYR_TESTS_SUPPORT_WAITUNTIL_H

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <functional>
#include <stdexcept>
#include <string>

namespace zephyr::test {

constexpr int kPatience = 120000; // milliseconds, less than CTest's own timeout

/// Runs the event loop until `isSo` returns true. Throws if that takes too long; `what` tells what it waited for.
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
