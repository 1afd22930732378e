#ifndef ZEPHYR_BENCHMARKS_SUPPORT_HOSTEDLOG_H
#define ZEPHYR_BENCHMARKS_SUPPORT_HOSTEDLOG_H

#include "support/Workload.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWindow>

#include <cstddef>
#include <memory>

namespace zephyr::bench {

/// A console with a log of some length, on a window as the host kit shows it.
class HostedLog
{
public:
    explicit HostedLog(std::size_t lines) { fillLog(*mConsole, lines); }

    console::Console& console() { return *mConsole; }
    console::qt::ConsoleHost& host() { return mHost; }

    /// Scrolls one page towards older lines, as the key does.
    void pageUp()
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_PageUp, Qt::NoModifier);
            QCoreApplication::sendEvent(&mWindow, &event);
        }
    }

    /// The lines of a page in full HD, or some fewer.
    static constexpr std::size_t page() { return 60; }

private:
    std::shared_ptr<console::Console> mConsole = std::make_shared<console::Console>();
    QWindow mWindow;
    console::qt::ConsoleHost mHost{mConsole, &mWindow};
};

} // namespace zephyr::bench

#endif
