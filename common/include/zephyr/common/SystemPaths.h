#ifndef ZEPHYR_COMMON_SYSTEMPATHS_H
#define ZEPHYR_COMMON_SYSTEMPATHS_H

#include "zephyr/common/Export.h"

#include <string>

/// \file
/// Directories of the running process, as code points.
///
/// Names in the file system are bytes; they are read as UTF-8, and each maximal ill-formed part of them
/// becomes one U+FFFD, so that such a name can be shown but not found again. No answer ends with a slash but
/// the root directory's. No function needs an application object, prints a warning, or throws anything but
/// `std::bad_alloc`. Any thread may call them.

namespace zephyr {

/// The absolute directory of the running program's executable, symbolic links resolved; the executable may
/// have been moved or deleted meanwhile. Where the system doesn't tell, it is the directory that
/// `QCoreApplication` knows, and empty without one.
ZEPHYR_COMMON_EXPORT std::u32string executableDir();

/// The process's current directory, absolute. Empty when there is none, as after the directory was removed.
ZEPHYR_COMMON_EXPORT std::u32string currentDir();

} // namespace zephyr

#endif
