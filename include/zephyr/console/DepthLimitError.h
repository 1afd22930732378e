#ifndef ZEPHYR_CONSOLE_DEPTHLIMITERROR_H
#define ZEPHYR_CONSOLE_DEPTHLIMITERROR_H

#include "zephyr/console/detail/Export.h"

#include <stdexcept>
#include <string>

namespace zephyr::console {

/// Thrown when a line is not run because it is nested deeper than Console::setDepthLimit() allows. The log says so already:
/// whoever catches this has nothing to add.
class ZEPHYR_CONSOLE_EXPORT DepthLimitError : public std::runtime_error
{
public:
    /// `what` is the line that stands in the log, in UTF-8.
    explicit DepthLimitError(const std::string& what);

    /// Copies the error. Copying never throws, so that it can be thrown on.
    DepthLimitError(const DepthLimitError&) = default;

    /// Copies the error.
    DepthLimitError& operator=(const DepthLimitError&) = default;

    ~DepthLimitError() override;
};

} // namespace zephyr::console

#endif
