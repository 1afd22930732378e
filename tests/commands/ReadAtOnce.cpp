// Values that the processor reads at once, and others: none of them may need a library for that.

#include "zephyr/console/commands/GlmValues.h"
#include "zephyr/console/commands/QtValues.h"
#include "zephyr/console/commands/Variable.h"

#include <array>

namespace zephyr::console::commands {

using ThreeBytes = std::array<char, 3>;

// Instantiated as a whole: the class's functions are the library's only atomic operations.
template class detail::SharedValue<bool>;
template class detail::SharedValue<double>;
template class detail::SharedValue<long double>;
template class detail::SharedValue<ThreeBytes>;
template class detail::SharedValue<std::chrono::milliseconds>;
template class detail::SharedValue<QSize>;
template class detail::SharedValue<QPointF>;
template class detail::SharedValue<glm::vec2>;
template class detail::SharedValue<glm::vec3>;
template class detail::SharedValue<std::string>;

} // namespace zephyr::console::commands
