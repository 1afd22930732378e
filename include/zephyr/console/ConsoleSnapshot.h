#ifndef ZEPHYR_CONSOLE_CONSOLESNAPSHOT_H
#define ZEPHYR_CONSOLE_CONSOLESNAPSHOT_H

#include "zephyr/common/Color.h"
#include "zephyr/console/ConsoleMessageType.h"
#include "zephyr/console/Texts.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class QFont;

namespace zephyr::console {

class Console;

/// One line of the log. It never changes once written.
struct LogEntry
{
    std::u32string text;     ///< Code points. It begins with the indent's spaces and may contain line feeds.
    ConsoleMessageType type; ///< The kind of entry. Input is drawn with the prompt in front.
    std::uint32_t indent;    ///< The number of spaces at the start of the text that writing it added.
};

/// The entry's text as a user sees it. An entry of type Input has the prompt in front.
inline std::u32string shownText(const LogEntry& entry)
{
    return entry.type == Input ? kPrompt + entry.text : entry.text;
}

/// A part of the text of a log entry, made by Console::readLogPart().
struct LogPart
{
    std::u32string text;              ///< The code points of the part.
    std::size_t length = 0;           ///< The number of code points of the whole text.
    ConsoleMessageType type = Output; ///< The entry's type.
    std::uint32_t indent = 0;         ///< The entry's indent.
};

/// The input line and where its cursor is, made by Console::readInput() in one step.
struct ConsoleInput
{
    std::u32string text; ///< The line being typed, in code points.
    std::uint32_t cursor =
        0; ///< The insertion point, in code points from the line's start; may lie past its end.
};

/// A copy of everything that drawing a console needs, made by Console::snapshot(). It is copied in one step, so its
/// lines, input and cursor belong together. It doesn't say whether the console is open or how large the window is.
///
/// - Threads: a snapshot may be taken on one thread and drawn on another. Const members take no lock, and several
///   threads may call them at once.
/// - Ownership: it owns its lines and its input. It shares the font, which never changes.
class ConsoleSnapshot
{
public:
    /// Makes a snapshot of the given values, in the order of the accessors below.
    ConsoleSnapshot(const std::vector<LogEntry>& lines, const std::u32string& input, Color textColor,
                    Color backgroundColor, std::uint32_t cursorPosition, char32_t cursorChar,
                    double cursorBlinkRate, std::uint32_t scrollOffset, std::shared_ptr<QFont> font)
        : mLines(lines),
          mInput(input),
          mTextColor(textColor),
          mBackgroundColor(backgroundColor),
          mCursorPosition(cursorPosition),
          mCursorChar(cursorChar),
          mCursorBlinkRate(cursorBlinkRate),
          mScrollOffset(scrollOffset),
          mFont(std::move(font))
    {}

    /// The whole log, oldest entry first. The reference is valid as long as the snapshot lives.
    const std::vector<LogEntry>& lines() const { return mLines; }

    /// The line being typed, in code points.
    const std::u32string& activeInput() const { return mInput; }

    /// The colour of all text.
    const Color& textColor() const { return mTextColor; }

    /// The colour behind the text. Its alpha decides how much of the simulation shows through.
    const Color& backgroundColor() const { return mBackgroundColor; }

    /// The insertion point, in code points from the start of the input. It may lie past the input's end.
    std::uint32_t cursorPosition() const { return mCursorPosition; }

    /// The code point that shows the cursor.
    char32_t cursorChar() const { return mCursorChar; }

    /// How many times a second the cursor changes between shown and hidden.
    double cursorBlinkRate() const { return mCursorBlinkRate; }

    /// How many log entries the view is scrolled back from the newest; 0 shows the newest at the bottom.
    std::uint32_t scrollOffset() const { return mScrollOffset; }

    /// The font of all text, or null if there is none. It lives at least as long as this snapshot.
    const QFont* font() const { return mFont.get(); }

private:
    friend class Console; // Console::refresh() brings the fields up to date

    std::vector<LogEntry> mLines;
    std::u32string mInput;
    Color mTextColor;
    Color mBackgroundColor;
    std::uint32_t mCursorPosition;
    char32_t mCursorChar;
    double mCursorBlinkRate;
    std::uint32_t mScrollOffset;
    std::shared_ptr<QFont> mFont;
};

} // namespace zephyr::console

#endif
