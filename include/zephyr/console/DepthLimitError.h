#ifndef ZEPHYR_CONSOLE_DEPTHLIMITERROR_H
#define ZEPHYR_CONSOLE_DEPTHLIMITERROR_H

#include "zephyr/console/detail/Export.h"

#include <stdexcept>
#include <string>

namespace zephyr::console {

/// Thrown when a line is not run because it would run inside of more lines than Console::setDepthLimit() allows. The log
/// then says so already: whoever catches this has nothing to add.
class ZEPHYR_CONSOLE_EXPORT DepthLimitError : public std::runtime_error
{
public:
    /// `what` is the line that stands in the log, in UTF-8.
    explicit DepthLimitError(const std::string& what);
    ~DepthLimitError() override;

    DepthLimitError(const DepthLimitError&) = default;
    DepthLimitError& operator=(const DepthLimitError&) = default;
};

} // namespace zephyr::console

#endif
