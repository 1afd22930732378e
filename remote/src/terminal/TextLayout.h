#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_TEXTLAYOUT_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_TEXTLAYOUT_H

#include <QStringList>

#include <string_view>

namespace zephyr::console::remote {

/// A place on the screen, counted from 0.
struct ScreenPlace
{
    int row = 0;
    int column = 0;

    bool operator==(const ScreenPlace&) const = default;
};

/// Where the cursor is behind `text`, written from `start` on by the line editor on a screen so many columns wide: a
/// full row continues on the next one, a wide character is never cut in two, a control character is shown as `^A` and
/// another one that can't be shown by its number. For a thread whose locale is one of UTF-8.
ScreenPlace placeAfter(std::wstring_view text, ScreenPlace start, int columns);

/// The number of columns that the text takes, control characters not counted. For a thread whose locale is one of
/// UTF-8.
int columnsOf(const QString& text);

/// The words in as many columns of equal width as fit, read from top to bottom, each row ended by a line feed. Words
/// that would need more than `maxRows` rows are left out; a last row "... and N more" tells how many. For a thread
/// whose locale is one of UTF-8.
QString inColumns(const QStringList& words, int columns, int maxRows);

} // namespace zephyr::console::remote

#endif
