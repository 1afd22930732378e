#include "SplitString.h"

#include <algorithm>

namespace zephyr::console {

namespace {

constexpr char32_t kQuote = U'"';
constexpr char32_t kMask = 0xFFFF; // a noncharacter, which no keyboard types

void replaceInsideQuotes(std::u32string& text, char32_t from, char32_t to)
{
    bool insideQuotes = false;
    for (char32_t& c : text) {
        if (c == kQuote) {
            insideQuotes = !insideQuotes;
        } else if (insideQuotes && c == from) {
            c = to;
        }
    }
}

/// Counts, where a search would do, since that is done for several code points at a time.
bool contains(std::u32string_view text, char32_t c)
{
    return std::count(text.begin(), text.end(), c) > 0;
}

} // namespace

std::vector<std::u32string> splitString(std::u32string_view text, char32_t delimiter)
{
    std::vector<std::u32string> pieces;
    pieces.reserve(1 + static_cast<std::size_t>(std::count(text.begin(), text.end(), delimiter)));
    std::size_t begin = 0;
    for (std::size_t end = text.find(delimiter); end != std::u32string_view::npos;
         end = text.find(delimiter, begin)) {
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    if (begin < text.size()) {
        pieces.emplace_back(text.substr(begin));
    }
    return pieces;
}

std::vector<std::u32string> splitUnquoted(const std::u32string& text, char32_t delimiter)
{
    if (!contains(text, kQuote) && !contains(text, kMask)) {
        return splitString(text, delimiter);
    }
    std::u32string masked = text;
    maskQuoted(masked, delimiter);
    std::vector<std::u32string> words = splitString(masked, delimiter);
    for (std::u32string& word : words) {
        unmask(word, delimiter);
    }
    return words;
}

void maskQuoted(std::u32string& text, char32_t delimiter)
{
    replaceInsideQuotes(text, delimiter, kMask);
}

void unmask(std::u32string& text, char32_t delimiter)
{
    std::replace(text.begin(), text.end(), kMask, delimiter);
}

void unmaskQuoted(std::u32string& text, char32_t delimiter)
{
    replaceInsideQuotes(text, kMask, delimiter);
}

void removeQuotes(std::u32string& text)
{
    std::erase(text, kQuote);
}

} // namespace zephyr::console
