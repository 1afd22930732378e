#include "Escapes.h"

#include "Signs.h"
#include "zephyr/common/StringUtil.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace zephyr::console::commands {

namespace {

constexpr char32_t kDelete = 0x7F;
constexpr char32_t kFirstC1 = 0x80;
constexpr char32_t kEndOfC1 = 0xA0;
constexpr std::u32string_view kBegin = U"\\u{";
constexpr char32_t kEnd = U'}';
constexpr int kHexadecimal = 16;

bool isAsciiLetterOrDigit(char32_t c)
{
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z') || (c >= U'0' && c <= U'9');
}

bool isPlain(char32_t c) { return isAsciiLetterOrDigit(c) || c == U'.' || c == U'_' || c == U'-'; }

bool isSpecial(char32_t c)
{
    return c < U' ' || c == kDelete || (c >= kFirstC1 && c < kEndOfC1) || c == U'"' || c == kMaskedSpace;
}

std::u32string escapeOf(char32_t c)
{
    std::array<char, sizeof(char32_t) * 2> digits{};
    const std::to_chars_result result =
        std::to_chars(digits.data(), digits.data() + digits.size(), std::uint32_t{c}, kHexadecimal);
    std::u32string text(kBegin);
    text.append(digits.data(), result.ptr);
    return text + kEnd;
}

/// Takes an escape off the front of `word`.
std::optional<char32_t> takeEscape(std::u32string_view& word)
{
    const std::size_t end = word.find(kEnd);
    if (!word.starts_with(kBegin) || end == std::u32string_view::npos) {
        return std::nullopt;
    }
    const std::u32string_view digits = word.substr(kBegin.size(), end - kBegin.size());
    const std::string bytes = StringUtil::toString(digits);
    std::uint32_t code = 0;
    const std::from_chars_result result =
        std::from_chars(bytes.data(), bytes.data() + bytes.size(), code, kHexadecimal);
    if (result.ec != std::errc() || result.ptr != bytes.data() + bytes.size()) {
        return std::nullopt;
    }
    word.remove_prefix(end + 1);
    return static_cast<char32_t>(code);
}

} // namespace

bool fitsInQuotes(const std::u32string& text)
{
    return std::none_of(text.begin(), text.end(), isSpecial) &&
           StringUtil::toU32String(StringUtil::toString(text)) == text;
}

std::u32string escaped(const std::u32string& text)
{
    std::u32string word;
    for (const char32_t c : text) {
        word += isPlain(c) ? std::u32string(1, c) : escapeOf(c);
    }
    return word;
}

std::optional<std::u32string> unescaped(const std::u32string& word)
{
    std::u32string text;
    for (std::u32string_view left = word; !left.empty();) {
        if (isPlain(left.front())) {
            text += left.front();
            left.remove_prefix(1);
        } else if (const std::optional<char32_t> c = takeEscape(left)) {
            text += *c;
        } else {
            return std::nullopt;
        }
    }
    return text;
}

} // namespace zephyr::console::commands
