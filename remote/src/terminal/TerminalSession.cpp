#include "terminal/TerminalSession.h"

#include "console/LineCompletion.h"
#include "console/LineRunner.h"
#include "console/Texts.h"
#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace zephyr::console::remote {

namespace {

constexpr std::size_t kEntriesAtATime = 256;

// How often a line that waits looks whether another one, which processes events, has ended: of that nobody tells.
constexpr std::chrono::milliseconds kRetryTime{10};

} // namespace

TerminalSession::TerminalSession(Console& console, const ConsoleTerminalOptions& options)
    : mConsole(console), mOptions(options)
{
    mRetry.setSingleShot(true);
    mRetry.setInterval(kRetryTime);
    QObject::connect(&mRetry, &QTimer::timeout, &mCalls, [this] { runWaiting(); });
    mPrintSome.setSingleShot(true);
    mPrintSome.setInterval(0);
    QObject::connect(&mPrintSome, &QTimer::timeout, &mCalls, [this] { printSome(); });
}

void TerminalSession::start()
{
    mConsole.setDepthLimit(ConsoleTerminal::kDepthLimit);
    mEditor = std::make_unique<LineEditor>(
        stdin, stdout, mOptions.prompt,
        LineCallbacks{[this](const QString& line) { lineEntered(line); },
                      [this] { end(); },
                      {},
                      [this](const QString& beforeCursor) { return complete(beforeCursor); }});
    mEditor->setHistoryFile(mOptions.historyFile);
    mObserver = mConsole.addObserver([this] { logGrew(); });
    printNew();
}

void TerminalSession::stop()
{
    mConsole.removeObserver(mObserver);
    printNew();
    mEditor.reset();
    mWaiting.reset();
}

void TerminalSession::lineEntered(const QString& line)
{
    if (mConsole.isRunning()) {
        mWaiting = line.toStdU32String();
        mEditor->setPromptShown(false);
        mRetry.start();
    } else {
        run(line.toStdU32String());
    }
}

void TerminalSession::runWaiting()
{
    if (!mWaiting) {
        return;
    }
    if (mConsole.isRunning()) {
        mRetry.start();
        return;
    }
    const auto self = shared_from_this(); // a line may destroy it
    run(*std::exchange(mWaiting, std::nullopt));
    if (mEditor) {
        mEditor->setPromptShown(true);
    }
}

/// Notes a line whose echo isn't printed, as the user sees it where it was typed.
void TerminalSession::noteTyped(const std::u32string& line)
{
    if (mEditor->isInteractive()) {
        mTyped = textOf(line);
    }
}

void TerminalSession::run(const std::u32string& line)
{
    const auto self = shared_from_this(); // the line may destroy it
    printNew();
    noteTyped(line);
    const LineResult result = runLine(mConsole, line);
    if (!mEditor) {
        return;
    }
    printNew();
    mTyped.reset();
    if (result.isEndOfRun && !mEditor->isInteractive()) {
        end();
    }
}

void TerminalSession::end()
{
    if (mOptions.ended) {
        const auto self = shared_from_this(); // the host may destroy it
        mOptions.ended();
    } else {
        QCoreApplication::quit();
    }
}

Completion TerminalSession::complete(const QString& beforeCursor)
{
    return mConsole.isRunning() ? Completion{} : completionOf(mConsole, beforeCursor.toStdU32String());
}

/// Called by the thread that wrote. What a line writes that runs is printed at once; nobody would come to it before
/// its end.
void TerminalSession::logGrew()
{
    if (std::this_thread::get_id() == mThread && mConsole.isRunning()) {
        printNew();
    } else if (!mIsPrintingDue.exchange(true)) {
        QMetaObject::invokeMethod(&mCalls, [this] { mPrintSome.start(); }, Qt::QueuedConnection);
    }
}

/// Prints what the log has by now, and not what other threads write meanwhile: they may be faster.
void TerminalSession::printNew()
{
    const std::size_t end = mConsole.logSize();
    while (mEditor && mNext < end) {
        print(std::min(kEntriesAtATime, end - mNext));
    }
}

/// Prints some of what is new, and the rest when other events have been processed.
void TerminalSession::printSome()
{
    mIsPrintingDue = false;
    if (mEditor) {
        print(kEntriesAtATime);
    }
    if (mEditor && mNext < mConsole.logSize()) {
        mIsPrintingDue = true;
        mPrintSome.start();
    }
}

/// Prints `count` entries at most.
void TerminalSession::print(std::size_t count)
{
    std::vector<LogEntry> entries;
    mConsole.readLog(mNext, count, entries);
    QString text;
    for (const LogEntry& logged : entries) {
        const Entry entry = entryOf(mNext++, logged);
        if (!isEchoOnScreen(entry)) {
            text += mPrinter.text(entry) + u'\n';
        }
    }
    if (!text.isEmpty()) {
        mEditor->print(text);
    }
}

bool TerminalSession::isEchoOnScreen(const Entry& entry)
{
    if (!mTyped || entry.type != Entry::Type::Input || entry.text != *mTyped) {
        return false;
    }
    mTyped.reset();
    return true;
}

} // namespace zephyr::console::remote
