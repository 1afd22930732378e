#ifndef ZEPHYR_CONSOLE_CONSOLE_H
#define ZEPHYR_CONSOLE_CONSOLE_H

#include "zephyr/common/Angle.h"
#include "zephyr/common/Color.h"
#include "zephyr/console/ConsoleCommand.h"
#include "zephyr/console/ConsoleMessageType.h"
#include "zephyr/console/ConsoleSnapshot.h"
#include "zephyr/console/IWriteableConsole.h"
#include "zephyr/console/detail/Export.h"

#include <glm/vec2.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zephyr::console {

/// A command console: an input line, the commands and aliases that its words name, and the log that they write. The host
/// passes it key presses, wheel turns and sizes, and draws its snapshot() with a ConsoleRenderer.
///
/// - Threads: the thread that constructs it, the host's, owns it and makes all calls, except that any thread may call
///   the writers (write(), writeIndented(), newline()), snapshot(), refresh(), logSize(), readLog(), readLogPart(),
///   readInput(), setObserver(), addObserver() and removeObserver() at any time. The console holds no lock while a command, a completion, a callback
///   or an observer runs.
/// - Ownership: it owns its registered commands and its log. Pointers that it returns stay its own.
/// - Failure: lines in the log answer what a user does wrong. Exceptions leave through the function that the host called,
///   and the console stays usable: whatever a command throws, `std::system_error` (`resource_deadlock_would_occur`) for a
///   code point that the full input line refuses, DepthLimitError where a limit is set, `std::bad_alloc`.
///
/// Texts are strings of 32-bit code points; positions and lengths in them count code points. What is odd here and meant
/// to be so is listed in docs/decisions.md.
class ZEPHYR_CONSOLE_EXPORT Console : public IWriteableConsole
{
public:
    /// A closed console whose log holds its two start-up lines, with the commands `help` and `alias`, and a
    /// runpath of the executable's directory followed by the current directory, both as they are now.
    Console();

    /// Removes the observers as setObserver() does, and destroys every command. A command's destructor must not use the
    /// console. No call of any thread may be under way but such as wait for an observer.
    ZEPHYR_CONSOLE_NO_EXPORT ~Console() override = default;

    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    Console(Console&&) = delete;
    Console& operator=(Console&&) = delete;

    /// Opens the console with an empty input line. An open console's input line is emptied as well. Log,
    /// history and scroll position are kept.
    void open();

    /// Closes the console. It keeps its input line until the next open().
    void close();

    /// Whether the console is open: keys and the wheel then act on it. For the host's thread.
    bool isOpen() const;

    /// Destroys every command, `help` and `alias` included; aliases, log, history and runpath are kept and
    /// the console stays usable. A host calls it before it unloads the code that its commands live in. What
    /// registerCommand() says of a command that is replaced holds for each.
    void shutdown();

    /// Sets the size of the window, width then height, in logical pixels. The height decides how many lines a page has when
    /// scrolling. It is 0 until the first call, which makes a page of no lines. With a height, scrolling measures the font,
    /// which needs a QGuiApplication.
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

    /// Files `command` under its name and takes ownership. A command that has the name already is destroyed at once;
    /// if the console is calling one of its functions, or forEachCommand() is calling with it, when the outermost such
    /// call returns. A call that the host makes itself, by the pointer of lookupCommand(), keeps nothing alive: run
    /// commands with execute(). Null reports the assertion `command` and registers nothing. Throws what
    /// `command->name()` throws; `command` is then still the caller's.
    void registerCommand(std::unique_ptr<ConsoleCommand>&& command);

    /// Destroys the command registered under exactly `name`, when registerCommand() says of one that is replaced.
    /// \return false if there is none. O(log n).
    bool unregisterCommand(const std::u32string& name);

    /// The command registered under exactly `name`, or null. It stays the console's, and lives until it is
    /// replaced or unregistered, or the console is shut down or destroyed. O(log n).
    ConsoleCommand* lookupCommand(const std::u32string& name);

