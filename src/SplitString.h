#ifndef ZEPHYR_CONSOLE_SPLITSTRING_H
#define ZEPHYR_CONSOLE_SPLITSTRING_H

#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console {

/// Splits `text` at each `delimiter`. Each delimiter ends a piece, an empty one too; the text after the last
/// delimiter is a piece only when it is not empty. So `a  b ` at spaces gives `a`, an empty piece and `b`,
/// and an empty text gives no piece.
std::vector<std::u32string> splitString(std::u32string_view text, char32_t delimiter);

/// Splits `text` at each `delimiter` but those that stand between double quotes, which stay. Each U+FFFF becomes a
/// `delimiter` of its word.
std::vector<std::u32string> splitUnquoted(const std::u32string& text, char32_t delimiter);

/// Replaces each `delimiter` that stands between an odd-numbered double quote and the next one by U+FFFF, so
/// that splitString() passes over it. An unmatched quote reaches to the end of the text. The quotes stay.
void maskQuoted(std::u32string& text, char32_t delimiter);

/// Replaces each U+FFFF by `delimiter`, quotes or not.
void unmask(std::u32string& text, char32_t delimiter);

/// Replaces each U+FFFF that stands inside double quotes by `delimiter`.
void unmaskQuoted(std::u32string& text, char32_t delimiter);

/// Removes every double quote.
void removeQuotes(std::u32string& text);

} // namespace zephyr::console

#endif
