#ifndef ZEPHYR_CONSOLE_COMMANDS_FILEWRITING_H
#define ZEPHYR_CONSOLE_COMMANDS_FILEWRITING_H

#include "zephyr/console/commands/Parameter.h"

#include <filesystem>
#include <string>

namespace zephyr::console::commands {

/// Makes `bytes` the content of the file `path`: the whole of them, or the file stays as it was. Behind a link the file
/// that it leads to is replaced, and the link stays. A pipe or a device is left alone. Throws CommandError that says why
/// the file can't be written.
void writeWhole(const std::filesystem::path& path, const std::string& bytes);

/// `name` with the extension of console files, which users may leave out.
std::filesystem::path consoleFileName(const std::filesystem::path& name);

/// The argument FILE of a command that writes one.
Parameter fileArgument(const std::u32string& description);

} // namespace zephyr::console::commands

#endif
