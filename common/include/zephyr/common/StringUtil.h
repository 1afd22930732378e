#ifndef ZEPHYR_COMMON_STRINGUTIL_H
#define ZEPHYR_COMMON_STRINGUTIL_H

#include "zephyr/common/Export.h"

#include <string>
#include <string_view>

namespace zephyr {

/// Conversions and trimming of text: UTF-8 in 8-bit strings, one code point a unit in 32-bit strings.
///
/// The functions are pure: any thread may call them, and no locale matters. No text is refused: what can't be
/// text becomes U+FFFD, the replacement character. Texts must be shorter than 2^29 units. The cost is linear
/// in the length. Only `std::bad_alloc` is thrown.
///
/// The conversions keep U+0000, noncharacters such as U+FFFF, and U+FEFF in any place, so every sequence of
/// scalar values (U+0000 to U+D7FF and U+E000 to U+10FFFF) survives the way there and back unchanged.
struct StringUtil
{
    /// `text` without the blanks at its ends: ASCII white space and UTF-8 byte order marks, in any order.
    ///
    /// | text                              | answer   |
    /// |-----------------------------------|----------|
    /// | `" \t a b \r\n"`                  | `"a b"`  |
    /// | `"\xEF\xBB\xBF \xEF\xBB\xBF// x"` | `"// x"` |
    /// | `"\xEF\xBB"`, part of a mark      | itself   |
    /// | `"\xC2\xA0"`, U+00A0              | itself   |
    ///
    /// White space is U+0009 to U+000D and U+0020. The text needn't be well-formed.
    ZEPHYR_COMMON_EXPORT static std::string trim(std::string_view text);

    /// `text` without the blanks at its ends: code points with Unicode's White_Space property, and U+FEFF, in
    /// any order. U+200B isn't white space and stays.
    ZEPHYR_COMMON_EXPORT static std::u32string trim(std::u32string_view text);

    /// The code points as UTF-8. Each value that is no scalar value becomes one U+FFFD: a surrogate, even
    /// next to one that would complete a UTF-16 pair, or a value above U+10FFFF.
    ZEPHYR_COMMON_EXPORT static std::string toString(std::u32string_view text);

    /// The code points of UTF-8 text. Each maximal ill-formed part becomes one U+FFFD. Such a part is the
    /// start of a sequence that breaks off, or else a single byte that can't be part of a sequence.
    ///
    /// | bytes                           | answer      |
    /// |---------------------------------|-------------|
    /// | `41 E2 82` (broken off)         | `A`, U+FFFD |
    /// | `E1 80 41` (broken off)         | U+FFFD, `A` |
    /// | `C0 AF` (overlong)              | 2 x U+FFFD  |
    /// | `ED A0 80` (a surrogate)        | 3 x U+FFFD  |
    /// | `F4 90 80 80` (beyond U+10FFFF) | 4 x U+FFFD  |
    ZEPHYR_COMMON_EXPORT static std::u32string toU32String(std::string_view text);
};

} // namespace zephyr

#endif
