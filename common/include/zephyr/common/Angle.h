#ifndef ZEPHYR_COMMON_ANGLE_H
#define ZEPHYR_COMMON_ANGLE_H

namespace zephyr {

/// An angle in degrees, kept as it was given: nothing is normalised, and any `double` is allowed, infinities
/// and NaN included.
class Angle
{
public:
    /// An angle of that many degrees.
    explicit constexpr Angle(double degrees) noexcept : mDegrees(degrees) {}

    /// The angle in degrees, as it was given.
    constexpr double value() const noexcept { return mDegrees; }

private:
    double mDegrees;
};

} // namespace zephyr

#endif
