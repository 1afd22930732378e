#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_EDITEDLINES_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_EDITEDLINES_H

#include "terminal/EditScreen.h"
#include "terminal/KeyReader.h"
#include "terminal/LineEditor.h"
#include "terminal/LineHistory.h"
#include "terminal/LineSource.h"
#include "terminal/TerminalGuard.h"

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace zephyr::console::remote {

/// Lines that are edited on a terminal.
///
/// libedit waits for keys in the middle of its functions, as in its search. So it edits on a thread of its own, which
/// holds the lock whenever it doesn't wait for a key or an answer. Who has the lock finds libedit between two keys
/// and may draw.
class EditedLines : public LineSource
{
public:
    /// \return null if the process edits lines on a terminal already.
    static std::unique_ptr<EditedLines> create(std::FILE* in, std::FILE* out, const QString& prompt,
                                               LineCallbacks callbacks);

    ~EditedLines() override;

    void setHistoryFile(const QString& path) override;
    void print(const QString& text) override;
    void setPromptShown(bool shown) override;
    bool isInteractive() const override { return true; }

private:
    /// What the editor's thread has for the host.
    enum class Event
    {
        Line,
        Interrupt,
        End
    };

    /// What Ctrl+C took away.
    enum class Interrupted
    {
        Nothing,
        EmptyLine,
        Line
    };

    EditedLines(std::FILE* in, std::FILE* out, const QString& prompt, LineCallbacks callbacks);

    // On the host's thread.
    void deliver(Event event, const QString& line);
    void answer(const QString& beforeCursor);

    // On the editor's thread, with the lock.
    void run();
    bool waitToEdit();
    std::optional<Event> editLine(std::wstring& line);
    int nextKey(wchar_t& key);
    bool waitUntilShown();
    bool waitForKeys(std::chrono::milliseconds atMost);
    void followSignals();
    void showOrHide();
    void send(Event event, const std::wstring& line);
    unsigned char complete();
    unsigned char interrupt();
    unsigned char stop();
    std::optional<Completion> ask(const QString& beforeCursor);
    void apply(const Completion& completion, const QString& beforeCursor);
    void list(const QStringList& candidates);

    // On either, with the lock.
    void show();
    void hide();
    void printAbove(const QString& text);
    bool mayEdit() const;

    std::FILE* const mIn;
    std::FILE* const mOut;
    const std::wstring mPrompt;
    const LineCallbacks mCallbacks;
    KeyReader mKeys;
    std::unique_ptr<TerminalGuard> mGuard;
    std::unique_ptr<QObject> mHost = std::make_unique<QObject>(); // takes calls to the host's thread

    std::mutex mMutex; // guards what follows
    std::condition_variable mChanged;
    std::unique_lock<std::mutex> mLock; // the editor's thread's
    LineHistory mHistory;
    std::unique_ptr<EditScreen> mScreen; // made when the program is first in the foreground
    std::optional<Completion> mAnswer;
    bool mEnds = false;
    bool mIsShown = true;     // as the host wishes
    bool mIsOnScreen = false; // prompt and line; the terminal is raw
    bool mHostHasLine = false;
    Interrupted mInterrupted = Interrupted::Nothing;
    std::thread mThread; // last, so that it finds the rest
};

} // namespace zephyr::console::remote

#endif
