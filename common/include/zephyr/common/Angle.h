#ifndef ZEPHYR_COMMON_ANGLE_H
#define ZEPHYR_COMMON_ANGLE_H

namespace zephyr {

/// An angle in degrees.
///
/// - It is: one number that says its unit. It is not: normalised; 720 and -90 stay what they are.
/// - Threads: an immutable value, usable from any thread.
/// - Ownership: owns nothing.
/// - Failure: none; any `double` is kept, infinities and NaN included.
class Angle
{
public:
    /// An angle of `degrees` degrees.
    explicit constexpr Angle(double degrees) noexcept : mDegrees(degrees) {}

    /// The angle in degrees, as it was given.
    constexpr double value() const noexcept { return mDegrees; }

private:
    double mDegrees;
};

} // namespace zephyr

#endif
