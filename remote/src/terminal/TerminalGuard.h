#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_TERMINALGUARD_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_TERMINALGUARD_H

#include <memory>

namespace zephyr::console::remote {

/// Gives a terminal back as it was found when the program exits, or gets a signal that ends or stops it, and tells
/// of a new size and of going on after a stop. One at a time in a process: signal handlers know no objects.
///
/// A signal whose handler isn't the default one is the program's and left alone, but for SIGWINCH and SIGCONT, whose
/// handlers are called as well.
class TerminalGuard
{
public:
    /// Guards the terminal that `in` reads and `out` writes. A byte is written to `wake` after each of the two things
    /// that it tells of. \return null if the process has one.
    static std::unique_ptr<TerminalGuard> create(int in, int out, int wake);

    ~TerminalGuard();

    TerminalGuard(const TerminalGuard&) = delete;
    TerminalGuard& operator=(const TerminalGuard&) = delete;

    /// Must be called before the terminal is changed: it is as it is to be found again.
    void begin();

    /// Gives the terminal back. Nothing is done to it until the next begin().
    void end();

    /// Spares the program the next interrupt, if `spares`, as long as that isn't taken back.
    void setSparesInterrupt(bool spares);

    /// Whether an interrupt was spared since the last call.
    bool takeInterrupted();

    /// Whether the program went on after a stop since the last call.
    bool takeContinued();

    /// Whether the program may change the terminal and read from it. One in the background would be stopped.
    bool isInForeground() const;

    /// Stops the program and those in a pipe with it, as Ctrl+Z does. Returns when it goes on. All signals of the
    /// calling thread must be blocked.
    void stopProgram();

private:
    TerminalGuard(int in, int out, int wake);

    int mTerminal;
};

} // namespace zephyr::console::remote

#endif
