#ifndef ZEPHYR_CONSOLE_COMMANDS_DURATIONS_H
#define ZEPHYR_CONSOLE_COMMANDS_DURATIONS_H

#include "zephyr/console/commands/Value.h"

#include <chrono>
#include <cstdint>
#include <ratio>

namespace zephyr::console::commands {

namespace detail {

/// A unit of time as a fraction of a second, in lowest terms.
struct TimeUnit
{
    std::int64_t numerator;   ///< Above 0.
    std::int64_t denominator; ///< Above 0.
};

/// The count of `unit` that `text` is, such as `250ms`; nothing if it is no duration. Throws CommandError for one that
/// isn't a whole number of units, or lies outside the limits.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<std::int64_t>
readWholeDuration(const std::u32string& text, TimeUnit unit, std::int64_t lowest, std::int64_t highest);

/// The count of `unit` that `text` is, or nothing. The last argument only tells the type: a count in that very unit is
/// read as it was written. Throws CommandError for one that the type can't hold.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<float> readDuration(const std::u32string& text, TimeUnit unit,
                                                                 float);
/// \copydoc readDuration(const std::u32string&, TimeUnit, float)
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<double> readDuration(const std::u32string& text, TimeUnit unit,
                                                                  double);
/// \copydoc readDuration(const std::u32string&, TimeUnit, float)
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<long double> readDuration(const std::u32string& text,
                                                                       TimeUnit unit, long double);

/// The suffix of `unit`: `ns`, `us`, `ms`, `s`, `min`, `h`, `d`, or for others the fraction of a second, as in `[1/60]s`.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::u32string unitSuffix(TimeUnit unit);

} // namespace detail

/// Durations: a number, as floating-point types read it, and one of the units `ns`, `us`, `ms`, `s`, `min`, `h` and `d`, as
/// in `250ms`, `1.5s`, `2min` and `2e3ms`.
/// A duration that counts in whole units takes no part of one.
template <typename Rep, typename Period>
struct Value<std::chrono::duration<Rep, Period>>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    using Duration = std::chrono::duration<Rep, Period>;

    static constexpr std::u32string_view kName = U"duration";
    static constexpr std::u32string_view kExample = U"250ms, 1.5s or 2min";
    static constexpr detail::TimeUnit kUnit{Period::num, Period::den};
    static constexpr std::int64_t kLowest = static_cast<std::int64_t>(std::numeric_limits<Rep>::min());
    static constexpr std::int64_t kHighest = std::is_signed_v<Rep> || sizeof(Rep) < sizeof(std::int64_t)
                                                 ? static_cast<std::int64_t>(std::numeric_limits<Rep>::max())
                                                 : std::numeric_limits<std::int64_t>::max();

    static std::optional<Duration> read(const std::u32string& text)
    {
        if constexpr (std::is_floating_point_v<Rep>) {
            const auto count = detail::readDuration(text, kUnit, Rep());
            return count ? std::optional<Duration>(Duration(*count)) : std::nullopt;
        } else {
            const auto count = detail::readWholeDuration(text, kUnit, kLowest, kHighest);
            return count ? std::optional<Duration>(Duration(static_cast<Rep>(*count))) : std::nullopt;
        }
    }

    static std::u32string write(Duration value)
    {
        return Value<Rep>::write(value.count()) + detail::unitSuffix(kUnit);
    }
    /// \endcond
};

} // namespace zephyr::console::commands

#endif
