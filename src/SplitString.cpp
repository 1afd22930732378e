#include "SplitString.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace zephyr::console {

namespace {

constexpr char32_t kQuote = U'"';
constexpr char32_t kMask = 0xFFFF; // a noncharacter; one in the user's text reads as the delimiter: oddity 18

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

/// Whether masking or unmasking may change anything. It doesn't stop at the first find, so that the compiler
/// compares several code points at a time.
bool hasQuotesOrMasks(std::u32string_view text)
{
    const auto note = [](char32_t found, char32_t c) {
        return found | static_cast<char32_t>(c == kQuote) | static_cast<char32_t>(c == kMask);
    };
    return std::accumulate(text.begin(), text.end(), char32_t{0}, note) != 0;
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
    if (!hasQuotesOrMasks(text)) {
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

void maskQuoted(std::u32string& text, char32_t delimiter) { replaceInsideQuotes(text, delimiter, kMask); }

void unmask(std::u32string& text, char32_t delimiter)
{
    std::replace(text.begin(), text.end(), kMask, delimiter);
}

void unmaskQuoted(std::u32string& text, char32_t delimiter) { replaceInsideQuotes(text, kMask, delimiter); }

void removeQuotes(std::u32string& text) { std::erase(text, kQuote); }

} // namespace zephyr::console
