#include "AliasConsoleCommand.h"

#include "Answers.h"
#include "SplitString.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <utility>

namespace zephyr::console {

namespace {

constexpr unsigned kWordCount = 3;
constexpr char32_t kLineSeparator = U';';

/// The lines in an alias's value as it was typed. An empty line between two semicolons counts.
std::vector<std::u32string> linesOf(std::u32string value)
{
    removeQuotes(value);
    std::vector<std::u32string> lines = splitString(value, kLineSeparator);
    for (std::u32string& line : lines) {
        line = StringUtil::trim(line);
    }
    return lines;
}

} // namespace

AliasConsoleCommand::AliasConsoleCommand(AliasTable& aliases) : mAliases(aliases) {}

std::u32string AliasConsoleCommand::name() const { return U"alias"; }

void AliasConsoleCommand::execute(const ConsoleArgs& args, Console& console)
{
    if (args.argCount() != kWordCount) {
        printHelp(args.subCmd(), console, kIndent); // oddity 13: only "'x' is not a valid argument."
        return;
    }
    std::vector<std::u32string> lines = linesOf(args.arg(2));
    if (lines.empty()) {
        clear(args.subCmd(), console);
    } else {
        define(args.subCmd(), std::move(lines), console);
    }
}

void AliasConsoleCommand::define(const std::u32string& aliasName, std::vector<std::u32string> lines,
                                 Console& console)
{
    mAliases.insert_or_assign(aliasName, std::move(lines));
    console.writeIndented(kDone, Output, kIndent);
}

void AliasConsoleCommand::clear(const std::u32string& aliasName, Console& console)
{
    if (mAliases.erase(aliasName) == 0) {
        console.writeIndented(aliasName + U" is not an existing alias.  Nothing to do.", Output, kIndent);
        return;
    }
    console.writeIndented(U"Cleared alias '" + aliasName + U"'", Output, kIndent);
}

} // namespace zephyr::console
