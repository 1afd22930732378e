#ifndef ZEPHYR_COMMON_COLOR_H
#define ZEPHYR_COMMON_COLOR_H

#include <cstdint>

namespace zephyr {

/// A colour with 8 bits a channel: red, green, blue, and alpha from 0 (transparent) to 255 (opaque). The
/// channels are not premultiplied and belong to no colour space.
class Color
{
public:
    /// A colour of these channels, opaque when no alpha is given.
    constexpr Color(std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                    std::uint8_t alpha = 255) noexcept
        : mRed(red), mGreen(green), mBlue(blue), mAlpha(alpha)
    {}

    /// The red channel, 0 to 255.
    constexpr std::uint8_t red() const noexcept { return mRed; }

    /// The green channel, 0 to 255.
    constexpr std::uint8_t green() const noexcept { return mGreen; }

    /// The blue channel, 0 to 255.
    constexpr std::uint8_t blue() const noexcept { return mBlue; }

    /// The alpha channel, 0 (transparent) to 255 (opaque).
    constexpr std::uint8_t alpha() const noexcept { return mAlpha; }

    /// Whether all four channels are equal.
    friend constexpr bool operator==(const Color& a, const Color& b) noexcept
    {
        return a.mRed == b.mRed && a.mGreen == b.mGreen && a.mBlue == b.mBlue && a.mAlpha == b.mAlpha;
    }

    /// Whether any of the four channels differs.
    friend constexpr bool operator!=(const Color& a, const Color& b) noexcept { return !(a == b); }

private:
    std::uint8_t mRed;
    std::uint8_t mGreen;
    std::uint8_t mBlue;
    std::uint8_t mAlpha;
};

} // namespace zephyr

#endif
