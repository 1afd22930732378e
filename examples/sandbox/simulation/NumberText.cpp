#include "sandbox/simulation/NumberText.h"

#include <array>
#include <charconv>

namespace zephyr::sandbox {

namespace {

constexpr int kSignificantDigits = 6;

} // namespace

std::string textOf(double value)
{
    std::array<char, 32> buffer{};
    const std::to_chars_result result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                                      std::chars_format::general, kSignificantDigits);
    return {buffer.data(), result.ptr};
}

} // namespace zephyr::sandbox
