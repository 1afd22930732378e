#ifndef ZEPHYR_COMMON_EXTERNALPROCESS_H
#define ZEPHYR_COMMON_EXTERNALPROCESS_H

#include "zephyr/common/Export.h"

#include <string>

namespace zephyr {

/// Other programs, started through the desktop to show the user a file. They may outlive this process. It may
/// be used on the thread of the `QGuiApplication` only.
struct ExternalProcess
{
    /// Asks the desktop to open the file in the program for its type, and returns at once. `true` means that
    /// the desktop (or the handler for `file` URLs in `QDesktopServices`) took the request, not that the file
    /// exists or was shown.
    ///
    /// `path` is UTF-8. Each maximal ill-formed part becomes one U+FFFD, so a file with an ill-formed name is
    /// not found. A relative path is taken from the current directory; several slashes at the start count as
    /// one.
    ///
    /// Returns `false` and opens nothing when the path is empty, when it is relative and there is no current
    /// directory, and while the process has no `QGuiApplication`; `false` also when the desktop declines.
    /// Throws `std::bad_alloc` only.
    ZEPHYR_COMMON_EXPORT static bool openFileInDefaultApplication(const std::string& path);
};

} // namespace zephyr

#endif
