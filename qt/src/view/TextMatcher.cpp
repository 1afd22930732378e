#include "TextMatcher.h"

#include <QChar>

#include <algorithm>
#include <utility>

namespace zephyr::console::qt {

TextMatcher::TextMatcher(std::u32string query, bool matchCase)
    : mQuery(std::move(query)), mMatchCase(matchCase), mBorders(mQuery.size() + 1, 0)
{
    std::ranges::transform(mQuery, mQuery.begin(), [this](char32_t c) { return folded(c); });
    std::size_t border = 0;
    for (std::size_t n = 1; n < mQuery.size(); ++n) { // as Knuth, Morris and Pratt do it
        while (border > 0 && mQuery[n] != mQuery[border]) {
            border = mBorders[border];
        }
        border += mQuery[n] == mQuery[border] ? 1 : 0;
        mBorders[n + 1] = border;
    }
}

bool TextMatcher::step(char32_t c, std::size_t& matched) const
{
    if (mQuery.empty()) {
        return false;
    }
    const char32_t next = folded(c);
    while (matched > 0 && next != mQuery[matched]) {
        matched = mBorders[matched];
    }
    matched += next == mQuery[matched] ? 1 : 0;
    if (matched < mQuery.size()) {
        return false;
    }
    matched = 0;
    return true;
}

bool TextMatcher::isIn(std::u32string_view text) const
{
    std::size_t matched = 0;
    return std::ranges::any_of(text, [&](char32_t c) { return step(c, matched); });
}

char32_t TextMatcher::folded(char32_t c) const
{
    constexpr char32_t kAsciiEnd = 0x80;
    if (mMatchCase || c > QChar::LastValidCodePoint) {
        return c;
    }
    if (c < kAsciiEnd) { // most of all text
        return c >= U'A' && c <= U'Z' ? c - U'A' + U'a' : c;
    }
    return QChar::toCaseFolded(c);
}

} // namespace zephyr::console::qt
