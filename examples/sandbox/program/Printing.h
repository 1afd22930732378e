#ifndef ZEPHYR_SANDBOX_PROGRAM_PRINTING_H
#define ZEPHYR_SANDBOX_PROGRAM_PRINTING_H

#include <cstdio>
#include <optional>
#include <string>

namespace zephyr::sandbox {

/// Writes `text` to `stream` and flushes it. \return why that failed, in the system's words; nothing on success.
std::optional<std::string> print(const std::string& text, std::FILE* stream);

} // namespace zephyr::sandbox

#endif
