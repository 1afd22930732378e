#include "sandbox/program/Printing.h"

#include <cerrno>
#include <system_error>

namespace zephyr::sandbox {

std::optional<std::string> print(const std::string& text, std::FILE* stream)
{
    if (std::fwrite(text.data(), 1, text.size(), stream) != text.size() || std::fflush(stream) != 0) {
        return std::generic_category().message(errno);
    }
    return std::nullopt;
}

} // namespace zephyr::sandbox
