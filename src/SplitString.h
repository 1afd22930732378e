#ifndef ZEPHYR_CONSOLE_SPLITSTRING_H
#define ZEPHYR_CONSOLE_SPLITSTRING_H

#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console {

/// Splits `text` at each `delimiter`. Each delimiter ends a piece, which may be empty; the text after the
/// last delimiter is a piece only when it is not empty.
///
/// | text, split at spaces | pieces |
/// |---|---|
/// | `a  b ` | `a`, an empty piece, `b` |
/// | one space | an empty piece |
/// | empty | none |
std::vector<std::u32string> splitString(std::u32string_view text, char32_t delimiter);

/// Splits `text` at each `delimiter` outside double quotes. The quotes stay in the words. Each U+FFFF of the
/// text becomes a `delimiter` inside its word: oddity 18.
std::vector<std::u32string> splitUnquoted(const std::u32string& text, char32_t delimiter);

/// Replaces each `delimiter` inside double quotes by U+FFFF, so that splitString() passes over it. An
/// unmatched quote reaches to the end of the text. The quotes stay.
void maskQuoted(std::u32string& text, char32_t delimiter);

/// Replaces each U+FFFF by `delimiter`, inside quotes and outside.
void unmask(std::u32string& text, char32_t delimiter);

/// Replaces each U+FFFF inside double quotes by `delimiter`.
void unmaskQuoted(std::u32string& text, char32_t delimiter);

/// Removes every double quote.
void removeQuotes(std::u32string& text);

} // namespace zephyr::console

#endif
