#ifndef ZEPHYR_CONSOLE_EXCEPTIONLINE_H
#define ZEPHYR_CONSOLE_EXCEPTIONLINE_H

#include "zephyr/common/StringUtil.h"

#include <algorithm>
#include <exception>
#include <string>

namespace zephyr::console {

/// The log line for an exception that a line let out: "The console caught an exception: " and what the exception says,
/// on one line. What the exception says is taken for UTF-8. From any thread; `exception` must not be null.
inline std::u32string exceptionLine(const std::exception_ptr& exception)
{
    std::string what = "unknown exception";
    try {
        std::rethrow_exception(exception);
    } catch (const std::exception& error) {
        what = error.what();
    } catch (...) { // has nothing to say
    }
    std::replace(what.begin(), what.end(), '\n', ' ');
    return U"The console caught an exception: " + StringUtil::toU32String(what);
}

} // namespace zephyr::console

#endif
