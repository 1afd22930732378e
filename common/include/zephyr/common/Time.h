#ifndef ZEPHYR_COMMON_TIME_H
#define ZEPHYR_COMMON_TIME_H

namespace zephyr {

/// A span of time in seconds.
///
/// - It is: one number that says its unit. It is not: a clock, nor a point in time.
/// - Threads: an immutable value, usable from any thread.
/// - Ownership: owns nothing.
/// - Failure: none; any `double` is kept, negative ones, infinities and NaN included.
class Time
{
public:
    /// A span of `seconds` seconds.
    explicit constexpr Time(double seconds) noexcept : mSeconds(seconds) {}

    /// The span in seconds, as it was given.
    constexpr double value() const noexcept { return mSeconds; }

private:
    double mSeconds;
};

} // namespace zephyr

#endif