    /// The lines of the alias named exactly `name`, or null. The pointer is valid until that alias is
    /// removed. O(log n).
    const std::vector<std::u32string>* lookupAlias(const std::u32string& name) const;

    /// Calls `fn` for each registered command in ascending order of name. `fn` may register commands: those
    /// that come later in the order are visited too. The command that `fn` is called with lives until `fn`
    /// returns, whatever `fn` does. Throws `std::bad_function_call` when `fn` is empty and
    /// there is a command, and what `fn` throws.
    void forEachCommand(const std::function<void(const ConsoleCommand&)>& fn);

    /// Calls `fn` for each alias in ascending order of name. `fn` may change the aliases, those that it is
    /// called with included: it sees copies. Throws `std::bad_function_call` when `fn` is empty and there is
    /// an alias, and what `fn` throws.
    void forEachAlias(
        const std::function<void(const std::u32string& name, const std::vector<std::u32string>& lines)>& fn);

    /// Runs one line as if it had been typed, but without recording it in the history; the input line is
    /// cleared by any line that has a word. Aliases come before commands. Lines may run inside of lines to any
    /// depth unless setDepthLimit() says otherwise. Throws what the command throws; a redirection then stays open
    /// until the next command has run.
    void execute(const std::u32string& line);

    /// Sets how deep lines may run inside of lines: those of an alias or a console file, and those that a command
    /// passes to execute(). With 1 a typed line may run others, which may run none. 0, the default, is no limit: an
    /// alias that leads back to itself then ends the program by using up the stack.
    ///
    /// A line beyond the limit is not run. One line in the log says so and names it, and a DepthLimitError leaves
    /// execute(), runFile() or keyPressed(), so that everything ends that is running, unless a command catches it or an
    /// observer ran the line. A new limit holds from the next line on.
    void setDepthLimit(unsigned depth);

    /// Whether a line runs at the moment: one that was typed, one that execute() was called with, one of an alias or of
    /// a console file. A host that processes events meanwhile can so keep keys back. For the host's thread.
    bool isRunning() const;

    /// Runs each line of the file at `path` with execute(); empty lines and lines that begin with `//` after
    /// trimming are skipped. A file that can't be opened, or is a directory, reports the assertion
    /// `ifs.is_open()`. Where an open file can't be read any further, one line in the log says why. \return whether
    /// the file could be opened. Throws what a line's command throws, and `std::bad_alloc` when a line of the file
    /// doesn't fit into memory; the rest is then not run.
    bool runFile(const std::filesystem::path& path);

    /// Runs the first file called `name` in the directories of the runpath, with a warning when there are
    /// several. \return false when there is none, else what runFile() answers. Throws
    /// `std::filesystem::filesystem_error` ("exists") when a path can't be tested, and what a line's command throws.
    bool runFileWithName(const std::u32string& name);

    /// Adds `path` at the end of the runpath. \return false, with nothing added, when an equal path is there
    /// already; paths are compared element by element, without a look at the disk.
    bool appendRunpath(const std::filesystem::path& path);

    /// Removes the first path equal to `path` from the runpath. \return false when there is none.
    bool removeRunpath(const std::filesystem::path& path);

    /// The directories in which console files are searched, in order. Copy them to write while walking over them: an
    /// observer may change the runpath.
    const std::vector<std::filesystem::path>& runPaths() const;

    /// A copy of everything that drawing needs, taken in one step. From any thread. O(length of the log).
    ConsoleSnapshot snapshot() const;

    /// Brings an earlier snapshot of this console up to date, so that it equals what snapshot() would return,
    /// by copying only the entries written since. A snapshot of another console, or one that was moved from,
    /// is replaced whole. From any thread; the snapshot belongs to the caller alone meanwhile. O(entries
    /// written since); throws `std::bad_alloc`, leaving the snapshot as it was.
    void refresh(ConsoleSnapshot& snapshot) const;

