#ifndef ZEPHYR_COMMON_TIME_H
#define ZEPHYR_COMMON_TIME_H

namespace zephyr {

/// A span of time in seconds, kept as it was given: any `double` is allowed, negative ones, infinities and
/// NaN included.
class Time
{
public:
    /// A span of that many seconds.
    explicit constexpr Time(double seconds) noexcept : mSeconds(seconds) {}

    /// The span in seconds, as it was given.
    constexpr double value() const noexcept { return mSeconds; }

private:
    double mSeconds;
};

} // namespace zephyr

#endif
