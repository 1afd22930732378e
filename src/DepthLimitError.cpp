#include "zephyr/console/DepthLimitError.h"

namespace zephyr::console {

DepthLimitError::DepthLimitError(const std::string& what) : std::runtime_error(what) {}

DepthLimitError::~DepthLimitError() = default;

} // namespace zephyr::console
