#include "sandbox/commands/LogSaveCommand.h"

#include "sandbox/program/LogPrinter.h"
#include "zephyr/console/Console.h"

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr char32_t kLogSaveUsage[] = U"log_save FILE";
constexpr char32_t kLogSaveDescription[] = U"Writes the log up to here as a text file.";
constexpr char32_t kLogSaveHelp[] = U"Usage: log_save FILE.  Quote a FILE with spaces.";

} // namespace

LogSaveCommand::LogSaveCommand() : SaveCommand(kLogSaveUsage, kLogSaveDescription, kLogSaveHelp) {}

std::u32string LogSaveCommand::name() const
{
    return U"log_save";
}

void LogSaveCommand::save(const std::u32string& file, Console& console) const
{
    const console::ConsoleSnapshot snapshot = console.snapshot();
    std::string text;
    for (const console::LogEntry& entry : snapshot.lines()) {
        text += printedEntry(entry);
    }
    writeFile(file, text, std::to_string(snapshot.lines().size()) + " lines", console);
}

} // namespace zephyr::sandbox
