#ifndef ZEPHYR_CONSOLE_QT_CONSOLELENDER_H
#define ZEPHYR_CONSOLE_QT_CONSOLELENDER_H

#include <memory>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

class ReturnedConsole;

/// Lends a console that it doesn't keep alive, for the length of a call on any thread. Should the host let go of the
/// console meanwhile, the application's thread destroys it, where its commands expect that, and not the thread that
/// borrowed it.
///
/// A reference can't be dropped "unless it is the last". So a borrower on another thread never drops one: it gives it
/// back, and the application's thread, which is asked to once however many come back meanwhile, drops it.
class ConsoleLender
{
public:
    explicit ConsoleLender(std::weak_ptr<Console> console);

    /// The console, or null when it is gone. To be held by a BorrowedConsole.
    std::shared_ptr<Console> lend() const;

    /// Takes what lend() answered.
    void giveBack(std::shared_ptr<Console> console);

    /// Whether the console is gone.
    bool isGone() const;

private:
    /// Leaves the object to its own thread.
    struct DeleteThere
    {
        void operator()(ReturnedConsole* returned) const;
    };

    const std::weak_ptr<Console> mConsole;
    const std::unique_ptr<ReturnedConsole, DeleteThere> mReturned;
};

/// A console for the length of a call, if it still lives.
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
