#include "view/ArgumentTexts.h"
#include "support/ScriptedCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <string>

namespace zephyr::console::qt {
namespace {

class TheArgumentTexts : public testing::Test
{
protected:
    test::ScriptedCommand& add(const std::u32string& name, const std::u32string& argument,
                               const std::u32string& description)
    {
        test::ScriptedCommand& command = test::addCommand(console, name);
        command.registerArgHandler(argument, {}, description, U"Help.");
        return command;
    }

    std::string description(const std::u32string& argument) const
    {
        return StringUtil::toString(texts.description(argument));
    }

    Console console;
    ArgumentTexts texts;
};

TEST_F(TheArgumentTexts, AreTheFirstLinesOfTheDescriptions)
{
    add(U"cmd", U"go", U"Goes.\nSecond line").registerArgHandler(U"stop", {}, U"  Stops.", {});
    const std::size_t before = console.logSize();
    texts.read(console, U"cmd");
    EXPECT_EQ("Goes.", description(U"go"));
    EXPECT_EQ("  Stops.", description(U"stop"));
    EXPECT_EQ(before, console.logSize());
}

TEST_F(TheArgumentTexts, AreEmptyWithoutADescription)
{
    add(U"cmd", U"go", {});
    texts.read(console, U"cmd");
    EXPECT_EQ("", description(U"go"));
    EXPECT_EQ("", description(U"no argument"));
}

TEST_F(TheArgumentTexts, AreThoseOfTheCommandReadLast)
{
    add(U"first", U"go", U"of the first");
    add(U"second", U"go", U"of the second");
    texts.read(console, U"first");
    texts.read(console, U"second");
    EXPECT_EQ("of the second", description(U"go"));
    texts.read(console, U"help");
    EXPECT_EQ("", description(U"go"));
    texts.read(console, U"first");
    texts.read(console, U"no command");
    EXPECT_EQ("", description(U"go"));
}

TEST_F(TheArgumentTexts, AreReadAgainOnceForgotten)
{
    add(U"cmd", U"go", U"before");
    texts.read(console, U"cmd");
    add(U"cmd", U"go", U"after");
    texts.read(console, U"cmd");
    EXPECT_EQ("before", description(U"go"));
    texts.forget();
    EXPECT_EQ("", description(U"go"));
    texts.read(console, U"cmd");
    EXPECT_EQ("after", description(U"go"));
}

TEST_F(TheArgumentTexts, SumUpACommandByItsArguments)
{
    test::ScriptedCommand& command = add(U"cmd", U"stop", U"Stops.");
    command.registerArgHandler(U"go", {}, {}, {});
    command.registerArgHandler({}, {}, {}, {});
    EXPECT_EQ("go, stop", StringUtil::toString(argumentSummary(command)));
}

TEST_F(TheArgumentTexts, SumUpNoHeadingOfAHelp)
{
    test::ScriptedCommand& command = add(U"cmd", U"stop", U"Stops.");
    command.registerArgHandler(U"Usage", {}, U"cmd stop", {});
    EXPECT_EQ("stop", StringUtil::toString(argumentSummary(command)));
}

TEST_F(TheArgumentTexts, CutASummaryThatIsTooLong)
{
    test::ScriptedCommand& command = test::addCommand(console, U"cmd");
    for (char32_t c = U'a'; c <= U'e'; ++c) {
        command.registerArgHandler(std::u32string(150, c), {}, {}, {});
    }
    const std::u32string summary = argumentSummary(command);
    EXPECT_EQ(std::u32string(150, U'a') + U", " + std::u32string(48, U'b') + U"\u2026", summary);
}

TEST_F(TheArgumentTexts, SumUpAnAliasByItsLines)
{
    EXPECT_EQ("set a; set b", StringUtil::toString(aliasSummary({U"set a", U"set b"})));
    EXPECT_EQ("", StringUtil::toString(aliasSummary({})));
}

} // namespace
} // namespace zephyr::console::qt
