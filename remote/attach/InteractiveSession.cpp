#include "attach/InteractiveSession.h"

#include "attach/ExitStatus.h"
#include "attach/HistoryPlace.h"

#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>
#include <variant>

namespace zephyr::attach {

using namespace console::remote;

namespace {

constexpr std::chrono::seconds kCompletionPatience(1);

} // namespace

/// What has been asked of the program, by somebody who waits for it.
struct InteractiveSession::Question
{
    qint64 id = 0;
    Completion completion; // the answer; without candidates until it comes
    QEventLoop loop;
};

InteractiveSession::InteractiveSession(const SocketPlace& place, const QString& name, bool isJson,
                                       qint64 last)
    : Session(place, name, isJson), mLast(last)
{}

void InteractiveSession::greeted(const HelloMessage& hello)
{
    mEditor = std::make_unique<LineEditor>(
        stdin, stdout, kPromptText,
        LineCallbacks{[this](const QString& line) { runLine(line); }, [this] { end(kOk); },
                      [this] { end(kInterrupted); },
                      [this](const QString& beforeCursor) { return complete(beforeCursor); }});
    mEditor->setHistoryFile(historyFile());
    sendFollow(hello, mLast);
}

void InteractiveSession::received(const Message& message)
{
    if (const auto* const entry = std::get_if<EntryMessage>(&message)) {
        print(entry->entry);
    } else if (const auto* const candidates = std::get_if<CandidatesMessage>(&message)) {
        answer(*candidates);
    } else if (const auto* const end = std::get_if<DoneMessage>(&message)) {
        done(end->id);
    }
}

void InteractiveSession::runLine(const QString& line)
{
    if (line.trimmed().isEmpty()) {
        return;
    }
    mRunning = sendRun(line);
    if (mEditor->isInteractive()) {
        mEcho = line;
    }
    mEditor->setPromptShown(false);
}

/// Prints an entry above the line that is being typed. The line that was typed is there already, behind the prompt.
void InteractiveSession::print(const Entry& entry)
{
    if (!output().isJson() && entry.type == Entry::Type::Input && mEcho == entry.text) {
        mEcho.reset();
    } else {
        mEditor->print(output().text(entry));
    }
}

void InteractiveSession::done(qint64 id)
{
    if (mRunning == id) {
        mRunning.reset();
        mEcho.reset();
        mEditor->setPromptShown(true);
    }
}

void InteractiveSession::answer(const CandidatesMessage& candidates)
{
    if (mQuestion != nullptr && mQuestion->id == candidates.id) {
        // A server may send a number beyond the sizes of this machine.
        const qint64 from = std::min<qint64>(candidates.from, std::numeric_limits<qsizetype>::max());
        mQuestion->completion = {candidates.candidates, static_cast<qsizetype>(from)};
        mQuestion->loop.quit();
    }
}

Completion InteractiveSession::complete(const QString& beforeCursor)
{
    Question question;
    question.id = sendComplete(beforeCursor);
    mQuestion = &question;
    QTimer::singleShot(kCompletionPatience, &question.loop, &QEventLoop::quit);
    question.loop.exec();
    mQuestion = nullptr;
    return question.completion.from <= beforeCursor.size() ? question.completion : Completion{};
}

} // namespace zephyr::attach