    /// The number of entries in the log. From any thread.
    std::size_t logSize() const;

    /// Puts copies of `count` entries of the log, from index `first` on, into `entries` in place of what it held. A
    /// range that reaches beyond the log is cut. From any thread; O(count). Throws `std::bad_alloc`, after which
    /// `entries` may hold anything.
    void readLog(std::size_t first, std::size_t count, std::vector<LogEntry>& entries) const;

    /// A copy of up to `count` code points of the text of the log's entry `index`, from code point `first` on, so that a
    /// view of a very long entry needs no copy of the whole. A range that reaches beyond the text is cut; an entry that
    /// isn't there is an empty part of length 0. From any thread; O(count). Throws `std::bad_alloc`.
    LogPart readLogPart(std::size_t index, std::size_t first, std::size_t count) const;

    /// A copy of the input line and its cursor, taken in one step. From any thread. Throws `std::bad_alloc`.
    ConsoleInput readInput() const;

    /// Sets a function that is called after each entry that was appended to the log, by the thread that appended
    /// it, and after the console was opened or closed; an empty one removes it. This is the host program's own
    /// observer; addObserver() adds others.
    ///
    /// - No lock is held meanwhile: the observer may call whatever its thread may. Calls by several threads may
    ///   overlap, and an entry may be followed by others before the call for it begins.
    /// - The observer is not called for what it does itself, such as writing to this console.
    /// - May be called from any thread, and from an observer. It waits for all calls of the observer that other
    ///   threads have begun, so that none runs when it returns and what the observer before had captured is destroyed.
    ///   The caller must hold nothing that a running observer waits for. From inside any observer of this console it
    ///   waits for none, and the calls that are running end as they would have.
    /// - An exception of the observer that derives from `std::exception` ends there and is reported as the
    ///   assertion `observer() throws nothing`: a writer never fails for it. Anything else leaves through the
    ///   function that appended or opened, after the entry was appended; execute() ends where it was.
    void setObserver(std::function<void()> observer);

    /// Adds a function that is called as setObserver() describes, beside all others, so that code around a console can
    /// follow it without a hold on the host program's own observer. \return the id that removeObserver() takes, which is
    /// never 0 and isn't used again. An empty function has an id too, and is never called.
    ///
    /// - The observer that was added last is called first, and the host program's own last, one after the other on the
    ///   thread that made the change. None is called for a change from before it was added.
    /// - An observer is called for what another one does: inside of that one's call, unless it is running further out on
    ///   the same thread.
    /// - The others are called although one throws what derives from `std::exception`. If anything else leaves one, the
    ///   older ones are not called for that change.
    std::uint64_t addObserver(std::function<void()> observer);

    /// Removes the observer that addObserver() added as `id`, with the waiting that setObserver() describes. No thread
    /// calls it afterwards. Does nothing for an id that isn't in use, except that it waits for calls of an observer that
    /// was removed from inside.
    void removeObserver(std::uint64_t id);

    /// The lines of the history as they were typed, oldest first. O(length of the history).
    std::vector<std::u32string> history() const;

    /// Adds a line to the history, where it is recalled as one that was typed; it isn't run. An empty line is not
    /// added. The next Up recalls the newest line.
    void addToHistory(const std::u32string& line);

    void write(const std::string& text, ConsoleMessageType type) override;
    void write(const std::u32string& text, ConsoleMessageType type) override;
    void writeIndented(const std::string& text, ConsoleMessageType type, unsigned indent) override;
    void writeIndented(const std::string& text, unsigned indent) override;
    void writeIndented(const std::u32string& text, ConsoleMessageType type, unsigned indent) override;
    void writeIndented(const std::u32string& text, unsigned indent) override;
    void newline() override;

private:
    class ZEPHYR_CONSOLE_NO_EXPORT Private;

    // With the deleter beside it, since the destructor is inline and knows no Private.
    std::unique_ptr<Private, void (*)(Private*)> mPrivate;
};

} // namespace zephyr::console

#endif
