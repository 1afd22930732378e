#include "zephyr/console/commands/detail/Numbers.h"

#include "OutOfRange.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/commands/Failure.h"

#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace zephyr::console::commands::detail {

namespace {

constexpr std::size_t kLongestNumber = 64; // longer than any number that is written

/// The text as bytes, which hold any number.
class Bytes
{
public:
    explicit Bytes(const std::u32string& text) : mText(text.size(), '\0')
    {
        for (std::size_t i = 0; i < text.size(); ++i) {
            mText[i] = text[i] < 0x80 ? static_cast<char>(text[i]) : '?';
        }
    }

    const char* begin() const { return mText.data(); }
    const char* end() const { return mText.data() + mText.size(); }

private:
    std::string mText;
};

[[noreturn]] void refuseBelow(const std::u32string& text, const std::u32string& lowest)
{
    throw OutOfRange(text + U" is below " + lowest + U".", true);
}

[[noreturn]] void refuseAbove(const std::u32string& text, const std::u32string& highest)
{
    throw OutOfRange(text + U" is above " + highest + U".", false);
}

bool isNegative(const std::u32string& text) { return text.front() == U'-'; }

template <typename Number>
struct Read
{
    Number number{};
    bool isNumber = false;
    bool isOutOfRange = false;
};

template <typename Number>
Read<Number> readWhole(const std::u32string& text)
{
    const Bytes bytes(text);
    Read<Number> read;
    const std::from_chars_result result = std::from_chars(bytes.begin(), bytes.end(), read.number);
    read.isNumber = result.ptr == bytes.end() && result.ec != std::errc::invalid_argument && !text.empty();
    read.isOutOfRange = result.ec == std::errc::result_out_of_range;
    return read;
}

/// Reads a number that is too close to zero for std::from_chars() and not for a long double, whose last few bits some
/// standard libraries take for out of range.
void readTiny(const std::u32string& text, Read<long double>& read)
{
    const Bytes bytes(text);
    std::istringstream stream(std::string(bytes.begin(), bytes.end()));
    stream.imbue(std::locale::classic());
    read.isOutOfRange = !(stream >> read.number) || read.number == 0;
}

template <typename Number>
std::optional<Number> readFloatingAs(const std::u32string& text)
{
    Read<Number> read = readWhole<Number>(text);
    if (!read.isNumber) {
        return std::nullopt;
    }
    if constexpr (std::is_same_v<Number, long double>) {
        if (read.isOutOfRange) {
            readTiny(text, read);
        }
    }
    if (read.isOutOfRange) {
        fail(text + U" is too large, or too close to zero, for a number.");
    }
    return read.number;
}

template <typename Number, typename... Format>
std::u32string write(Number value, Format... format)
{
    std::array<char, kLongestNumber> buffer{};
    const std::to_chars_result result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format...);
    return {buffer.data(), result.ptr};
}

/// The shortest text that is read as the same number, without an exponent where people write none.
template <typename Number>
std::u32string writeAsPeopleDo(Number value)
{
    constexpr auto kSmallest = static_cast<Number>(1e-5L);
    constexpr auto kLarge = static_cast<Number>(1e16L); // from here on, not every whole number is a double
    const Number size = std::abs(value);
    return size == 0 || (size >= kSmallest && size < kLarge) ? write(value, std::chars_format::fixed)
                                                             : write(value);
}

} // namespace

std::optional<std::int64_t> readSigned(const std::u32string& text, std::int64_t lowest, std::int64_t highest)
{
    const Read<std::int64_t> read = readWhole<std::int64_t>(text);
    if (!read.isNumber) {
        return std::nullopt;
    }
    if (read.number < lowest || (read.isOutOfRange && isNegative(text))) {
        refuseBelow(text, writeSigned(lowest));
    }
    if (read.number > highest || read.isOutOfRange) {
        refuseAbove(text, writeSigned(highest));
    }
    return read.number;
}

std::optional<std::uint64_t> readUnsigned(const std::u32string& text, std::uint64_t highest)
{
    if (!text.empty() && isNegative(text)) {
        const Read<std::int64_t> negative = readWhole<std::int64_t>(text);
        if (!negative.isNumber) {
            return std::nullopt;
        }
        if (negative.number != 0 || negative.isOutOfRange) {
            refuseBelow(text, U"0");
        }
        return 0;
    }
    const Read<std::uint64_t> read = readWhole<std::uint64_t>(text);
    if (!read.isNumber) {
        return std::nullopt;
    }
    if (read.number > highest || read.isOutOfRange) {
        refuseAbove(text, writeUnsigned(highest));
    }
    return read.number;
}

std::optional<float> readFloating(const std::u32string& text, float) { return readFloatingAs<float>(text); }
std::optional<double> readFloating(const std::u32string& text, double)
{
    return readFloatingAs<double>(text);
}

std::optional<long double> readFloating(const std::u32string& text, long double)
{
    return readFloatingAs<long double>(text);
}

std::u32string writeSigned(std::int64_t value) { return write(value); }
std::u32string writeUnsigned(std::uint64_t value) { return write(value); }
std::u32string writeFloating(float value) { return writeAsPeopleDo(value); }
std::u32string writeFloating(double value) { return writeAsPeopleDo(value); }
std::u32string writeFloating(long double value) { return writeAsPeopleDo(value); }

} // namespace zephyr::console::commands::detail
