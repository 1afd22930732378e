#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_EDITSCREEN_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_EDITSCREEN_H

#include "terminal/TextLayout.h"

#include <QByteArray>

#include <histedit.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace zephyr::console::remote {

/// What EditScreen calls, with an editor that EditScreen::clientData() gives `clientData` for.
struct EditFunctions
{
    void* clientData;
    int (*key)(EditLine*, wchar_t*);            ///< The next key: 1, or 0 at the end.
    unsigned char (*complete)(EditLine*, int);  ///< Tab.
    unsigned char (*interrupt)(EditLine*, int); ///< Ctrl+C.
    unsigned char (*stop)(EditLine*, int);      ///< Ctrl+Z.
};

/// A line that is edited, and where it stands on the terminal. One thread at a time may use it, with a locale of
/// UTF-8.
class EditScreen
{
public:
    /// The program must be in the foreground of the terminal. Reads the user's `~/.editrc`, whose bindings hold but
    /// for Ctrl+C and Ctrl+Z. `history` must outlive it.
    EditScreen(std::FILE* in, std::FILE* out, const std::wstring& prompt, const EditFunctions& functions,
               HistoryW* history);

    /// Shows the prompt and edits a line, until a key or function ends it. Makes the terminal raw, and what it was
    /// afterwards.
    /// \return whether there is one, put into `line` with its line feed.
    bool edit(std::wstring& line);

    /// The text in front of the cursor. For the functions, as all that follows.
    std::wstring_view beforeCursor() const;

    /// The text. Valid until it changes.
    std::wstring_view text() const;

    /// Empties the line.
    void clear();

    /// Replaces what stands between `from`, counted in characters, and the cursor.
    void replaceFrom(std::size_t from, const std::wstring& text);

    /// Takes prompt and line off the screen: what is written next stands in their place.
    void erase();

    /// Shows prompt and line where the cursor is, which is at the left.
    void draw();

    /// Writes `mark` behind the line, which stays where it is, and goes to the row below.
    void leave(const char* mark);

    /// Makes the terminal raw, or what it was.
    void setRaw(bool raw);

    /// Writes bytes at once. \return false if the terminal takes no more.
    bool write(const QByteArray& bytes);

    /// Makes Ctrl+C and Ctrl+Z, which a raw terminal would still make signals of, keys like others, and Ctrl+S and
    /// Ctrl+Q, with which it would stop the program at its next output. SIGQUIT's key stays the way out of a program
    /// that hangs.
    void keepTerminalKeys();

    /// Whether the size has changed since the line was drawn.
    bool hasNewSize() const { return size() != mSize; }

    /// The terminal's size: rows and columns, at least 1.
    ScreenPlace size() const;

    /// What EditFunctions::clientData was.
    static void* clientData(EditLine* edit);

private:
    static wchar_t* promptOf(EditLine* edit);

    ScreenPlace placeOf(std::wstring_view text) const;
    void adoptSize();

    int mIn;
    std::FILE* mOut;
    std::wstring mPrompt;
    void* mClientData;
    std::unique_ptr<EditLine, void (*)(EditLine*)> mEdit; // ends without touching the terminal
    ScreenPlace mSize;
};

} // namespace zephyr::console::remote

#endif
