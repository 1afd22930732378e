#include "GuardedCommands.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace zephyr::fuzz {

namespace {

using AliasTable = console::AliasConsoleCommand::AliasTable;

constexpr std::size_t kMostLines = 64; // in one alias, after expansion
constexpr char32_t kMask = 0xFFFF;

std::u32string unmasked(std::u32string text)
{
    std::replace(text.begin(), text.end(), kMask, U' ');
    return text;
}

/// An upper bound for the number of lines that `name` expands to, including every alias that its lines might
/// mention. `depth` ends the walk if aliases form a circle.
std::size_t linesOf(const AliasTable& aliases, const std::u32string& name, std::size_t depth)
{
    if (depth > aliases.size()) {
        return kMostLines + 1;
    }
    std::size_t count = 0;
    for (const std::u32string& line : aliases.at(name)) {
        ++count;
        for (const auto& [other, ignored] : aliases) {
            const bool mentioned = unmasked(line).find(unmasked(other)) != std::u32string::npos;
            count += mentioned && count <= kMostLines ? linesOf(aliases, other, depth + 1) : 0;
        }
        if (count > kMostLines) {
            return count;
        }
    }
    return count;
}

} // namespace

GuardedAlias::GuardedAlias(AliasTable& aliases, Budget& budget)
    : AliasConsoleCommand(aliases), mAliases(aliases), mBudget(budget)
{}

void GuardedAlias::execute(const console::ConsoleArgs& args, console::Console& console)
{
    if (mBudget.aliasDefinitions == 0) {
        return;
    }
    --mBudget.aliasDefinitions;
    AliasConsoleCommand::execute(args, console);
    // The table was harmless before, so only the alias from this line can be harmful.
    if (mAliases.contains(args.subCmd()) &&
        std::any_of(mAliases.begin(), mAliases.end(),
                    [this](const auto& a) { return linesOf(mAliases, a.first, 0) > kMostLines; })) {
        mAliases.erase(args.subCmd());
    }
}

GuardedRun::GuardedRun(Budget& budget) : mBudget(budget) {}

void GuardedRun::execute(const console::ConsoleArgs& args, console::Console& console)
{
    mBudget.ranInnerLines = true;
    if (mBudget.innerLines == 0) {
        return;
    }
    --mBudget.innerLines;
    RunConsoleFileCommand::execute(args, console);
}

} // namespace zephyr::fuzz
