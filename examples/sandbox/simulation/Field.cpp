#include "sandbox/simulation/Field.h"

#include <cmath>

namespace zephyr::sandbox {

namespace {

/// `value` moved by a multiple of `span` into the range from 0 to under `span`.
double wrappedInto(double value, double span)
{
    const double inside = value - span * std::floor(value / span);
    return inside < span ? inside : 0.0; // a tiny negative value rounds up to the span itself
}

/// `way`, or the way round the other side if that is shorter. `way` is from -`span` to `span`.
double shortest(double way, double span)
{
    if (way >= span / 2.0) {
        return way - span;
    }
    return way <= -span / 2.0 ? way + span : way;
}

} // namespace

glm::dvec2 wrapped(const glm::dvec2& place)
{
    return {wrappedInto(place.x, kFieldWidth), wrappedInto(place.y, kFieldHeight)};
}

glm::dvec2 shortestWay(const glm::dvec2& from, const glm::dvec2& to)
{
    return {shortest(to.x - from.x, kFieldWidth), shortest(to.y - from.y, kFieldHeight)};
}

} // namespace zephyr::sandbox
