#include "console/LineRunner.h"

#include "console/UnknownNames.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/DepthLimitError.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/ExceptionLine.h"
#include "zephyr/console/commands/Failure.h"
#include "zephyr/console/detail/ForcedUnwinding.h"

#include <exception>
#include <optional>

namespace zephyr::console::remote {

namespace {

/// Runs a line. \return what left it, as a line that stands in the log; nothing if nothing did.
ZEPHYR_CATCHES_FORCED_UNWINDING std::optional<std::u32string> executeGuarded(Console& console,
                                                                             const std::u32string& line)
{
    try {
        console.execute(line);
        return std::nullopt;
    } catch (const EndOfRun&) { // as the user asked for
        return std::nullopt;
    } catch (const DepthLimitError& error) { // which the log has already
        return StringUtil::toU32String(error.what());
    }
    ZEPHYR_LET_FORCED_UNWINDING_THROUGH
    catch (...)
    {
        std::u32string caught = exceptionLine(std::current_exception());
        console.write(caught, Output);
        return caught;
    }
}

} // namespace

LineResult runLine(Console& console, const std::u32string& line)
{
    const commands::FailureCounter failures(console);
    const std::size_t begin = console.logSize();
    if (const std::optional<std::u32string> caught = executeGuarded(console, line)) {
        return {Outcome::Failed, *caught};
    }
    if (const std::optional<std::u32string> unknown = unknownNameIn(console, begin, console.logSize())) {
        return {Outcome::Unknown, *unknown};
    }
    return failures.count() > 0 ? LineResult{Outcome::Failed, failures.lastLine()} : LineResult{};
}

} // namespace zephyr::console::remote
