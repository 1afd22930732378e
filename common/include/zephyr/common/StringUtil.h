#ifndef ZEPHYR_COMMON_STRINGUTIL_H
#define ZEPHYR_COMMON_STRINGUTIL_H

#include "zephyr/common/Export.h"

#include <string>
#include <string_view>

namespace zephyr {

/// Conversions and trimming of text, which is UTF-8 in 8-bit strings and one code point a unit in 32-bit
/// strings.
///
/// - It is: a handful of pure functions. It is not: a character database; combining marks stay code points.
/// - Threads: any, all at once; nothing is kept and no locale is asked.
/// - Ownership: views in, the caller's own copies out.
/// - Failure: no text is refused; what can't be text becomes U+FFFD, the replacement character. Memory
///   exhaustion leaves as `std::bad_alloc`. Texts must stay below 2^29 units.
///
/// Both directions keep U+0000, noncharacters such as U+FFFF, and U+FEFF wherever it stands, so that every
/// sequence of scalar values (U+0000 to U+D7FF and U+E000 to U+10FFFF) comes back as it went. The cost is
/// linear in the length.
struct StringUtil
{
    /// `text` without the blanks at both ends: ASCII white space and UTF-8 byte order marks, in any order.
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

    /// `text` without the blanks at both ends: code points with Unicode's White_Space property and U+FEFF, in
    /// any order. U+200B isn't white space and stays.
    ZEPHYR_COMMON_EXPORT static std::u32string trim(std::u32string_view text);

    /// The code points as UTF-8. Each value that is no scalar value, which is a surrogate (also as half of
    /// what would be a pair in UTF-16) or above U+10FFFF, becomes one U+FFFD.
    ZEPHYR_COMMON_EXPORT static std::string toString(std::u32string_view text);

    /// The code points of UTF-8 text. Each maximal ill-formed part becomes one U+FFFD: a sequence that breaks
    /// off, as far as it goes, and otherwise each byte that can't be part of a sequence.
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
