#include "EditLine.h"

#include "Graphemes.h"

#include <QChar>
#include <QString>

#include <algorithm>
#include <iterator>
#include <vector>

namespace zephyr::console::qt {

namespace {

constexpr std::u32string_view kWordChars = U"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

bool breaksLine(char32_t c)
{
    const QChar::Category category = QChar::category(c);
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

/// Where grapheme clusters of `text` begin and end, in ascending order.
std::vector<std::size_t> boundariesOf(std::u32string_view text)
{
    Graphemes graphemes(QString::fromUcs4(text.data(), static_cast<qsizetype>(text.size())));
    std::vector<std::size_t> boundaries{0};
    int unit = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unit += QChar::requiresSurrogates(text[i]) ? 2 : 1;
        if (graphemes.endsAt(unit)) {
            boundaries.push_back(i + 1);
        }
    }
    return boundaries;
}

/// The first boundary between grapheme clusters of `text` at `pos` or after it.
std::size_t boundaryFrom(std::u32string_view text, std::size_t pos)
{
    const std::vector<std::size_t> boundaries = boundariesOf(text);
    const auto found = std::ranges::lower_bound(boundaries, pos);
    return found == boundaries.end() ? text.size() : *found;
}

/// The last boundary between grapheme clusters of `text` at `pos` or before it.
std::size_t boundaryUpTo(std::u32string_view text, std::size_t pos)
{
    const std::vector<std::size_t> boundaries = boundariesOf(text);
    return *std::prev(std::ranges::upper_bound(boundaries, pos));
}

std::size_t nextWordStart(std::u32string_view line, std::size_t pos)
{
    const std::size_t wordEnd = line.find_first_not_of(kWordChars, pos);
    return std::min(line.find_first_of(kWordChars, wordEnd), line.size());
}

/// `pos` must not be 0.
std::size_t prevWordStart(std::u32string_view line, std::size_t pos)
{
    const std::size_t wordLast = line.find_last_of(kWordChars, pos - 1);
    if (wordLast == std::u32string_view::npos) {
        return 0;
    }
    return line.find_last_not_of(kWordChars, wordLast) + 1; // 0 where the line starts with the word
}

} // namespace

void EditLine::insert(std::u32string_view text)
{
    std::u32string shown(text.substr(0, kMostLength - mText.size()));
    std::ranges::replace_if(shown, breaksLine, U' ');
    mText.insert(mCursor, shown);
    mCursor = boundaryFrom(mText, mCursor + shown.size()); // what follows may join what was inserted
}

void EditLine::erasePrevious(bool wholeWord)
{
    const std::size_t first = left(wholeWord);
    mText.erase(first, mCursor - first);
    mCursor = boundaryUpTo(mText, first);
}

void EditLine::eraseNext(bool wholeWord)
{
    mText.erase(mCursor, right(wholeWord) - mCursor);
    mCursor = boundaryUpTo(mText, mCursor);
}

void EditLine::moveLeft(bool wholeWord) { mCursor = left(wholeWord); }

void EditLine::moveRight(bool wholeWord) { mCursor = right(wholeWord); }

void EditLine::set(std::u32string_view text)
{
    clear();
    insert(text);
}

void EditLine::clear()
{
    mText.clear();
    mCursor = 0;
}

/// Where the cursor gets to by a step to the left.
std::size_t EditLine::left(bool wholeWord) const
{
    if (mCursor == 0) {
        return 0;
    }
    return boundaryUpTo(mText, wholeWord ? prevWordStart(mText, mCursor) : mCursor - 1);
}

/// Where the cursor gets to by a step to the right.
std::size_t EditLine::right(bool wholeWord) const
{
    if (mCursor == mText.size()) {
        return mCursor;
    }
    return boundaryFrom(mText, wholeWord ? nextWordStart(mText, mCursor) : mCursor + 1);
}

} // namespace zephyr::console::qt
