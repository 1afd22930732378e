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
#include <utility>

namespace zephyr::console::remote {

namespace {

/// Runs a line, and tells how it ended as far as exceptions do.
ZEPHYR_CATCHES_FORCED_UNWINDING LineResult executeGuarded(Console& console, const std::u32string& line)
{
    try {
        console.execute(line);
        return {};
    } catch (const EndOfRun&) {
        return {Outcome::Ok, {}, true};
    } catch (const DepthLimitError& error) { // which the log has already
        return {Outcome::Failed, StringUtil::toU32String(error.what()), false};
    }
    ZEPHYR_LET_FORCED_UNWINDING_THROUGH
    catch (...)
    {
        std::u32string caught = exceptionLine(std::current_exception());
        console.write(caught, Output);
        return {Outcome::Failed, std::move(caught), false};
    }
}

} // namespace

LineResult runLine(Console& console, const std::u32string& line)
{
    const commands::FailureCounter failures(console);
    const std::size_t begin = console.logSize();
    LineResult result = executeGuarded(console, line);
    if (result.outcome != Outcome::Ok) {
        return result;
    }
    if (const std::optional<std::u32string> unknown = unknownNameIn(console, begin, console.logSize())) {
        result.outcome = Outcome::Unknown;
        result.reason = *unknown;
    } else if (failures.count() > 0) {
        result.outcome = Outcome::Failed;
        result.reason = failures.lastLine();
    }
    return result;
}

} // namespace zephyr::console::remote
