#ifndef ZEPHYR_SANDBOX_PROGRAM_CONSOLEFILENAME_H
#define ZEPHYR_SANDBOX_PROGRAM_CONSOLEFILENAME_H

#include "zephyr/console/Texts.h"

#include <string>

namespace zephyr::sandbox {

/// `name` with the extension of console files, which users may leave out.
inline std::u32string consoleFileName(const std::u32string& name)
{
    return name.ends_with(console::kConsoleFileExtension) ? name : name + console::kConsoleFileExtension;
}

} // namespace zephyr::sandbox

#endif
