#ifndef ZEPHYR_COMMON_EXTERNALPROCESS_H
#define ZEPHYR_COMMON_EXTERNALPROCESS_H

#include "zephyr/common/Export.h"

#include <string>

namespace zephyr {

/// What other programs do for this one.
///
/// - It is: a way to show the user a file. It is not: a way to run a command, to wait, or to read an answer.
/// - Threads: the thread of the QGuiApplication only.
/// - Ownership: the started program is the desktop's; it may outlive this process.
/// - Failure: `false`.
struct ExternalProcess
{
    /// Opens the file in the program that the desktop has chosen for its type. Returns at once, before the
    /// program is there: `true` says that the desktop (or the handler set for `file` URLs in
    /// `QDesktopServices`) took the request, not that the file was shown or exists.
    ///
    /// `path` is UTF-8; each maximal ill-formed part of it becomes one U+FFFD, so that a file with such a
    /// name is not found. A relative path is taken from the current directory; several slashes at the start
    /// count as one.
    ///
    /// `false` and nothing is opened when the path is empty, when it is relative and there is no current
    /// directory, and while the process has no `QGuiApplication`; `false` also when the desktop declines.
    /// Throws `std::bad_alloc` only.
    ZEPHYR_COMMON_EXPORT static bool openFileInDefaultApplication(const std::string& path);
};

} // namespace zephyr

#endif
