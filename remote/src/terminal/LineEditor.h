#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_LINEEDITOR_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_LINEEDITOR_H

#include "protocol/Completion.h"

#include <QString>

#include <cstdio>
#include <functional>
#include <memory>

namespace zephyr::console::remote {

class LineSource;

/// What a LineEditor calls, all on its thread and none from inside of its constructor. Each may be empty, may destroy
/// the editor, and must not throw.
struct LineCallbacks
{
    /// A line was entered. It has no line feed. The next one isn't asked for before this has returned.
    std::function<void(const QString& line)> entered;

    /// Nothing comes any more: the input has ended, after its last line, or the output was closed.
    std::function<void()> ended;

    /// Ctrl+C on an empty line. On another it takes the line away, as in a shell, and nothing is called.
    std::function<void()> interrupted;

    /// Asks what completes the text before the cursor. It may run an event loop until it knows.
    std::function<Completion(const QString& beforeCursor)> complete;
};

/// Asks for lines, in Qt's event loop: on a terminal with prompt, editing, history and completion, and with
/// text that is printed meanwhile above the line that is being typed.
///
/// - Where input or output is no terminal, or a terminal that can't move its cursor (`TERM=dumb`), lines are read as
///   they come, the last one without a line feed too, and no prompt is shown.
/// - Threads: a QCoreApplication's thread constructs it and makes all calls. Keys are read on a thread of the
///   editor's own, so that neither a half typed key sequence nor a search in the history holds up the program.
/// - The terminal is as the program found it while a line runs or the prompt is hidden, when the editor is gone, when
///   the program exits, is stopped or is ended by a signal. Signals whose handler isn't the default one are left
///   alone.
/// - One at a time edits lines in a process. A second one reads nothing, and prints.
/// - The user's `~/.editrc` holds. The terminal is taken for one of UTF-8, whatever the program's locale.
class LineEditor
{
public:
    /// Reads `in`, which is not read through its buffer, and writes to `out`. Both must outlive the editor. The
    /// prompt is shown as soon as events are processed.
    LineEditor(std::FILE* in, std::FILE* out, const QString& prompt, LineCallbacks callbacks);

    /// Leaves the terminal as it was found. A line that is being typed is lost.
    ~LineEditor();

    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    /// Reads the history from a file of lines and keeps it there from now on: 1,000 lines, in a file for the user
    /// alone. Several programs may use one file. A file that can't be read or written is none. Nothing is kept of
    /// lines that don't come from a terminal.
    void setHistoryFile(const QString& path);

    /// Prints text above the line that is being typed, which stays as it is, cursor included. A line feed is added
    /// where the text doesn't end with one. Control characters in it have effect: see EntryPrinter. O(length of the
    /// text and the line).
    void print(const QString& text);

    /// Shows or hides the prompt, for a line that runs until an event says that it has ended. What is typed meanwhile
    /// is kept. Where there is no prompt, lines aren't asked for while it is hidden.
    void setPromptShown(bool shown);

    /// Whether lines are edited on a terminal.
    bool isInteractive() const;

private:
    std::unique_ptr<LineSource> mSource;
};

} // namespace zephyr::console::remote

#endif
