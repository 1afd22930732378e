#include "zephyr/console/commands/Durations.h"

#include "OutOfRange.h"
#include "zephyr/console/commands/Failure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace zephyr::console::commands::detail {

namespace {

struct NamedUnit
{
    std::u32string_view suffix;
    TimeUnit unit;
};

constexpr std::array<NamedUnit, 7> kUnits{{{U"ns", {1, 1000000000}},
                                           {U"us", {1, 1000000}},
                                           {U"ms", {1, 1000}},
                                           {U"s", {1, 1}},
                                           {U"min", {60, 1}},
                                           {U"h", {3600, 1}},
                                           {U"d", {86400, 1}}}};

bool equal(TimeUnit left, TimeUnit right)
{
    return left.numerator == right.numerator && left.denominator == right.denominator;
}

/// A text divided into its number and its unit.
struct Amount
{
    std::u32string number;
    TimeUnit unit;
};

std::optional<Amount> amountOf(const std::u32string& text, TimeUnit own)
{
    const std::u32string ownSuffix = unitSuffix(own);
    if (text.ends_with(ownSuffix) && ownSuffix.front() == U'[') {
        return Amount{text.substr(0, text.size() - ownSuffix.size()), own};
    }
    const std::size_t begin = text.find_last_of(U"0123456789.") + 1; // 0 if there is no digit
    const auto found = std::find_if(kUnits.begin(), kUnits.end(), [&](const NamedUnit& named) {
        return named.suffix == std::u32string_view(text).substr(begin);
    });
    return found == kUnits.end() ? std::nullopt : std::optional(Amount{text.substr(0, begin), found->unit});
}

long double ratio(TimeUnit from, TimeUnit to)
{
    return static_cast<long double>(from.numerator) * static_cast<long double>(to.denominator) /
           (static_cast<long double>(from.denominator) * static_cast<long double>(to.numerator));
}

[[noreturn]] void refusePart(const std::u32string& text, TimeUnit unit)
{
    fail(text + U" is not a multiple of 1" + unitSuffix(unit) + U".");
}

template <typename Rep>
std::optional<Rep> readDurationAs(const std::u32string& text, TimeUnit unit)
{
    const std::optional<Amount> amount = amountOf(text, unit);
    if (!amount) {
        // What is no finite count is written without digits.
        const std::u32string suffix = unitSuffix(unit);
        return text.ends_with(suffix) ? readFloating(text.substr(0, text.size() - suffix.size()), Rep())
                                      : std::nullopt;
    }
    if (equal(amount->unit, unit)) {
        return readFloating(amount->number, Rep());
    }
    const std::optional<long double> number = readFloating(amount->number, 0.0L);
    if (!number) {
        return std::nullopt;
    }
    const long double count = *number * ratio(amount->unit, unit);
    if (std::abs(count) > static_cast<long double>(std::numeric_limits<Rep>::max())) {
        fail(text + U" is too large for a duration.");
    }
    return static_cast<Rep>(count);
}

} // namespace

std::u32string unitSuffix(TimeUnit unit)
{
    const auto found = std::find_if(kUnits.begin(), kUnits.end(),
                                    [&](const NamedUnit& named) { return equal(named.unit, unit); });
    if (found != kUnits.end()) {
        return std::u32string(found->suffix);
    }
    return U"[" + writeSigned(unit.numerator) + U"/" + writeSigned(unit.denominator) + U"]s";
}

std::optional<float> readDuration(const std::u32string& text, TimeUnit unit, float)
{
    return readDurationAs<float>(text, unit);
}

std::optional<double> readDuration(const std::u32string& text, TimeUnit unit, double)
{
    return readDurationAs<double>(text, unit);
}

std::optional<long double> readDuration(const std::u32string& text, TimeUnit unit, long double)
{
    return readDurationAs<long double>(text, unit);
}

std::optional<std::int64_t> readWholeDuration(const std::u32string& text, TimeUnit unit, std::int64_t lowest,
                                              std::int64_t highest)
{
    const std::optional<Amount> amount = amountOf(text, unit);
    if (!amount) {
        return std::nullopt;
    }
    if (equal(amount->unit, unit)) {
        if (const std::optional<std::int64_t> count = readSigned(amount->number, lowest, highest)) {
            return count;
        }
    }
    const std::optional<long double> number = readFloating(amount->number, 0.0L);
    if (!number) {
        return std::nullopt;
    }
    const long double count = *number * ratio(amount->unit, unit);
    if (count < static_cast<long double>(lowest)) {
        throw OutOfRange(text + U" is below " + writeSigned(lowest) + unitSuffix(unit) + U".", true);
    }
    if (count > static_cast<long double>(highest)) {
        throw OutOfRange(text + U" is above " + writeSigned(highest) + unitSuffix(unit) + U".", false);
    }
    const long double whole = std::round(count);
    constexpr long double kRounding = 1e-15L; // of the decimal number and the product
    if (std::abs(count - whole) > std::abs(whole) * kRounding) {
        refusePart(text, unit);
    }
    return static_cast<std::int64_t>(whole);
}

} // namespace zephyr::console::commands::detail
