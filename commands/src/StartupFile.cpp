// The start-up file.

#include "AnswerTexts.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/DepthLimitError.h"
#include "zephyr/console/ExceptionLine.h"
#include "zephyr/console/commands/Failure.h"
#include "zephyr/console/commands/StandardCommands.h"

#include <exception>
#include <fstream>
#include <system_error>

namespace zephyr::console::commands {

namespace fs = std::filesystem;

namespace {

/// Why the file can't be run, as the end of a sentence, or null. Asked first, since a console takes a file that can't be
/// read for a mistake of the program.
const char* reasonNotToRun(const fs::path& path)
{
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) {
        return "it is a directory";
    }
    return std::ifstream(path).is_open() ? nullptr : "it can't be read";
}

} // namespace

bool runStartupFile(Console& console, const fs::path& path)
{
    std::error_code error;
    if (fs::status(path, error).type() == fs::file_type::not_found) {
        return true;
    }
    if (const char* const reason = reasonNotToRun(path)) {
        console.writeIndented("Can't run '" + path.string() + "': " + reason + ".", kAnswerIndent);
        return false;
    }
    const FailureCounter failures(console);
    try {
        console.runFile(path);
    } catch (const DepthLimitError&) { // the log says so already
        return false;
    } catch (const std::exception&) {
        console.write(exceptionLine(std::current_exception()), Output);
        return false;
    }
    return failures.count() == 0;
}

} // namespace zephyr::console::commands
