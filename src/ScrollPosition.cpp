#include "ScrollPosition.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zephyr::console {

namespace {

constexpr double kLinesPerDegree = 0.1;
constexpr std::int64_t kLargestOffset = std::numeric_limits<std::int32_t>::max();

} // namespace

void ScrollPosition::scroll(std::int64_t lines, std::size_t entries, unsigned page)
{
    const auto beyondPage = static_cast<std::int64_t>(entries) - std::int64_t{page};
    const std::int64_t largest =
        lines > 0 ? std::clamp<std::int64_t>(beyondPage, 0, kLargestOffset) : mScrollOffset;
    mScrollOffset = static_cast<std::uint32_t>(std::clamp<std::int64_t>(mScrollOffset + lines, 0, largest));
}

int ScrollPosition::linesOfTurn(double degrees)
{
    const double lines = std::round(std::abs(degrees) * kLinesPerDegree);
    if (std::isnan(lines)) {
        return 0;
    }
    constexpr int kMost = std::numeric_limits<int>::max();
    const int count = lines < kMost ? static_cast<int>(lines) : kMost;
    return degrees > 0 ? count : -count;
}

} // namespace zephyr::console
