#ifndef ZEPHYR_COMMON_CLIPBOARD_H
#define ZEPHYR_COMMON_CLIPBOARD_H

#include "zephyr/common/Export.h"

#include <string>

namespace zephyr {

/// The desktop's clipboard, for reading text. It may be used on the thread of the `QGuiApplication` only.
struct Clipboard
{
    /// The clipboard's text as code points, byte order marks, U+0000 and noncharacters included; a lone
    /// surrogate becomes U+FFFD. Empty when the clipboard holds no text, and while the process has no
    /// `QGuiApplication`. The call may wait for the program that owns the clipboard's content. Throws
    /// `std::bad_alloc` only.
    ZEPHYR_COMMON_EXPORT static std::u32string text();
};

} // namespace zephyr

#endif
