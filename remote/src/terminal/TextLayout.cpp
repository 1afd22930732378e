#include "terminal/TextLayout.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>

namespace zephyr::console::remote {

namespace {

constexpr int kTabWidth = 8;
constexpr int kGap = 2; // between two columns of words

/// The columns that the line editor takes for a character other than a tab and a line feed.
int widthInLine(wchar_t c)
{
    if (std::iswcntrl(static_cast<wint_t>(c)) != 0 && c < 0x80) {
        return 2; // ^A
    }
    if (std::iswprint(static_cast<wint_t>(c)) == 0) {
        return c > 0xffff ? 8 : 7; // \U+12345
    }
    return std::max(1, wcwidth(c)); // a combining mark takes a column too
}

ScreenPlace nextRow(ScreenPlace place) { return {place.row + 1, 0}; }

/// Where a character of `width` columns ends that is written at `place`.
ScreenPlace advanced(ScreenPlace place, int width, int columns)
{
    if (place.column + width > columns) {
        place = nextRow(place);
    }
    place.column += width;
    return place.column >= columns ? nextRow(place) : place;
}

/// As advanced(), for what is several characters of one column each.
ScreenPlace advancedByEach(ScreenPlace place, int count, int columns)
{
    for (int i = 0; i < count; ++i) {
        place = advanced(place, 1, columns);
    }
    return place;
}

QString padded(const QString& word, int width)
{
    return word + QString(std::max(0, width - columnsOf(word)), u' ');
}

} // namespace

ScreenPlace placeAfter(std::wstring_view text, ScreenPlace start, int columns)
{
    ScreenPlace place = start;
    for (const wchar_t c : text) {
        if (c == L'\n') {
            place = nextRow(place);
        } else if (c == L'\t') {
            place = advancedByEach(place, kTabWidth - place.column % kTabWidth, columns);
        } else if (const int width = widthInLine(c); width > 2 || c < L' ') {
            place = advancedByEach(place, width, columns);
        } else {
            place = advanced(place, width, columns);
        }
    }
    return place;
}

int columnsOf(const QString& text)
{
    int columns = 0;
    for (const char32_t c : text.toStdU32String()) {
        columns += std::max(0, wcwidth(static_cast<wchar_t>(c)));
    }
    return columns;
}

QString inColumns(const QStringList& words, int columns, int maxRows)
{
    int width = 0;
    for (const QString& word : words) {
        width = std::max(width, columnsOf(word) + kGap);
    }
    const int across = std::max(1, (columns + kGap) / std::max(1, width));
    const qsizetype shown = std::min(words.size(), qsizetype{across} * maxRows);
    const qsizetype rows = (shown + across - 1) / across;
    QString text;
    for (qsizetype row = 0; row < rows; ++row) {
        QString line;
        for (qsizetype i = row; i < shown; i += rows) {
            line += i + rows < shown ? padded(words[i], width) : words[i];
        }
        text += line + u'\n';
    }
    return shown == words.size() ? text : text + QString("... and %1 more\n").arg(words.size() - shown);
}

} // namespace zephyr::console::remote
