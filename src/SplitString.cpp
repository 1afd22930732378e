#include "SplitString.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

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

// Both look at all of the text, in numbers as wide as a code point: the compiler makes that several at a time.

/// Whether masking or unmasking would change anything.
bool hasQuotesOrMasks(std::u32string_view text)
{
    const auto note = [](char32_t found, char32_t c) {
        return found | static_cast<char32_t>(c == kQuote) | static_cast<char32_t>(c == kMask);
    };
    return std::accumulate(text.begin(), text.end(), char32_t{0}, note) != 0;
}

/// How many pieces there may be; only a hint, as it may wrap around.
std::uint32_t mostPieces(std::u32string_view text, char32_t delimiter)
{
    const auto add = [delimiter](std::uint32_t count, char32_t c) {
        return count + static_cast<std::uint32_t>(c == delimiter);
    };
    return std::accumulate(text.begin(), text.end(), std::uint32_t{1}, add);
}

} // namespace

std::vector<std::u32string> splitString(std::u32string_view text, char32_t delimiter)
{
    std::vector<std::u32string> pieces;
    pieces.reserve(mostPieces(text, delimiter));
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
