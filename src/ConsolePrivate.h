#ifndef ZEPHYR_CONSOLE_CONSOLEPRIVATE_H
#define ZEPHYR_CONSOLE_CONSOLEPRIVATE_H

#include "CheckedMutex.h"
#include "CommandTable.h"
#include "Completion.h"
#include "History.h"
#include "InputLine.h"
#include "Log.h"
#include "Observers.h"
#include "Runpath.h"
#include "ScrollPosition.h"
#include "zephyr/console/Console.h"

#include <QFont>

#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace zephyr::console {

/// The parts of a console, and the functions that connect them.
///
/// Any thread may use the Guarded parts, through lock() or change(). All other parts belong to the host's thread. No
/// lock is held while host code runs or a file is opened.
class Console::Private
{
public:
    class HelpCommand;

    /// The parts that the mutex guards.
    struct Guarded
    {
        InputLine line;
        Log log;
        ScrollPosition scroll;
        Observers observers;
    };

    /// Access to the guarded parts. It holds the lock as long as it lives. A condition variable can wait with it.
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

    /// Deletes `parts`. It is the deleter of the console's pointer to them.
    static void destroy(Private* parts);

    /// Locks the mutex. Throws `std::system_error` (`resource_deadlock_would_occur`) if this thread holds it already.
    Access lock() { return {mMutex, mGuarded}; }

    /// Calls `step` with the guarded parts under the lock, and then the observers without the lock.
    template <typename Step>
    void change(const Step& step);

    /// Does what Console::addObserver() describes.
    std::uint64_t addObserver(const std::shared_ptr<const Observers::Function>& observer);

    /// Puts `observer` in the place of the observer `id`, as Console::setObserver() describes; null removes that.
    void replaceObserver(std::uint64_t id, const std::shared_ptr<const Observers::Function>& observer);

    /// Removes all observers as replaceObserver() does.
    void removeObservers();

    void insertText(const std::u32string& text);
    void paste();
    void erase(bool (InputLine::*edit)(bool wholeWord), int modifiers);

    void navigateHistory(int direction);
    void submitInput();
    bool autoComplete(bool backwards);

    void execute(std::u32string line, bool recordInHistory);
    bool isRunning() const { return mRunningLines > 0; }

    void append(LogEntry&& entry);
    void scrollLines(std::int64_t lines);
    unsigned visibleLineCount() const;
    ConsoleSnapshot takeSnapshot(const Access& parts) const;
    std::size_t refresh(ConsoleSnapshot& snapshot);

private:
    bool applyCompletion(bool backwards);
    static void addNewLines(const Access& parts, ConsoleSnapshot& snapshot);
    void refuse(const std::u32string& line);
    void dispatch(ConsoleCommand* command, std::vector<std::u32string>&& words);
    void runCommand(ConsoleCommand& command, std::vector<std::u32string>&& words);
    void openRedirect(const std::u32string& target);
    void callObservers(Access& parts);
    void callObserver(Access& parts, Observers::Round& round);
    void waitForObservers(Access& parts, std::optional<std::uint64_t> id);

    // Members are destroyed from the last to the first: the mutex first, and the aliases before the commands, one of
    // which refers to them.
    Console& mConsole;
    Guarded mGuarded;
    Completion mCompletion;
    unsigned mRunningLines = 0; // lines that run now, each inside the one before

public:
    bool mOpen = false;
    History mHistory;
    unsigned mDepthLimit = 0; // how deep lines may run inside lines; 0 is no limit
    Color mTextColor{0, 255, 0, 255};
    Color mBackgroundColor{0, 0, 0, 204};
    float mCursorBlinkRate = 3.0F;               // changes between shown and hidden a second
    char32_t mCursorChar = 0x2588;               // full block
    glm::vec<2, unsigned int> mWindowSize{0, 0}; // logical pixels

    CommandTable mCommands;
    Runpath mRunPaths;
    std::map<std::u32string, std::vector<std::u32string>> mAliases;
    std::shared_ptr<QFont> mFont;

    // Equal to mFont but not a copy, which would share its data: measuring loads data into a font, and a drawing thread
    // measures with mFont at the same time.
    QFont mMeasuringFont;

    std::condition_variable_any mObserverReturned;

private:
    CheckedMutex mMutex;
};

} // namespace zephyr::console

#endif
