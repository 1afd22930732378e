#ifndef ZEPHYR_SANDBOX_SIMULATION_FIELD_H
#define ZEPHYR_SANDBOX_SIMULATION_FIELD_H

#include <glm/vec2.hpp>

namespace zephyr::sandbox {

constexpr double kFieldWidth = 160.0; ///< Metres.
constexpr double kFieldHeight = 90.0; ///< Metres.

/// `place` where it lies in the field, whose opposite edges are joined: from 0, 0 to under the field's size.
glm::dvec2 wrapped(const glm::dvec2& place);

/// The shortest way from `from` to `to`, both in the field or on its edge, which may lead across the joined edges.
glm::dvec2 shortestWay(const glm::dvec2& from, const glm::dvec2& to);

} // namespace zephyr::sandbox

#endif
