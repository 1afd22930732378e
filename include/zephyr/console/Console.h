#ifndef ZEPHYR_CONSOLE_CONSOLE_H
#define ZEPHYR_CONSOLE_CONSOLE_H

#include "zephyr/common/Angle.h"
#include "zephyr/common/Color.h"
#include "zephyr/console/ConsoleCommand.h"
#include "zephyr/console/ConsoleMessageType.h"
#include "zephyr/console/ConsoleSnapshot.h"
#include "zephyr/console/IWriteableConsole.h"
#include "zephyr/console/detail/CheckedMutex.h"
#include "zephyr/console/detail/Export.h"

#include <glm/vec2.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QFont;

namespace zephyr::console {

/// A command console: an input line, the commands and aliases that its words name, and the log that they
/// write.
///
/// - It is: the model, driven by the host's key, wheel and size events, and drawn from snapshot() by a
///   ConsoleRenderer. It is not: a window, an event loop or a painter, and it reads no configuration.
/// - Threads: the thread that constructs it, the host's, owns it; everything is called there. Only the
///   writers (write(), writeIndented(), newline()), snapshot() and refresh() may be called from any thread at
///   any time.
///   No lock is held while a command, a completion or a callback runs.
/// - Ownership: it owns its registered commands and its log. It is neither copied nor moved. What it is asked
///   to look up stays its own.
/// - Failure: what a user does wrong is answered by lines in the log. An exception that a command throws, and
///   `std::system_error` (`resource_deadlock_would_occur`) for a code point that the full input line refuses,
///   leave through the function that the host called; the console stays usable. Memory exhaustion leaves as
///   `std::bad_alloc`.
///
/// Texts are strings of 32-bit code points; positions and lengths in them count code points.
class ZEPHYR_CONSOLE_EXPORT Console : public IWriteableConsole
{
public:
    /// A closed console whose log holds its two start-up lines, with the commands `help` and `alias`, and a
    /// runpath of the executable's directory followed by the current directory, both as they are now.
    Console();

    /// Destroys every command. A command's destructor must not use the console.
    ZEPHYR_CONSOLE_NO_EXPORT ~Console() override = default;

    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    Console(Console&&) = delete;
    Console& operator=(Console&&) = delete;

    /// Opens the console with an empty input line. An open console's input line is emptied as well. Log,
    /// history and scroll position are kept.
    void open();

    /// Closes the console. The input line is kept until the next open().
    void close();

    /// Whether the console is open: keys and the wheel then act on it. For the host's thread.
    bool isOpen() const;

    /// Destroys every command, `help` and `alias` included; aliases, log, history and runpath are kept and
    /// the console stays usable. A host calls it before it unloads the code that its commands live in. Called
    /// while a command runs, the commands are destroyed when the outermost one has returned.
    void shutdown();

    /// Tells the size of the window in logical pixels, width then height. It decides how many lines a page
    /// has when scrolling; 0 by 0 until the first call, which makes a page of no lines. With a height,
    /// scrolling measures the font, which needs a QGuiApplication.
    void setWindowSize(const glm::vec<2, unsigned int>& size);

    /// The colour of all text: opaque green.
    const Color& textColor() const;

    /// The colour behind the text: black, 80 % opaque.
    const Color& backgroundColor() const;

    /// How often a second the cursor changes between shown and hidden: 3.
    float cursorBlinkRate() const;

    /// The code point that shows the cursor: U+2588, full block.
    char32_t cursorChar() const;

    /// The insertion point, in code points from the start of the input line. It may lie past the end of
    /// activeInput() when a line was recalled or completed that is longer than the input buffer.
    unsigned cursorPosition() const;

    /// Handles a press of a key.
    ///
    /// \param key the key in Qt's numbering (`Qt::Key`).
    /// \param modifiers Qt's modifier bits (`Qt::KeyboardModifiers`); only Ctrl is looked at.
    /// \param text the code points that the key types; only the first is used. Control characters are not
    ///     filtered: a host that doesn't want them typed passes an empty text.
    /// \return whether the console consumed the key. A closed console consumes the back-quote only, which
    ///     opens it; an open one consumes every key but a Tab or Backtab that begins a completion or finds none.
    ///
    /// Throws `std::system_error` (`resource_deadlock_would_occur`) when the input line is full, leaving it
    /// unchanged; and what a command or a completion that the key runs throws.
    bool keyPressed(int key, int modifiers, const std::u32string& text);

    /// Handles the release of a key: does nothing, and answers whether the console is open.
    bool keyReleased(int key, int modifiers, const std::u32string& text);

    /// Scrolls the log: one line for each 10 degrees of `vertical`, rounded to whole lines (two for a notch of 15),
    /// backwards in time for positive values. `horizontal` is ignored.
    /// \return whether the console consumed the turn, that is, whether it is open.
    bool mouseWheel(Angle vertical, Angle horizontal);

    /// A copy of the input line as the user sees it.
    std::u32string activeInput() const;

