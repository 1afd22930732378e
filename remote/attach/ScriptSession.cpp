#include "attach/ScriptSession.h"

#include "attach/Complaint.h"
#include "attach/ExitStatus.h"

#include <variant>

namespace zephyr::attach {

using namespace console::remote;

ScriptSession::ScriptSession(const SocketPlace& place, const QString& name, ScriptStyle style,
                             ScriptInput& input)
    : Session(place, name, style.isJson), mStyle(style), mInput(input)
{}

void ScriptSession::greeted(const HelloMessage& /*hello*/) { runNext(); }

void ScriptSession::received(const Message& message)
{
    if (const auto* const entry = std::get_if<EntryMessage>(&message)) {
        printOf(entry->entry);
    } else if (const auto* const end = std::get_if<DoneMessage>(&message)) {
        done(*end);
    }
}

void ScriptSession::runNext()
{
    mInput.next([this](const std::optional<ScriptLine>& line) { runLine(line); });
}

void ScriptSession::runLine(const std::optional<ScriptLine>& line)
{
    if (line) {
        mRunning = *line;
        mAnswer = {};
        sendRun(line->text);
    } else if (mInput.error()) {
        fail(*mInput.error());
    } else {
        end(mHasFailed ? kLineFailed : kOk);
    }
}

void ScriptSession::printOf(const Entry& entry)
{
    const std::vector<Entry> answers = mAnswer.add(entry);
    if (mStyle.onlyAnswers && !mStyle.isJson) {
        for (const Entry& answer : answers) {
            print(answer);
        }
    } else {
        print(entry);
    }
}

void ScriptSession::done(const DoneMessage& done)
{
    if (done.outcome != Outcome::Ok) {
        mHasFailed = true;
        if (!mStyle.onlyAnswers || !mAnswer.says(done.reason)) {
            complain(mInput.placeOf(mRunning) + done.reason);
        }
    }
    if (mHasFailed && !mStyle.keepsGoing) {
        end(kLineFailed);
    } else {
        runNext();
    }
}

} // namespace zephyr::attach
