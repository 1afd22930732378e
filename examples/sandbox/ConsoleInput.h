#ifndef ZEPHYR_SANDBOX_CONSOLEINPUT_H
#define ZEPHYR_SANDBOX_CONSOLEINPUT_H

#include <QString>

#include <functional>
#include <string>

class QPoint;

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

/// Everything that reaches a console from outside: Qt's keys and wheel, lines, console files.
///
/// - It is: the one place where Qt's texts become code points, and where what the console's commands throw
///   ends. It is not: a window; it takes key codes and texts from whoever has them.
/// - Threads: used on the thread that owns the console.
/// - Ownership: borrows the console, which must outlive it.
/// - Failure: an exception becomes one line in the console's log, and a submitted line is taken away. After a
///   QuitRequest nothing is passed on any more: keys are consumed, lines and files dropped.
class ConsoleInput
{
public:
    /// `quit` is called once, when the quit command has run.
    ConsoleInput(console::Console& console, std::function<void()> quit);

    /// Passes a key press on. `key` and `modifiers` are Qt's. Of `text`, control characters and everything
    /// from an escape character on are left out; each code point of the rest is a press of its own. \return
    /// whether the console consumed the key.
    bool keyPressed(int key, int modifiers, const QString& text);

    /// Passes a key release on. \return whether the console consumed it.
    bool keyReleased(int key, int modifiers, const QString& text);

    /// Passes a turn of the wheel on; `eighths` is in eighths of a degree, as QWheelEvent has it.
    /// \return whether the console consumed it.
    bool wheelTurned(const QPoint& eighths);

    /// Runs one line.
    void execute(const QString& line);

    /// Runs the file `name` from the runpath, if there is one.
    void runFile(const std::u32string& name);

    /// Whether the quit command has run.
    bool hasQuit() const { return mHasQuit; }

private:
    bool pressEach(int key, int modifiers, const std::u32string& typed);
    bool guarded(const std::function<void()>& run);
    void reportError(std::string what);

    console::Console& mConsole;
    std::function<void()> mQuit;
    bool mHasQuit = false;
};

} // namespace zephyr::sandbox

#endif