    /// Files `command` under its name and takes ownership. A command that has the name already is destroyed;
    /// while a command runs, it is destroyed when the outermost one has returned. Null reports the assertion
    /// `command` and registers nothing. Throws what `command->name()` throws; `command` is then still the
    /// caller's.
    void registerCommand(std::unique_ptr<ConsoleCommand>&& command);

    /// The command registered under exactly `name`, or null. It stays the console's, and lives until it is
    /// replaced or the console is shut down or destroyed. O(log n).
    ConsoleCommand* lookupCommand(const std::u32string& name);

    /// The lines of the alias named exactly `name`, or null. The pointer is valid until that alias is
    /// removed. O(log n).
    const std::vector<std::u32string>* lookupAlias(const std::u32string& name) const;

    /// Calls `fn` for each registered command in ascending order of name. `fn` may register commands: those
    /// that come later in the order are visited too. Throws `std::bad_function_call` when `fn` is empty and
    /// there is a command, and what `fn` throws.
    void forEachCommand(const std::function<void(const ConsoleCommand&)>& fn);

    /// Calls `fn` for each alias in ascending order of name. `fn` may change the aliases, those that it is
    /// called with included: it sees copies. Throws `std::bad_function_call` when `fn` is empty and there is
    /// an alias, and what `fn` throws.
    void forEachAlias(
        const std::function<void(const std::u32string& name, const std::vector<std::u32string>& lines)>& fn);

    /// Runs one line as if it had been typed, but without recording it in the history; the input line is
    /// cleared by any line that has a word. Aliases come before commands. There is no limit on how deep
    /// aliases may nest. Throws what the command throws; a redirection then stays open until the next command
    /// has run.
    void execute(const std::u32string& line);

    /// Runs each line of the file at `path` with execute(); empty lines and lines that begin with `//` after
    /// trimming are skipped. A file that can't be opened, or is a directory, reports the assertion
    /// `ifs.is_open()`. \return whether the file could be opened. Throws what a line's command throws; the
    /// rest is then not run.
    bool runFile(const std::filesystem::path& path);

    /// Runs the first file called `name` in the directories of the runpath, with a warning when there are
    /// several. \return false when there is none, else what runFile() answers. Throws
    /// `std::filesystem::filesystem_error`
    ///         ("exists") when a path can't be tested, and what a line's command throws.
    bool runFileWithName(const std::u32string& name);

    /// Adds `path` at the end of the runpath. \return false, with nothing added, when an equal path is there
    /// already; paths are compared element by element, without a look at the disk.
    bool appendRunpath(const std::filesystem::path& path);

    /// Removes the first path equal to `path` from the runpath. \return false when there is none.
    bool removeRunpath(const std::filesystem::path& path);

    /// The directories in which console files are searched, in order.
    const std::vector<std::filesystem::path>& runPaths() const;

    /// A copy of everything that drawing needs, taken in one step. From any thread. O(length of the log).
    ConsoleSnapshot snapshot() const;

    /// Brings an earlier snapshot of this console up to date, so that it equals what snapshot() would return,
    /// by copying only the entries written since. A snapshot of another console, or one that was moved from,
    /// is replaced whole. From any thread; the snapshot belongs to the caller alone meanwhile. O(entries
    /// written since); throws `std::bad_alloc`, leaving the snapshot as it was.
    void refresh(ConsoleSnapshot& snapshot) const;

    void write(const std::string& text, ConsoleMessageType type) override;
    void write(const std::u32string& text, ConsoleMessageType type) override;
    void writeIndented(const std::string& text, ConsoleMessageType type, unsigned indent) override;
    void writeIndented(const std::string& text, unsigned indent) override;
    void writeIndented(const std::u32string& text, ConsoleMessageType type, unsigned indent) override;
    void writeIndented(const std::u32string& text, unsigned indent) override;
    void newline() override;

private:
    /// A line in the history. The command is not owned and may be gone; it is never followed.
    struct CommandRecord
    {
        ConsoleCommand* command; ///< What the first word named, or null.
        std::u32string line;     ///< The line, with U+FFFF for each space inside quotes.
    };

    class HostCodeScope;

    ZEPHYR_CONSOLE_NO_EXPORT bool openKeyPressed(int key, int modifiers, const std::u32string& text);
    ZEPHYR_CONSOLE_NO_EXPORT bool editKeyPressed(int key, int modifiers, const std::u32string& text);
    ZEPHYR_CONSOLE_NO_EXPORT bool textKeyPressed(int key, int modifiers, const std::u32string& text);

