#include "terminal/EditedLines.h"

#include "terminal/EntryPrinter.h"
#include "terminal/Utf8Locale.h"

#include <QMetaObject>
#include <QPointer>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <utility>

namespace zephyr::console::remote {

namespace {

constexpr int kMaxListedRows = 12;

// How often a program in the background looks whether it is in the foreground again, of which nobody tells it.
constexpr std::chrono::milliseconds kBackgroundStep{300};
constexpr std::chrono::milliseconds kForEver{-1};

EditedLines& ownerOf(EditLine* edit) { return *static_cast<EditedLines*>(EditScreen::clientData(edit)); }

/// Leaves signals to the program's own threads, but for those that stop who uses a terminal from the background.
void blockSignals()
{
    sigset_t mask{};
    sigfillset(&mask);
    for (const int stopping : {SIGTTIN, SIGTTOU, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        sigdelset(&mask, stopping);
    }
    ::pthread_sigmask(SIG_BLOCK, &mask, nullptr);
}

QString commonPrefix(const QStringList& words)
{
    QString prefix = words.first();
    for (const QString& word : words) {
        const auto [end, other] = std::mismatch(prefix.cbegin(), prefix.cend(), word.cbegin(), word.cend());
        prefix.truncate(end - prefix.cbegin());
    }
    if (!prefix.isEmpty() && prefix.back().isHighSurrogate()) {
        prefix.chop(1);
    }
    return prefix;
}

bool hasControlCharacter(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

/// A candidate as it is listed: on one line, and without effect on the terminal.
QString listed(const QString& candidate)
{
    return harmless(candidate).replace(u'\n', QStringLiteral("^J")).replace(u'\t', QStringLiteral("^I"));
}

} // namespace

std::unique_ptr<EditedLines> EditedLines::create(std::FILE* in, std::FILE* out, const QString& prompt,
                                                 LineCallbacks callbacks)
{
    std::unique_ptr<EditedLines> lines(new EditedLines(in, out, prompt, std::move(callbacks)));
    lines->mGuard = TerminalGuard::create(::fileno(in), ::fileno(out), lines->mKeys.bell());
    if (!lines->mGuard) {
        return nullptr;
    }
    lines->mThread = std::thread([&lines = *lines] { lines.run(); });
    return lines;
}

EditedLines::EditedLines(std::FILE* in, std::FILE* out, const QString& prompt, LineCallbacks callbacks)
    : mIn(in),
      mOut(out),
      mPrompt(prompt.toStdWString()),
      mCallbacks(std::move(callbacks)),
      mKeys(::fileno(in))
{}

EditedLines::~EditedLines()
{
    {
        const std::lock_guard lock(mMutex);
        mEnds = true;
    }
    mChanged.notify_all();
    mKeys.ring();
    if (mThread.joinable()) {
        mThread.join();
    }
}

void EditedLines::setHistoryFile(const QString& path)
{
    const std::lock_guard lock(mMutex);
    mHistory.setFile(path);
}

void EditedLines::print(const QString& text)
{
    const std::lock_guard lock(mMutex);
    const Utf8Locale locale;
    printAbove(text);
}

void EditedLines::setPromptShown(bool shown)
{
    {
        const std::lock_guard lock(mMutex);
        const Utf8Locale locale;
        mIsShown = shown;
        if (!shown && mIsOnScreen) {
            hide();
        }
    }
    mChanged.notify_all();
    mKeys.ring();
}

void EditedLines::deliver(Event event, const QString& line)
{
    const LineCallbacks callbacks = mCallbacks; // which may destroy this object
    const QPointer<QObject> host = mHost.get();
    TerminalGuard& guard = *mGuard;
    if (event == Event::End) {
        if (callbacks.ended) {
            callbacks.ended();
        }
        return;
    }
    guard.setSparesInterrupt(event == Event::Line);
    if (event == Event::Line && callbacks.entered) {
        callbacks.entered(line);
    } else if (event == Event::Interrupt && callbacks.interrupted) {
        callbacks.interrupted();
    }
    if (host.isNull()) {
        return;
    }
    guard.setSparesInterrupt(false);
    {
        const std::lock_guard lock(mMutex);
        mHostHasLine = false;
    }
    mChanged.notify_all();
}

void EditedLines::answer(const QString& beforeCursor)
{
    const LineCallbacks callbacks = mCallbacks; // an event loop inside may destroy this object
    const QPointer<QObject> host = mHost.get();
    const Completion completion = callbacks.complete ? callbacks.complete(beforeCursor) : Completion{};
    if (host.isNull()) {
        return;
    }
    {
        const std::lock_guard lock(mMutex);
        mAnswer = completion;
    }
    mChanged.notify_all();
}

void EditedLines::run()
{
    blockSignals();
    const Utf8Locale locale;
    mLock = std::unique_lock(mMutex);
    std::optional<Event> event;
    while (event != Event::End && waitToEdit()) {
        std::wstring line;
        event = editLine(line);
        if (event && !mEnds) {
            send(*event, line);
        }
    }
    mScreen.reset();
    mLock.unlock();
}

/// Waits until there is to be a prompt. \return false if there is to be none any more.
bool EditedLines::waitToEdit()
{
    while (!mEnds && (mHostHasLine || !mIsShown || !mGuard->isInForeground())) {
        if (mHostHasLine || !mIsShown) {
            mChanged.wait(mLock);
        } else {
            mChanged.wait_for(mLock, kBackgroundStep);
        }
    }
    if (mGuard->takeInterrupted()) {
        mKeys.clear(); // as the terminal forgets what was typed ahead
    }
    return !mEnds;
}

/// \return nothing if the line was taken away.
std::optional<EditedLines::Event> EditedLines::editLine(std::wstring& line)
{
    if (!mScreen) {
        mScreen = std::make_unique<EditScreen>(
            mIn, mOut, mPrompt,
            EditFunctions{this, [](EditLine* edit, wchar_t* key) { return ownerOf(edit).nextKey(*key); },
                          [](EditLine* edit, int) { return ownerOf(edit).complete(); },
                          [](EditLine* edit, int) { return ownerOf(edit).interrupt(); },
                          [](EditLine* edit, int) { return ownerOf(edit).stop(); }},
            mHistory.handle());
    }
    mInterrupted = Interrupted::Nothing;
    mGuard->begin();
    mIsOnScreen = true;
    const bool hasLine = mScreen->edit(line);
    mIsOnScreen = false;
    mGuard->end();
    if (mInterrupted != Interrupted::Nothing) {
        return mInterrupted == Interrupted::EmptyLine ? std::optional(Event::Interrupt) : std::nullopt;
    }
    if (!hasLine) {
        mScreen->write("\r\n"); // what comes next in the terminal begins on a line of its own
        return Event::End;
    }
    line.pop_back();
    return Event::Line;
}

int EditedLines::nextKey(wchar_t& key)
{
    while (waitUntilShown()) {
        if (const std::optional<wchar_t> next = mKeys.take()) {
            key = *next;
            return 1;
        }
        mScreen->keepTerminalKeys();
        if (waitForKeys(kForEver) && mIsOnScreen && !mKeys.read()) {
            return 0;
        }
    }
    return 0;
}

/// Waits until the line is on the screen. \return false if it won't be any more.
bool EditedLines::waitUntilShown()
{
    for (;;) {
        followSignals();
        showOrHide();
        if (mIsOnScreen || mEnds) {
            return !mEnds;
        }
        waitForKeys(mIsShown ? kBackgroundStep : kForEver);
    }
}

/// Lets go of the lock until something happens. \return whether there are keys to read.
bool EditedLines::waitForKeys(std::chrono::milliseconds atMost)
{
    const bool reads = mIsOnScreen;
    mLock.unlock();
    const bool hasKeys = mKeys.wait(reads, atMost);
    mLock.lock();
    return hasKeys;
}

/// Draws what a new size or a stop has spoilt.
void EditedLines::followSignals()
{
    const bool continued = mGuard->takeContinued();
    if (!mIsOnScreen) {
        return;
    }
    if (continued) {
        mIsOnScreen = false; // what a shell wrote meanwhile stays
        mGuard->end();
    } else if (mScreen->hasNewSize()) {
        mScreen->erase();
        mScreen->draw();
    }
}

void EditedLines::showOrHide()
{
    if (mayEdit() == mIsOnScreen) {
        return;
    }
    if (mIsOnScreen) {
        hide();
    } else {
        show();
    }
}

bool EditedLines::mayEdit() const { return mIsShown && mGuard->isInForeground(); }

void EditedLines::show()
{
    mScreen->setRaw(false); // which it is, unless a shell made it so without libedit's knowledge
    mGuard->begin();
    mScreen->setRaw(true);
    mIsOnScreen = true;
    mScreen->draw();
}

void EditedLines::hide()
{
    if (mGuard->isInForeground()) {
        mScreen->erase();
        mScreen->setRaw(false);
    }
    mGuard->end();
    mIsOnScreen = false;
}

void EditedLines::send(Event event, const std::wstring& line)
{
    if (event == Event::Line) {
        mHistory.add(line);
    }
    mHostHasLine = true;
    QMetaObject::invokeMethod(
        mHost.get(), [this, event, text = QString::fromStdWString(line)] { deliver(event, text); },
        Qt::QueuedConnection);
}

unsigned char EditedLines::complete()
{
    const std::wstring_view before = mScreen->beforeCursor();
    const QString text = QString::fromWCharArray(before.data(), static_cast<qsizetype>(before.size()));
    if (const std::optional<Completion> completion = ask(text)) {
        apply(*completion, text);
    }
    return CC_REFRESH;
}

unsigned char EditedLines::interrupt()
{
    mInterrupted = mScreen->text().empty() ? Interrupted::EmptyLine : Interrupted::Line;
    mScreen->leave("^C");
    mScreen->clear();
    return CC_NEWLINE;
}

unsigned char EditedLines::stop()
{
    mScreen->leave("^Z");
    mScreen->setRaw(false);
    mGuard->end();
    mIsOnScreen = false;
    mLock.unlock();
    mGuard->stopProgram();
    mLock.lock();
    return waitUntilShown() ? CC_NORM : CC_EOF; // libedit makes the terminal raw before it asks for a key
}

std::optional<Completion> EditedLines::ask(const QString& beforeCursor)
{
    mAnswer.reset();
    QMetaObject::invokeMethod(
        mHost.get(), [this, beforeCursor] { answer(beforeCursor); }, Qt::QueuedConnection);
    mChanged.wait(mLock, [this] { return mEnds || mAnswer; });
    return std::exchange(mAnswer, std::nullopt);
}

void EditedLines::apply(const Completion& completion, const QString& beforeCursor)
{
    const QStringList& candidates = completion.candidates;
    if (candidates.isEmpty() || !mIsOnScreen) {
        return;
    }
    const qsizetype from = std::clamp<qsizetype>(completion.from, 0, beforeCursor.size());
    const QString typed = beforeCursor.mid(from);
    const QString common = commonPrefix(candidates);
    const bool isUnique = candidates.size() == 1;
    const bool isLonger = common.size() > typed.size() && common.startsWith(typed, Qt::CaseInsensitive);
    if ((isUnique || isLonger) && !hasControlCharacter(common)) { // which nobody could have typed
        mScreen->replaceFrom(static_cast<std::size_t>(beforeCursor.left(from).toUcs4().size()),
                             (isUnique ? common + u' ' : common).toStdWString());
    } else {
        list(candidates);
    }
}

void EditedLines::list(const QStringList& candidates)
{
    QStringList shown;
    std::transform(candidates.cbegin(), candidates.cend(), std::back_inserter(shown), listed);
    const ScreenPlace size = mScreen->size();
    printAbove(inColumns(shown, size.column, std::clamp(size.row - 3, 1, kMaxListedRows)));
}

void EditedLines::printAbove(const QString& text)
{
    const QByteArray bytes = (text.endsWith(u'\n') ? text : text + u'\n').toUtf8();
    if (mIsOnScreen) {
        mScreen->erase();
    }
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), mOut);
    std::fflush(mOut);
    if (mIsOnScreen) {
        mScreen->draw();
    }
}

} // namespace zephyr::console::remote
