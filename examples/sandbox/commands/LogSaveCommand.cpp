#include "sandbox/commands/LogSaveCommand.h"

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr char32_t kUsage[] = U"log_save FILE";
constexpr char32_t kDescription[] = U"Writes the log up to here as a text file.";
constexpr char32_t kHelp[] = U"Usage: log_save FILE.  Quote a FILE with spaces.";

} // namespace

LogSaveCommand::LogSaveCommand() : SaveCommand(kUsage, kDescription, kHelp) {}

std::u32string LogSaveCommand::name() const { return U"log_save"; }

void LogSaveCommand::save(const std::u32string& file, Console& console) const
{
    const console::ConsoleSnapshot snapshot = console.snapshot();
    std::string text;
    for (const console::LogEntry& entry : snapshot.lines()) {
        text += StringUtil::toString(shownText(entry)) + '\n';
    }
    writeFile(file, text, std::to_string(snapshot.lines().size()) + " lines", console);
}

} // namespace zephyr::sandbox
