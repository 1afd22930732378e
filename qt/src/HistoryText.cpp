#include "HistoryText.h"

#include "zephyr/common/StringUtil.h"

#include <QChar>
#include <QString>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <system_error>

namespace zephyr::console::qt {

namespace {

constexpr std::u32string_view kBackslash = U"\\\\";
constexpr std::u32string_view kLineFeed = U"\\n";
constexpr std::u32string_view kCodeStart = U"\\u{";
constexpr char32_t kCodeEnd = U'}';
constexpr int kHexadecimal = 16;
constexpr std::size_t kMostDigits = 8; // of 32 bits

/// Whether `c` can't stand in the file, or not within a line.
bool needsCode(char32_t c)
{
    return c > QChar::LastValidCodePoint || QChar::isSurrogate(c) ||
           QChar::category(c) == QChar::Other_Control;
}

std::u32string escaped(char32_t c)
{
    if (c == U'\\') {
        return std::u32string(kBackslash);
    }
    if (c == U'\n') {
        return std::u32string(kLineFeed);
    }
    if (!needsCode(c)) {
        return {c};
    }
    const std::u32string digits = QString::number(std::uint32_t{c}, kHexadecimal).toStdU32String();
    return std::u32string(kCodeStart) + digits + kCodeEnd;
}

/// Takes the value between the braces from the start of `text`, up to the brace that closes.
std::optional<char32_t> takeCode(std::u32string_view& text)
{
    const std::size_t size = text.substr(0, kMostDigits + 1).find(kCodeEnd);
    if (size == std::u32string_view::npos) {
        return std::nullopt;
    }
    const std::string digits = StringUtil::toString(text.substr(0, size));
    const char* const end = digits.data() + digits.size();
    std::uint32_t code = 0;
    const auto [last, error] = std::from_chars(digits.data(), end, code, kHexadecimal);
    if (error != std::errc() || last != end) {
        return std::nullopt;
    }
    text.remove_prefix(size + 1);
    return code;
}

/// Takes a code point from the start of `text`, which isn't empty.
char32_t takeUnescaped(std::u32string_view& text)
{
    if (text.starts_with(kBackslash)) {
        text.remove_prefix(kBackslash.size());
        return U'\\';
    }
    if (text.starts_with(kLineFeed)) {
        text.remove_prefix(kLineFeed.size());
        return U'\n';
    }
    if (text.starts_with(kCodeStart)) {
        std::u32string_view rest = text.substr(kCodeStart.size());
        if (const std::optional<char32_t> code = takeCode(rest)) {
            text = rest;
            return *code;
        }
    }
    const char32_t c = text.front();
    text.remove_prefix(1);
    return c;
}

} // namespace

std::string escapedLine(std::u32string_view line)
{
    std::u32string text;
    for (const char32_t c : line) {
        text += escaped(c);
    }
    return StringUtil::toString(text);
}

std::u32string unescapedLine(std::string_view text)
{
    const std::u32string codePoints = StringUtil::toU32String(text);
    std::u32string line;
    for (std::u32string_view rest = codePoints; !rest.empty();) {
        line += takeUnescaped(rest);
    }
    return line;
}

} // namespace zephyr::console::qt
