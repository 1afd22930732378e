#ifndef ZEPHYR_ATTACH_SCRIPTSESSION_H
#define ZEPHYR_ATTACH_SCRIPTSESSION_H

#include "attach/Answer.h"
#include "attach/ScriptInput.h"
#include "attach/Session.h"

#include <optional>

namespace zephyr::attach {

/// How a ScriptSession runs.
struct ScriptStyle
{
    bool isJson = false;      ///< Print entries as JSON, all of them.
    bool onlyAnswers = false; ///< Print no echoes; reasons are only given where the answer has none.
    bool keepsGoing = false;  ///< Run the lines behind one that failed.
};

/// Runs the lines of a script one after the other, and prints what they write. Each line that fails is complained of, with its
/// place in the script.
class ScriptSession : public Session
{
public:
    /// Borrows the input.
    ScriptSession(const console::remote::SocketPlace& place, const QString& name, ScriptStyle style,
                  ScriptInput& input);

protected:
    void greeted(const console::remote::HelloMessage& hello) override;
    void received(const console::remote::Message& message) override;

private:
    void runNext();
    void runLine(const std::optional<console::remote::ScriptLine>& line);
    void printOf(const console::remote::Entry& entry);
    void done(const console::remote::DoneMessage& done);

    ScriptStyle mStyle;
    ScriptInput& mInput;
    console::remote::ScriptLine mRunning;
    Answer mAnswer; // of the line that runs
    bool mHasFailed = false;
};

} // namespace zephyr::attach

#endif
