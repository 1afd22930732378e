#ifndef ZEPHYR_TESTS_SUPPORT_WINDOWMANAGER_H
#define ZEPHYR_TESTS_SUPPORT_WINDOWMANAGER_H

#include "support/VirtualDisplay.h"

#include <QProcess>
#include <QString>

#include <stdexcept>

namespace zephyr::test {

/// Openbox on a virtual display, which must outlive it.
class WindowManager
{
public:
    /// Starts the program at the path `openbox`, and waits until it looks after windows. Before that it would lose a
    /// window or take its focus away.
    WindowManager(const VirtualDisplay& display, const QString& openbox)
    {
        mProcess.setProcessEnvironment(display.environment());
        mProcess.start(openbox, {"--startup", XPROP_PROGRAM " -root -f STARTED 8s -set STARTED yes"});
        while (!display.answerOf(XPROP_PROGRAM, {"-root", "STARTED"}).contains("yes")) {
            if (mProcess.waitForFinished(1)) {
                throw std::runtime_error("no window manager: " +
                                         mProcess.readAllStandardError().toStdString());
            }
        }
    }

    ~WindowManager()
    {
        mProcess.kill();
        mProcess.waitForFinished(kProcessTimeoutMs);
    }

    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

private:
    QProcess mProcess;
};

} // namespace zephyr::test

#endif
