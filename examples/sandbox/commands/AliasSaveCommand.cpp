#include "sandbox/commands/AliasSaveCommand.h"

#include "sandbox/commands/AliasLine.h"
#include "sandbox/commands/SandboxCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <vector>

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr char32_t kConsoleFileExtension[] = U".console";
constexpr char32_t kAliasCommand[] = U"alias";

constexpr char kFileHead[] = "// Aliases, as alias_save wrote them.\n";
constexpr char kNoAliases[] = "There are no aliases; nothing is written.";

constexpr char32_t kAliasSaveUsage[] = U"alias_save FILE.console";
constexpr char32_t kAliasSaveDescription[] = U"Writes all aliases as a console file, which run restores.";
constexpr char32_t kAliasSaveHelp[] =
    U"Usage: alias_save FILE.console.  The extension may be left out; quote a FILE with spaces.";

/// What a console file with all aliases holds.
struct AliasFile
{
    std::u32string lines;
    std::size_t count = 0;
    std::vector<std::u32string> refusals;
};

void addAlias(const std::u32string& name, const std::vector<std::u32string>& lines, AliasFile& file)
{
    const AliasLine line = aliasLine(name, lines);
    if (!line.refusal.empty()) {
        file.refusals.push_back(line.refusal);
        return;
    }
    file.lines += line.text + U"\n";
    ++file.count;
}

AliasFile aliasFileOf(Console& console)
{
    AliasFile file;
    console.forEachAlias([&](const std::u32string& name, const std::vector<std::u32string>& lines) {
        if (name != kAliasCommand) {
            addAlias(name, lines, file);
        }
    });
    // The last, as every line behind it would run the alias in place of the command.
    if (const std::vector<std::u32string>* const lines = console.lookupAlias(kAliasCommand)) {
        addAlias(kAliasCommand, *lines, file);
    }
    return file;
}

} // namespace

AliasSaveCommand::AliasSaveCommand() : SaveCommand(kAliasSaveUsage, kAliasSaveDescription, kAliasSaveHelp) {}

std::u32string AliasSaveCommand::name() const
{
    return U"alias_save";
}

void AliasSaveCommand::save(const std::u32string& file, Console& console) const
{
    const AliasFile aliases = aliasFileOf(console);
    for (const std::u32string& refusal : aliases.refusals) {
        console.writeIndented(refusal, kAnswerIndent);
    }
    if (!aliases.refusals.empty()) {
        return;
    }
    if (aliases.count == 0) {
        console.writeIndented(kNoAliases, kAnswerIndent);
        return;
    }
    const std::u32string fileName =
        file.ends_with(kConsoleFileExtension) ? file : file + kConsoleFileExtension;
    writeFile(fileName, kFileHead + StringUtil::toString(aliases.lines),
              std::to_string(aliases.count) + (aliases.count == 1 ? " alias" : " aliases"), console);
}

} // namespace zephyr::sandbox
