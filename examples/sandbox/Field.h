#ifndef ZEPHYR_SANDBOX_FIELD_H
#define ZEPHYR_SANDBOX_FIELD_H

namespace zephyr::sandbox {

constexpr double kFieldWidth = 160.0; ///< Metres.
constexpr double kFieldHeight = 90.0; ///< Metres.

} // namespace zephyr::sandbox

#endif
