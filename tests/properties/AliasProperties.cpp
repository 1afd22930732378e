#include "Generators.h"
#include "support/LogOf.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <map>
#include <utility>

namespace zephyr::console {
namespace {

using test::kPlainCharacters;

using Lines = std::vector<std::string>;

/// The line in which the help command lists an alias.
std::string listed(const std::string& name, const Lines& lines)
{
    return "    " + name + " -> \"" + test::joined(lines, "; ") + "\"";
}

/// The lines of an alias: no blanks at their ends, and the last one isn't empty, since a semicolon at the end
/// adds no line.
Lines aliasLines()
{
    Lines lines = *rc::gen::container<Lines>(test::textOf(test::with(kPlainCharacters, {"/", "=", ">"})));
    if (!lines.empty() && lines.back().empty()) {
        lines.back() = "a";
    }
    return lines;
}

std::vector<std::string> textsAddedBy(const std::string& line, Console& console)
{
    return test::textsOf(test::logOf(line, console));
}

std::string definition(const std::string& name, const Lines& lines)
{
    return "alias " + name + " \"" + test::joined(lines, " ; ") + "\"";
}

RC_GTEST_PROP(AliasProperties, HelpListsEachAliasAsItWasLastDefined, ())
{
    Console console;
    std::map<std::u32string, std::pair<std::string, Lines>>
        model; // ordered by code points, like the console's table
    for (int count = *rc::gen::inRange(0, 8); count > 0; --count) {
        const std::string name = *test::someTextOf({"a", "b", "Z", "\u00E9", "\uFF5E", "\U0001F600"});
        const Lines lines = aliasLines();
        console.execute(StringUtil::toU32String(definition(name, lines)));
        if (lines.empty()) {
            model.erase(StringUtil::toU32String(name));
        } else {
            model[StringUtil::toU32String(name)] = {name, lines};
        }
    }
    Lines expected{"help", "Registered Commands:", "    alias", "    help", "", "Aliases:"};
    for (const auto& [key, alias] : model) {
        expected.push_back(listed(alias.first, alias.second));
    }
    expected.push_back("");
    RC_ASSERT(textsAddedBy("help", console) == expected);
}

RC_GTEST_PROP(AliasProperties, HelpForAnAliasShowsItsLines, ())
{
    Console console;
    const Lines lines = aliasLines();
    RC_PRE(!lines.empty());
    console.execute(StringUtil::toU32String(definition("x", lines)));
    RC_ASSERT(textsAddedBy("help x", console) == (Lines{"help x", listed("x", lines), ""}));
}

RC_GTEST_PROP(AliasProperties, AnAliasRunsItsLinesInOrder, ())
{
    Console console;
    const Lines lines = aliasLines();
    RC_PRE(!lines.empty());
    console.execute(StringUtil::toU32String(definition("\"x\"", lines)));
    Lines expected{"\"x\" and more"};
    for (const std::string& line : lines) {
        expected.push_back(line);
        if (!line.empty()) {
            expected.insert(expected.end(), {test::notRecognized(line), ""});
        }
    }
    RC_ASSERT(textsAddedBy("\"x\" and more", console) == expected);
}

} // namespace
} // namespace zephyr::console
