#ifndef ZEPHYR_TESTS_REMOTE_TMUXTERMINAL_H
#define ZEPHYR_TESTS_REMOTE_TMUXTERMINAL_H

#include "remote/ServerFixture.h"
#include "support/TemporaryDirectory.h"

#include <QProcess>
#include <QString>
#include <QStringList>

#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zephyr::test {

/// A real terminal of 80 columns and 24 rows, in which a shell's command runs, and what a person sees there.
class TmuxTerminal
{
public:
    /// \param command what the shell runs; the terminal stays when it has ended.
    explicit TmuxTerminal(const QString& command)
    {
        tmux({"-f", "/dev/null", "new-session", "-d", "-x", "80", "-y", "24",
              "trap : INT; " + command + "; exec cat"});
    }

    ~TmuxTerminal() { QProcess::execute("tmux", {"-S", mSocket, "kill-server"}); }

    TmuxTerminal(const TmuxTerminal&) = delete;
    TmuxTerminal& operator=(const TmuxTerminal&) = delete;

    /// Types text as it is.
    void type(const QString& text) const { tmux({"send-keys", "-l", text}); }

    /// Presses a key, which has tmux's name: "Enter", "Tab", "Up", "C-c".
    void press(const QString& key) const { tmux({"send-keys", key}); }

    /// Types a line and presses Enter.
    void enter(const QString& line) const
    {
        type(line);
        press("Enter");
    }

    /// Pastes text, as fast as a terminal does.
    void paste(const QString& text) const
    {
        tmux({"set-buffer", text});
        tmux({"paste-buffer"});
    }

    /// Makes the terminal so many columns wide; its lines flow. \return whether its program may know.
    bool setWidth(int columns) const
    {
        tmux({"resize-window", "-x", QString::number(columns)});
        const QByteArray device = tmux({"display-message", "-p", "#{pane_tty}"}).trimmed();
        return console::remote::waitUntil([&] { // tmux takes its time
            const int terminal = ::open(device.constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC);
            winsize size{};
            ::ioctl(terminal, TIOCGWINSZ, &size);
            ::close(terminal);
            return size.ws_col == columns;
        });
    }

    /// What is seen, without the blanks at the end of lines and the empty lines at the end.
    std::string screen() const { return seen({}); }

    /// What is seen, with the escape sequences that set colours.
    std::string colouredScreen() const { return seen({"-e"}); }

    /// What was seen since the beginning.
    std::string history() const { return seen({"-S", "-"}); }

    /// Waits until the screen ends with `text`, while this process serves. \return whether it does.
    bool endsWith(const std::string& text) const
    {
        return console::remote::waitUntil([&] { return screen().ends_with(text); });
    }

    /// Waits until the cursor stands at the start of a row, as it does when a typed line was taken. \return whether it does.
    bool startsRow() const
    {
        return console::remote::waitUntil(
            [&] { return tmux({"display-message", "-p", "#{cursor_x}"}).trimmed() == "0"; });
    }

private:
    QByteArray tmux(const QStringList& arguments) const
    {
        QProcess process;
        process.start("tmux", QStringList{"-u", "-S", mSocket} + arguments);
        if (!process.waitForFinished() || process.exitCode() != 0) {
            throw std::runtime_error("tmux: " + process.readAllStandardError().toStdString());
        }
        return process.readAllStandardOutput();
    }

    std::string seen(const QStringList& options) const
    {
        std::string text = tmux(QStringList{"capture-pane", "-p"} + options).toStdString();
        text.erase(text.find_last_not_of('\n') + 1);
        return text;
    }

    TemporaryDirectory mFolder;
    QString mSocket = QString::fromStdString((mFolder.path() / "tmux").string());
};

} // namespace zephyr::test

#endif
