#ifndef ZEPHYR_COMMON_SYSTEMPATHS_H
#define ZEPHYR_COMMON_SYSTEMPATHS_H

#include "zephyr/common/Export.h"

#include <string>

/// \file
/// Directories of the running process, as code points.
///
/// File names are bytes and are read as UTF-8. Each maximal ill-formed part becomes one U+FFFD, so an
/// ill-formed name can be shown but not found again. Only the root directory ends with a slash. The functions
/// need no application object, print no warning, and throw `std::bad_alloc` only. Any thread may call them.

namespace zephyr {

/// The absolute directory of the running program's executable, with symbolic links resolved. The executable
/// may have been moved or deleted since the start. On a system that doesn't tell, it is `QCoreApplication`'s
/// directory, and empty without a `QCoreApplication`.
ZEPHYR_COMMON_EXPORT std::u32string executableDir();

/// The process's current directory, absolute. Empty when there is none, as after the directory was removed.
ZEPHYR_COMMON_EXPORT std::u32string currentDir();

} // namespace zephyr

#endif
