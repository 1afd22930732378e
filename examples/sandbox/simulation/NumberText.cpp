#include "sandbox/simulation/NumberText.h"

#include "zephyr/common/StringUtil.h"

#include <array>
#include <charconv>
#include <cmath>

namespace zephyr::sandbox {

namespace {

constexpr int kSignificantDigits = 6;

template <typename Number>
std::optional<Number> wholeTextAs(std::u32string_view text)
{
    const std::string narrow = StringUtil::toString(text);
    const char* const end = narrow.data() + narrow.size();
    Number number{};
    const std::from_chars_result result = std::from_chars(narrow.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return number;
}

template <typename Number>
std::optional<Number> ifWithin(Number lowest, Number highest, const std::optional<Number>& number)
{
    return number && *number >= lowest && *number <= highest ? number : std::nullopt;
}

} // namespace

std::optional<double> numberFrom(std::u32string_view text)
{
    const std::optional<double> number = wholeTextAs<double>(text);
    if (!number || !std::isfinite(*number)) {
        return std::nullopt;
    }
    return *number + 0.0; // turns minus zero into zero
}

std::optional<double> numberWithin(double lowest, double highest, std::u32string_view text)
{
    return ifWithin(lowest, highest, numberFrom(text));
}

std::optional<unsigned> countFrom(std::u32string_view text) { return wholeTextAs<unsigned>(text); }

std::optional<unsigned> countWithin(unsigned lowest, unsigned highest, std::u32string_view text)
{
    return ifWithin(lowest, highest, countFrom(text));
}

std::string textOf(double value)
{
    std::array<char, 32> buffer{};
    const std::to_chars_result result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                                      std::chars_format::general, kSignificantDigits);
    return {buffer.data(), result.ptr};
}

} // namespace zephyr::sandbox
