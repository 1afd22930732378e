#include "sandbox/commands/AliasSaveCommand.h"

#include "sandbox/commands/AliasLine.h"
#include "sandbox/commands/AnswerIndent.h"
#include "sandbox/commands/ConsoleFileName.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr char32_t kAliasCommand[] = U"alias";

constexpr char kFileHead[] = "// Aliases, as alias_save wrote them.\n";
constexpr char kNoAliases[] = "There are no aliases; nothing is written.";

constexpr char32_t kUsage[] = U"alias_save FILE.console";
constexpr char32_t kDescription[] = U"Writes all aliases as a console file, which run restores.";
constexpr char32_t kHelp[] =
    U"Usage: alias_save FILE.console.  The extension may be left out; quote a FILE with spaces.";

/// The console file that is to be written.
struct AliasFile
{
    void add(const std::u32string& name, const std::vector<std::u32string>& aliasLines)
    {
        const AliasLine line = aliasLine(name, aliasLines);
        if (const auto* const refusal = std::get_if<AliasRefusal>(&line)) {
            refusals.push_back(refusal->text);
        } else {
            lines.push_back(std::get<std::u32string>(line));
        }
    }

    std::string text() const
    {
        std::string text = kFileHead;
        for (const std::u32string& line : lines) {
            text += StringUtil::toString(line) + '\n';
        }
        return text;
    }

    std::vector<std::u32string> lines; // one per alias
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

} // namespace

AliasSaveCommand::AliasSaveCommand() : SaveCommand(kUsage, kDescription, kHelp) {}

std::u32string AliasSaveCommand::name() const { return U"alias_save"; }

void AliasSaveCommand::save(const std::u32string& file, Console& console) const
{
    const AliasFile aliases = aliasFileOf(console);
    for (const std::u32string& refusal : aliases.refusals) {
        console.writeIndented(refusal, kAnswerIndent);
    }
    if (!aliases.refusals.empty()) {
        return;
    }
    const std::size_t count = aliases.lines.size();
    if (count == 0) {
        console.writeIndented(kNoAliases, kAnswerIndent);
        return;
    }
    writeFile(consoleFileName(file), aliases.text(),
              std::to_string(count) + (count == 1 ? " alias" : " aliases"), console);
}

} // namespace zephyr::sandbox
