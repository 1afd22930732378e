#ifndef ZEPHYR_CONSOLE_CONSOLEPRIVATE_H
#define ZEPHYR_CONSOLE_CONSOLEPRIVATE_H

#include "CheckedMutex.h"
#include "CommandTable.h"
#include "Completion.h"
#include "History.h"
#include "InputLine.h"
#include "Log.h"
#include "Observer.h"
#include "Runpath.h"
#include "ScrollPosition.h"
#include "zephyr/console/Console.h"

#include <QFont>

#include <condition_variable>
#include <map>

namespace zephyr::console {

/// The parts of a console, and what joins them.
///
/// Any thread may reach the Guarded parts, through lock() or change(). The others belong to the host's thread. No lock is
/// held while host code runs, nor while a file is opened.
class Console::Private
{
public:
    class HelpCommand;

    /// What the mutex guards.
    struct Guarded
    {
        InputLine line;
        Log log;
        ScrollPosition scroll;
        Observer observer;
    };

    /// The guarded parts, and the lock on them for as long as this lives. BasicLockable, to wait with.
    class Access
    {
    public:
        Access(CheckedMutex& mutex, Guarded& parts) : mMutex(mutex), mParts(parts) { lock(); }
        ~Access() { unlock(); }

        Access(const Access&) = delete;
        Access& operator=(const Access&) = delete;

        Guarded& operator*() const { return mParts; }
        Guarded* operator->() const { return &mParts; }
        void lock() { mMutex.lock(); }
        void unlock() { mMutex.unlock(); }

    private:
        CheckedMutex& mMutex;
        Guarded& mParts;
    };

    explicit Private(Console& console);

    /// What the console's pointer deletes its parts with.
    static void destroy(Private* parts);

    /// Waits for the mutex. Throws `std::system_error` (`resource_deadlock_would_occur`) if this thread holds it.
    Access lock() { return {mMutex, mGuarded}; }

    /// Calls `step` with the guarded parts under the lock, and then the observer without it.
    template <typename Step>
    void change(const Step& step);

    /// Console::setObserver().
    void setObserver(std::shared_ptr<const Observer::Function> observer);

    void insertText(const std::u32string& text);
    void paste();
    void erase(bool (InputLine::*edit)(bool wholeWord), int modifiers);

    void navigateHistory(int direction);
    void submitInput();
    bool autoComplete(bool backwards);

    void execute(std::u32string line, bool recordInHistory);

    void appendLine(std::u32string text, ConsoleMessageType type, unsigned indent);
    void scrollLines(std::int64_t lines);
    unsigned visibleLineCount() const;
    ConsoleSnapshot takeSnapshot(const Access& parts) const;

private:
    // The members stand in the order of their construction: commands are destroyed after the aliases that one of them
    // refers to, and the lock goes first.
    bool applyCompletion(bool backwards);
    void refuse(const std::u32string& line);
    void dispatch(ConsoleCommand* command, std::vector<std::u32string>&& words);
    void runCommand(ConsoleCommand& command, std::vector<std::u32string>&& words);
    void openRedirect(const std::u32string& target);
    void callObserver(Observer::Call& call);

    Console& mConsole;
    Guarded mGuarded;
    Completion mCompletion;
    unsigned mRunningLines = 0; // each inside of the one before

public:
    bool mOpen = false;
    History mHistory;
    unsigned mDepthLimit = 0; // lines inside of a line; 0 is no limit
    Color mTextColor{0, 255, 0, 255};
    Color mBackgroundColor{0, 0, 0, 204};
    float mCursorBlinkRate = 3.0F;               // changes between shown and hidden a second
    char32_t mCursorChar = 0x2588;               // full block
    glm::vec<2, unsigned int> mWindowSize{0, 0}; // logical pixels

    CommandTable mCommands;
    Runpath mRunPaths;
    std::map<std::u32string, std::vector<std::u32string>> mAliases;
    std::shared_ptr<QFont> mFont;

    // Made as mFont is and sharing nothing with it: measuring loads data into a font, and a drawing thread measures with
    // mFont.
    QFont mMeasuringFont;

    std::condition_variable_any mObserverCallEnded;

private:
    CheckedMutex mMutex;
};

} // namespace zephyr::console

#endif
