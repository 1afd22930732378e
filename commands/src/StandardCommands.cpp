#include "zephyr/console/commands/StandardCommands.h"

#include "AliasLine.h"
#include "FailureList.h"
#include "FileWriting.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Command.h"

#include <algorithm>
#include <cstddef>
#include <variant>

namespace zephyr::console::commands {

namespace fs = std::filesystem;

namespace {

constexpr char32_t kAliasCommand[] = U"alias";
constexpr char kAliasFileHead[] = "// Aliases, as alias_save wrote them.\n";
constexpr char kNoAliases[] = "There are no aliases; nothing is written.";

/// The console file that is to be written, or why it can't be.
struct AliasFile
{
    void add(const std::u32string& name, const std::vector<std::u32string>& aliasLines)
    {
        const AliasLine line = aliasLine(name, aliasLines);
        if (const auto* const refusal = std::get_if<AliasRefusal>(&line)) {
            refusals.push_back(refusal->text);
        } else {
            text += StringUtil::toString(std::get<std::u32string>(line)) + '\n';
            ++count;
        }
    }

    std::string text = kAliasFileHead;
    std::size_t count = 0;
    std::vector<std::u32string> refusals;
};

AliasFile aliasFileOf(Console& console)
{
    AliasFile file;
    console.forEachAlias([&](const std::u32string& name, const std::vector<std::u32string>& lines) {
        if (name != kAliasCommand) {
            file.add(name, lines);
        }
    });
    // An alias of this name comes last, since every "alias" after it would run the alias instead of the command.
    if (const std::vector<std::u32string>* const lines = console.lookupAlias(kAliasCommand)) {
        file.add(kAliasCommand, *lines);
    }
    return file;
}

std::string wrote(const std::string& what, const fs::path& path)
{
    return "Wrote " + what + " to '" + path.string() + "'.";
}

std::string saveAliases(Console& console, Answer& answer, const fs::path& name)
{
    const AliasFile file = aliasFileOf(console);
    failIfAny(file.refusals, answer);
    if (file.count == 0) {
        return kNoAliases;
    }
    const fs::path path = consoleFileName(name);
    writeWhole(path, file.text);
    return wrote(std::to_string(file.count) + (file.count == 1 ? " alias" : " aliases"), path);
}

std::string saveLog(Console& console, const fs::path& path)
{
    const ConsoleSnapshot snapshot = console.snapshot();
    std::string text;
    for (const LogEntry& entry : snapshot.lines()) {
        text += StringUtil::toString(shownText(entry)) + '\n';
    }
    writeWhole(path, text);
    return wrote(std::to_string(snapshot.lines().size()) + " lines", path);
}

std::u32string joined(const std::vector<std::u32string>& words)
{
    std::u32string text;
    for (const std::u32string& word : words) {
        text += word + U" ";
    }
    return text.substr(0, text.size() - std::min<std::size_t>(1, text.size()));
}

std::vector<std::u32string> newestLines(const Console& console, std::optional<std::size_t> count)
{
    std::vector<std::u32string> lines = console.history();
    const std::size_t shown = std::min(count.value_or(lines.size()), lines.size());
    lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(shown));
    return lines;
}

} // namespace

Added addEcho(Console& console) { return add(console, U"echo", U"Writes its words.", &joined); }

Added addClear(Console& console, std::function<void()> clear)
{
    return add(console, U"clear", U"Empties the view; the log is kept.", std::move(clear));
}

Added addHistory(Console& console)
{
    return add(
        console, U"history", U"Shows the lines that were typed, oldest first.",
        [](Console& own, std::optional<std::size_t> count) { return newestLines(own, count); },
        argument(U"count", U"The last so many."));
}

Added addAliasSave(Console& console)
{
    return add(console, U"alias_save", U"Writes all aliases as a console file, which run restores.",
               &saveAliases, fileArgument(U"The extension may be left out; quote a name with spaces."));
}

Added addLogSave(Console& console)
{
    return add(console, U"log_save", U"Writes the log up to here as a text file.", &saveLog,
               fileArgument(U"Quote a name with spaces."));
}

} // namespace zephyr::console::commands