    ZEPHYR_CONSOLE_NO_EXPORT void paste();
    ZEPHYR_CONSOLE_NO_EXPORT void insertText(const std::u32string& text);
    ZEPHYR_CONSOLE_NO_EXPORT void erasePrevious(int modifiers);
    ZEPHYR_CONSOLE_NO_EXPORT void eraseNext(int modifiers);
    ZEPHYR_CONSOLE_NO_EXPORT void eraseInput(std::uint32_t first, std::uint32_t count);
    ZEPHYR_CONSOLE_NO_EXPORT void moveLeft(int modifiers);
    ZEPHYR_CONSOLE_NO_EXPORT void moveRight(int modifiers);
    ZEPHYR_CONSOLE_NO_EXPORT void moveCursorTo(std::uint32_t position);
    ZEPHYR_CONSOLE_NO_EXPORT void showLine(const std::u32string& line);
    ZEPHYR_CONSOLE_NO_EXPORT void clearInputLine();
    ZEPHYR_CONSOLE_NO_EXPORT static std::uint32_t nextWordStart(const std::u32string& line,
                                                                std::uint32_t pos);
    ZEPHYR_CONSOLE_NO_EXPORT static std::uint32_t prevWordStart(const std::u32string& line,
                                                                std::uint32_t pos);

    ZEPHYR_CONSOLE_NO_EXPORT void navigateHistory(int direction);
    ZEPHYR_CONSOLE_NO_EXPORT bool selectRecord(int direction);
    ZEPHYR_CONSOLE_NO_EXPORT void submitInput();

    ZEPHYR_CONSOLE_NO_EXPORT bool autoComplete(bool backwards);
    ZEPHYR_CONSOLE_NO_EXPORT bool applyCompletion(bool backwards);
    ZEPHYR_CONSOLE_NO_EXPORT void resetCompletion();

    ZEPHYR_CONSOLE_NO_EXPORT void execute(std::u32string line, bool recordInHistory);
    ZEPHYR_CONSOLE_NO_EXPORT void dispatch(std::vector<std::u32string>&& words, std::u32string&& maskedLine,
                                           bool recordInHistory);
    ZEPHYR_CONSOLE_NO_EXPORT void runCommand(ConsoleCommand& command, std::vector<std::u32string>&& words);
    ZEPHYR_CONSOLE_NO_EXPORT void openRedirect(const std::u32string& target);
    ZEPHYR_CONSOLE_NO_EXPORT void closeRedirect();
    ZEPHYR_CONSOLE_NO_EXPORT void retire(std::unique_ptr<ConsoleCommand>& command);

    ZEPHYR_CONSOLE_NO_EXPORT void runFileLine(std::string& line);
    ZEPHYR_CONSOLE_NO_EXPORT void warnOfSeveral(const std::vector<std::filesystem::path>& candidates,
                                                const std::u32string& name);

    ZEPHYR_CONSOLE_NO_EXPORT void appendLine(std::u32string text, ConsoleMessageType type, unsigned indent);
    ZEPHYR_CONSOLE_NO_EXPORT void scrollLines(int lines);
    ZEPHYR_CONSOLE_NO_EXPORT void resetScroll();
    ZEPHYR_CONSOLE_NO_EXPORT unsigned visibleLineCount() const;

    ZEPHYR_CONSOLE_NO_EXPORT ConsoleSnapshot takeSnapshot() const;

    bool mOpen = false;

    // The input line. Its buffer's size is what typing at the end is limited by, and moves with the edits; a
    // recalled or completed line may be longer, so that mInputLength and mCursorPos may exceed the size.
    std::u32string mInput;
    std::uint32_t mCursorPos = 0;
    std::uint32_t mInputLength = 0;
    std::uint32_t mCompletionIndex;
    std::vector<std::u32string> mCompletions;
    std::u32string mCompletionBase; // the line that mCompletions was computed for

    std::int32_t mHistoryIndex = -1; // 0 is the newest record, -1 none
    std::vector<LogEntry> mLog;
    std::vector<CommandRecord> mCmdBuffer;
    std::ofstream mRedirectStream; // every use of it under mMutex, since any thread may append

    Color mTextColor{0, 255, 0, 255};
    Color mBackgroundColor{0, 0, 0, 204};
    float mCursorBlinkRate = 3.0f;               // changes between shown and hidden a second
    char32_t mCursorChar = 0x2588;               // full block
    std::uint32_t mScrollOffset = 0;             // in entries back from the newest
    glm::vec<2, unsigned int> mWindowSize{0, 0}; // logical pixels

    std::map<std::u32string, std::unique_ptr<ConsoleCommand>> mCommands;
    std::vector<std::filesystem::path> mRunPaths;
    std::map<std::u32string, std::vector<std::u32string>> mAliases;
    std::shared_ptr<QFont> mFont;

    // Guards mLog, mRedirectStream, mScrollOffset and the writing of mInput, mCursorPos and mInputLength. The
    // rest belongs to the host's thread.
    mutable detail::CheckedMutex mMutex;

    // Commands that were replaced while host code ran: they live until it has returned, since it may be
    // theirs.
    std::vector<std::unique_ptr<ConsoleCommand>> mRetired;
    unsigned mHostCodeDepth = 0;
};

} // namespace zephyr::console

#endif
