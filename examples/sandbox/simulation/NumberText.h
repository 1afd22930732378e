#ifndef ZEPHYR_SANDBOX_SIMULATION_NUMBERTEXT_H
#define ZEPHYR_SANDBOX_SIMULATION_NUMBERTEXT_H

#include <string>

namespace zephyr::sandbox {

/// `value` in decimal with at most six significant digits and no trailing zeros: `12.5`, `270`. The same in every locale.
std::string textOf(double value);

} // namespace zephyr::sandbox

#endif
