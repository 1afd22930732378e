#ifndef ZEPHYR_TESTS_QT_VIRTUALKEYBOARD_H
#define ZEPHYR_TESTS_QT_VIRTUALKEYBOARD_H

#include <QDeadlineTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <stdexcept>
#include <string>

namespace zephyr::test {

constexpr int kProcessTimeoutMs = 60000;

/// An X server of one's own, without a screen, whose keyboard has real layouts and real key codes.
class VirtualKeyboard
{
public:
    VirtualKeyboard()
    {
        // Without -noreset the server forgets the layout as soon as setxkbmap has left.
        mServer.start(XVFB_PROGRAM,
                      {"-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp", "-noreset"});
        if (!mServer.waitForReadyRead(kProcessTimeoutMs)) {
            throw std::runtime_error("no X server: " + mServer.readAllStandardError().toStdString());
        }
        mEnvironment.insert("DISPLAY", ":" + QString::fromLatin1(mServer.readLine().trimmed()));
    }

    ~VirtualKeyboard()
    {
        mServer.terminate();
        mServer.waitForFinished(kProcessTimeoutMs);
    }

    VirtualKeyboard(const VirtualKeyboard&) = delete;
    VirtualKeyboard& operator=(const VirtualKeyboard&) = delete;

    /// What a process needs to see this keyboard.
    const QProcessEnvironment& environment() const { return mEnvironment; }

    /// Takes another layout, as setxkbmap names it.
    void setLayout(const QStringList& words) const { run(SETXKBMAP_PROGRAM, words); }

    /// Sends keys to the window that has the focus, as xdotool names them; a number is a key's code.
    void send(const QStringList& words) const { run(XDOTOOL_PROGRAM, words); }

private:
    void run(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(mEnvironment);
        process.start(program, arguments);
        if (!process.waitForFinished(kProcessTimeoutMs) || process.exitCode() != 0) {
            throw std::runtime_error(program.toStdString() + ": " +
                                     process.readAllStandardError().toStdString());
        }
    }

    QProcessEnvironment mEnvironment = QProcessEnvironment::systemEnvironment();
    QProcess mServer;
};

/// A program with a console in its window, which tells what a user would see.
class KeyboardHost
{
public:
    /// Starts it with a "window", a "widget" or an "item" and waits until that has the focus.
    KeyboardHost(const VirtualKeyboard& keyboard, const QString& place)
    {
        QProcessEnvironment environment = keyboard.environment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("QT_IM_MODULE", "compose");
        environment.insert("QT_QUICK_BACKEND", "software");
        environment.insert("LC_ALL", "C.UTF-8");
        // The thread sanitizer sees the session bus's thread, but not by what it is kept in step.
        environment.insert("TSAN_OPTIONS",
                           environment.value("TSAN_OPTIONS") + ":ignore_noninstrumented_modules=1");
        mProgram.setProcessEnvironment(environment);
        mProgram.start(KEYBOARD_HOST_PROGRAM, {place});
        awaitLine("ready");
    }

    ~KeyboardHost()
    {
        mProgram.kill();
        mProgram.waitForFinished(kProcessTimeoutMs);
    }

    KeyboardHost(const KeyboardHost&) = delete;
    KeyboardHost& operator=(const KeyboardHost&) = delete;

    /// Waits for the next line that it prints, which must be `expected`.
    void awaitLine(const std::string& expected)
    {
        const std::string line = nextLine();
        if (line != expected) {
            throw std::runtime_error("the host said '" + line + "' instead of '" + expected + "'");
        }
    }

    /// The next line that it prints.
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
