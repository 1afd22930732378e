#ifndef ZEPHYR_SANDBOX_SIMULATION_FIELD_H
#define ZEPHYR_SANDBOX_SIMULATION_FIELD_H

#include <glm/vec2.hpp>

namespace zephyr::sandbox {

constexpr double kFieldWidth = 160.0; ///< Metres.
constexpr double kFieldHeight = 90.0; ///< Metres.

/// `place` moved into the field, whose opposite edges are joined: from 0, 0 to under the field's size.
glm::dvec2 wrapped(const glm::dvec2& place);

/// The shortest way from `from` to `to`, across the joined edges if that is shorter. Both must lie in the field or on
/// its edge.
glm::dvec2 shortestWay(const glm::dvec2& from, const glm::dvec2& to);

} // namespace zephyr::sandbox

#endif
