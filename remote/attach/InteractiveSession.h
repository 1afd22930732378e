#ifndef ZEPHYR_ATTACH_INTERACTIVESESSION_H
#define ZEPHYR_ATTACH_INTERACTIVESESSION_H

#include "attach/Session.h"
#include "terminal/LineEditor.h"

#include <memory>
#include <optional>

namespace zephyr::attach {

/// A person at a terminal: types lines, which run one after the other, and sees the log as it grows.
class InteractiveSession : public Session
{
public:
    /// \param last the number of entries of the log to begin with.
    InteractiveSession(const console::remote::SocketPlace& place, const QString& name, bool isJson,
                       qint64 last);

protected:
    void greeted(const console::remote::HelloMessage& hello) override;
    void received(const console::remote::Message& message) override;
    void ended() override { mEditor.reset(); }

private:
    struct Question;

    void runLine(const QString& line);
    void print(const console::remote::Entry& entry);
    void done(qint64 id);
    void answer(const console::remote::CandidatesMessage& candidates);
    console::remote::Completion complete(const QString& beforeCursor);

    qint64 mLast;
    std::unique_ptr<console::remote::LineEditor> mEditor;
    std::optional<qint64> mRunning; // id of the line that runs
    std::optional<QString> mEcho;   // what was typed, until the log has it too
    Question* mQuestion = nullptr;  // that waits for its answer
};

} // namespace zephyr::attach

#endif
