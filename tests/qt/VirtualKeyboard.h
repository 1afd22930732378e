#ifndef ZEPHYR_TESTS_QT_VIRTUALKEYBOARD_H
#define ZEPHYR_TESTS_QT_VIRTUALKEYBOARD_H

#include "support/VirtualDisplay.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

#include <stdexcept>
#include <string>

namespace zephyr::test {

using VirtualKeyboard = VirtualDisplay; // these tests use little but its keyboard

/// A running program with a console in its window. It prints what a user would see.
class KeyboardHost
{
public:
    /// Starts the program with a "window", a "widget" or an "item", and waits until that has the focus. It has
    /// `selected` in X11's primary selection, if that isn't empty.
    KeyboardHost(const VirtualKeyboard& keyboard, const QString& place, const QString& selected = {})
    {
        QProcessEnvironment environment = keyboard.environment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("QT_IM_MODULE", "compose");
        environment.insert("QT_QUICK_BACKEND", "software");
        environment.insert("LC_ALL", "C.UTF-8");
        // The thread sanitizer sees the session bus's thread, but not its synchronisation.
        environment.insert("TSAN_OPTIONS",
                           environment.value("TSAN_OPTIONS") + ":ignore_noninstrumented_modules=1");
        mProgram.setProcessEnvironment(environment);
        mProgram.start(KEYBOARD_HOST_PROGRAM,
                       selected.isEmpty() ? QStringList{place} : QStringList{place, selected});
        awaitLine("ready");
    }

    ~KeyboardHost()
    {
        mProgram.kill();
        mProgram.waitForFinished(kProcessTimeoutMs);
    }

    KeyboardHost(const KeyboardHost&) = delete;
    KeyboardHost& operator=(const KeyboardHost&) = delete;

    /// Waits for the next line that the program prints. It must be `expected`.
    void awaitLine(const std::string& expected)
    {
        const std::string line = nextLine();
        if (line != expected) {
            throw std::runtime_error("the host said '" + line + "' instead of '" + expected + "'");
        }
    }

    /// Waits for the next line that the program prints, and returns it.
    std::string nextLine()
    {
        const QDeadlineTimer deadline(kProcessTimeoutMs);
        while (!mProgram.canReadLine()) {
            if (!mProgram.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
                throw std::runtime_error("the host says nothing: " +
                                         mProgram.readAllStandardError().toStdString());
            }
        }
        return mProgram.readLine().chopped(1).toStdString();
    }

private:
    QProcess mProgram;
};

} // namespace zephyr::test

#endif
