#ifndef ZEPHYR_CONSOLE_QT_CONSOLELENDER_H
#define ZEPHYR_CONSOLE_QT_CONSOLELENDER_H

#include <memory>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

class ReturnedConsole;

/// Lends a console for the length of a call, on any thread, without keeping the console alive. If the host lets go of
/// the console during the call, the console is destroyed on the application's thread, where its commands expect that,
/// and not on the thread that borrowed it.
///
/// A thread can't know whether its pointer is the last. So a borrower on another thread never drops its pointer:
/// it gives the pointer back, and the application's thread drops it.
class ConsoleLender
{
public:
    explicit ConsoleLender(std::weak_ptr<Console> console);

    /// The console, or null if it is gone. A BorrowedConsole holds it.
    std::shared_ptr<Console> lend() const;

    /// Takes back the pointer that lend() returned.
    void giveBack(std::shared_ptr<Console> console);

    /// Whether the console is gone.
    bool isGone() const;

private:
    /// Has the object destroyed on its own thread.
    struct DeleteThere
    {
        void operator()(ReturnedConsole* returned) const;
    };

    const std::weak_ptr<Console> mConsole;
    const std::unique_ptr<ReturnedConsole, DeleteThere> mReturned;
};

/// A console that is borrowed for the length of a call. Converts to false if the console is gone.
class BorrowedConsole
{
public:
    explicit BorrowedConsole(const std::shared_ptr<ConsoleLender>& lender);
    ~BorrowedConsole();

    BorrowedConsole(const BorrowedConsole&) = delete;
    BorrowedConsole& operator=(const BorrowedConsole&) = delete;

    explicit operator bool() const { return mConsole != nullptr; }
    Console* operator->() const { return mConsole.get(); }
    Console& operator*() const { return *mConsole; }

private:
    const std::shared_ptr<ConsoleLender> mLender;
    std::shared_ptr<Console> mConsole;
};

} // namespace zephyr::console::qt

#endif
