#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_TERMINALSESSION_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_TERMINALSESSION_H

#include "terminal/EntryPrinter.h"
#include "terminal/LineEditor.h"
#include "zephyr/console/remote/ConsoleTerminal.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace zephyr::console::remote {

/// What a ConsoleTerminal is, shared with its own functions on the stack, as a line that it runs may destroy the
/// ConsoleTerminal. All but logGrew() is for the console's thread.
class TerminalSession : public std::enable_shared_from_this<TerminalSession>
{
public:
    TerminalSession(Console& console, const ConsoleTerminalOptions& options);

    /// Begins. Once, by who has it as a shared pointer.
    void start();

    /// Prints the rest and gives the terminal back. The console isn't used afterwards.
    void stop();

private:
    void lineEntered(const QString& line);
    void noteTyped(const std::u32string& line);
    void run(const std::u32string& line);
    void runWaiting();
    void end();
    Completion complete(const QString& beforeCursor);
    void logGrew();
    void printNew();
    void printSome();
    void print(std::size_t count);
    bool isEchoOnScreen(const Entry& entry);

    Console& mConsole;
    const ConsoleTerminalOptions mOptions;
    const std::thread::id mThread = std::this_thread::get_id();
    EntryPrinter mPrinter{stdout};
    std::unique_ptr<LineEditor> mEditor;
    std::uint64_t mObserver = 0;
    std::size_t mNext = 0;                  // entry to be printed
    std::optional<QString> mTyped;          // the line that runs, which the user sees where it was typed
    std::optional<std::u32string> mWaiting; // until no other line runs
    QTimer mRetry;
    std::atomic<bool> mIsPrintingDue = false;
    QTimer mPrintSome; // fires once in a round of the event loop, unlike calls that are queued
    QObject mCalls;    // takes calls from other threads
};

} // namespace zephyr::console::remote

#endif
