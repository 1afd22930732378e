#ifndef ZEPHYR_TESTS_SUPPORT_VIRTUALDISPLAY_H
#define ZEPHYR_TESTS_SUPPORT_VIRTUALDISPLAY_H

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <stdexcept>

namespace zephyr::test {

constexpr int kProcessTimeoutMs = 60000;

/// An X server without a screen, whose keyboard has real layouts and real key codes.
class VirtualDisplay
{
public:
    VirtualDisplay()
    {
        // Without -noreset the server forgets the layout, and refuses other clients, whenever its only client leaves.
        mServer.start(XVFB_PROGRAM,
                      {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"});
        if (!mServer.waitForReadyRead(kProcessTimeoutMs)) {
            throw std::runtime_error("no X server: " + mServer.readAllStandardError().toStdString());
        }
        mEnvironment.insert("DISPLAY", ":" + QString::fromLatin1(mServer.readLine().trimmed()));
    }

    ~VirtualDisplay()
    {
        mServer.terminate();
        mServer.waitForFinished(kProcessTimeoutMs);
    }

    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// The environment of a process that uses this display.
    const QProcessEnvironment& environment() const { return mEnvironment; }

    /// Sets the keyboard layout, named as for setxkbmap.
    void setLayout(const QStringList& words) const { run(SETXKBMAP_PROGRAM, words); }

    /// Sends keys to the window with the focus, named as for xdotool. A number is a key's code.
    void send(const QStringList& words) const { run(XDOTOOL_PROGRAM, words); }

    /// Gives the focus to the window called `name`. \return whether it already has it. Call again until it has.
    bool focus(const QString& name) const
    {
        const QByteArray window =
            answerOf(XDOTOOL_PROGRAM, {"search", "--onlyvisible", "--name", "^" + name + "$"});
        if (!window.isEmpty() && answerOf(XDOTOOL_PROGRAM, {"getwindowfocus", "-f"}) == window) {
            return true;
        }
        answerOf(XDOTOOL_PROGRAM, {"windowfocus", window.trimmed()});
        return false;
    }

    /// Runs a program on this display, and returns what it prints, even if it fails.
    QByteArray answerOf(const QString& program, const QStringList& words) const
    {
        QProcess process;
        end(process, program, words);
        return process.readAllStandardOutput();
    }

private:
    void run(const QString& program, const QStringList& words) const
    {
        QProcess process;
        end(process, program, words);
        if (process.exitCode() != 0) {
            throw std::runtime_error(program.toStdString() + ": " +
                                     process.readAllStandardError().toStdString());
        }
    }

    void end(QProcess& process, const QString& program, const QStringList& words) const
    {
        process.setProcessEnvironment(mEnvironment);
        process.start(program, words);
        if (!process.waitForFinished(kProcessTimeoutMs) || process.exitStatus() != QProcess::NormalExit) {
            throw std::runtime_error((program + " hung or crashed: " + words.join(' ')).toStdString());
        }
    }

    QProcessEnvironment mEnvironment = QProcessEnvironment::systemEnvironment();
    QProcess mServer;
};

} // namespace zephyr::test

#endif
