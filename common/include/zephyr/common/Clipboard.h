#ifndef ZEPHYR_COMMON_CLIPBOARD_H
#define ZEPHYR_COMMON_CLIPBOARD_H

#include "zephyr/common/Export.h"

#include <string>

namespace zephyr {

/// The desktop's clipboard, as text.
///
/// - It is: a way to read what the user copied. It is not: a way to copy, nor to read anything but text.
/// - Threads: the thread of the QGuiApplication only, as its clipboard demands.
/// - Ownership: the answer is the caller's own copy.
/// - Failure: no clipboard and no text in it are an empty answer.
struct Clipboard
{
    /// The clipboard's text as code points, byte order marks, U+0000 and noncharacters included; a lone
    /// surrogate in it becomes U+FFFD. Empty when it holds no text, and while the process has no
    /// `QGuiApplication`. Other programs may own the clipboard, so that the call can wait for one of them.
    /// Throws `std::bad_alloc` only.
    ZEPHYR_COMMON_EXPORT static std::u32string text();
};

} // namespace zephyr

#endif
