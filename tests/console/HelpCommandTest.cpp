#include "support/ConsoleDriver.h"
#include "support/ConsoleFixture.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using test::addCommand;
using test::echo;
using test::output;
using test::ScriptedCommand;
using Lines = std::vector<test::LogLine>;

class HelpCommand : public test::ConsoleFixture
{
protected:
    /// A command `wind` with the arguments `set` and `gust`, the first one without any text.
    void addWind()
    {
        ScriptedCommand& wind = addCommand(mConsole, U"wind");
        const auto nothing = [](const ConsoleArgs&, Console&) {};
        wind.registerArgHandler(U"set", nothing, U"", U"");
        wind.registerArgHandler(U"gust", nothing, U"A short blow.", U"Usage: wind gust");
    }
};

const Lines kWindArguments = {output("gust: A short blow.", 4), output(""),
                              output("set: (No Description Provided)", 4), output("")};

TEST_F(HelpCommand, IsRegisteredUnderItsNameWithoutArguments)
{
    ConsoleCommand* const command = mConsole.lookupCommand(U"help");
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->name(), U"help");
    EXPECT_EQ(command->argHandlerCount(), 0U);
    EXPECT_TRUE(command->getAutoCompleteResults(ConsoleArgs({U"help", U""})).empty());
}

TEST_F(HelpCommand, ListsTheCommandsOfAFreshConsole)
{
    mConsole.execute(U"help");
    EXPECT_EQ(test::logLines(mConsole),
              Lines({echo("help"), output("Registered Commands:"), output("alias", 4), output("help", 4),
                     output(""), output("Aliases:"), output("")}));
}

TEST_F(HelpCommand, ListsCommandsAndAliasesInCodePointOrder)
{
    addCommand(mConsole, U"wind");
    addCommand(mConsole, U"Zoom");
    mConsole.execute(U"alias x \"a; b c\"");
    mConsole.execute(U"alias X d");
    EXPECT_EQ(answer(U"help"), Lines({output("Registered Commands:"), output("Zoom", 4), output("alias", 4),
                                      output("help", 4), output("wind", 4), output(""), output("Aliases:"),
                                      output("X -> \"d\"", 4), output("x -> \"a; b c\"", 4)}));
}

TEST_F(HelpCommand, JoinsEmptyLinesOfAnAliasToo)
{
    mConsole.execute(U"alias x a;;b");
    mConsole.execute(U"alias y ;");
    EXPECT_EQ(answer(U"help x"), Lines({output("x -> \"a; ; b\"", 4)}));
    EXPECT_EQ(answer(U"help y"), Lines({output("y -> \"\"", 4)}));
}

TEST_F(HelpCommand, ShowsWhatAnAliasRuns)
{
    mConsole.execute(U"alias x \"a; b c\"");
    EXPECT_EQ(answer(U"help x"), Lines({output("x -> \"a; b c\"", 4)}));
    EXPECT_EQ(answer(U"help x y z"), Lines({output("x -> \"a; b c\"", 4)}));
}

TEST_F(HelpCommand, PrintsTheArgumentsOfACommand)
{
    addWind();
    EXPECT_EQ(answer(U"help wind"), kWindArguments);
}

TEST_F(HelpCommand, PrintsNothingForACommandWithoutArguments)
{
    EXPECT_EQ(answer(U"help help"), Lines());
    EXPECT_EQ(answer(U"help alias"), Lines());
}

TEST_F(HelpCommand, PrintsTheHelpOfAnArgument)
{
    addWind();
    EXPECT_EQ(answer(U"help wind gust"), Lines({output("A short blow.", 4), output("Usage: wind gust", 4)}));
    EXPECT_EQ(answer(U"help wind set"),
              Lines({output("(No Description Provided)", 4), output("(No Help Text Provided)", 4)}));
}

TEST_F(HelpCommand, IgnoresTheWordsAfterTheArgument)
{
    addWind();
    EXPECT_EQ(answer(U"help wind gust set more"),
              Lines({output("A short blow.", 4), output("Usage: wind gust", 4)}));
}

TEST_F(HelpCommand, LeavesAnUnknownArgumentToTheCommand)
{
    addWind();
    EXPECT_EQ(answer(U"help wind Gust"), Lines({output("'Gust' is not a valid argument.", 4)}));
    EXPECT_EQ(answer(U"help alias x"), Lines({output("'x' is not a valid argument.", 4)}));
}

TEST_F(HelpCommand, TakesAnEmptyWordForTheEmptyArgument)
{
    addWind();
    EXPECT_EQ(answer(U"help wind  "), Lines({output("'' is not a valid argument.", 4)}));
    EXPECT_EQ(answer(U"help wind "), kWindArguments);
}

TEST_F(HelpCommand, ShowsEveryArgumentOfEveryCommand)
{
    addWind();
    EXPECT_EQ(answer(U"help *"),
              Lines({output("alias", 4), output("", 4), output("help", 4), output("", 4), output("wind", 4),
                     output("gust", 8), output("A short blow.", 8), output("Usage: wind gust", 8), output(""),
                     output("set", 8), output("(No Description Provided)", 8),
                     output("(No Help Text Provided)", 8), output("")}));
}

TEST_F(HelpCommand, ShowsNoAliasesUnderTheStar)
{
    mConsole.execute(U"alias x a");
    const Lines all = {output("alias", 4), output("", 4), output("help", 4), output("", 4)};
    EXPECT_EQ(answer(U"help *"), all);
    EXPECT_EQ(answer(U"help * x"), all);
}

TEST_F(HelpCommand, CannotDescribeACommandUnderTheStar)
{
    addCommand(mConsole, U"*").registerArgHandler(U"x", {}, U"D", U"H");
    EXPECT_EQ(answer(U"help * x"),
              Lines({output("*", 4), output("x", 8), output("D", 8), output("H", 8), output(""),
                     output("alias", 4), output("", 4), output("help", 4), output("", 4)}));
}

TEST_F(HelpCommand, TakesOnlyTheBareStarForEverything)
{
    EXPECT_EQ(answer(U"help **"), Lines({output("'**' is not a recognized console command.")}));
    EXPECT_EQ(answer(U"help \"*\""), Lines({output("'\"*\"' is not a recognized console command.")}));
}

TEST_F(HelpCommand, DescribesACommandBeforeAnAliasOfItsName)
{
    addWind();
    mConsole.execute(U"alias wind unknown");
    EXPECT_EQ(answer(U"help wind"), kWindArguments);
}

TEST_F(HelpCommand, AnswersAnUnknownNameAsTyped)
{
    EXPECT_EQ(answer(U"help Help"), Lines({output("'Help' is not a recognized console command.")}));
    EXPECT_EQ(answer(U"help hel"), Lines({output("'hel' is not a recognized console command.")}));
    EXPECT_EQ(answer(U"help \"two words\" x"),
              Lines({output("'\"two words\"' is not a recognized console command.")}));
    EXPECT_EQ(answer(U"help <b>%1"), Lines({output("'<b>%1' is not a recognized console command.")}));
}

TEST_F(HelpCommand, AnswersTheEmptyName)
{
    EXPECT_EQ(answer(U"help  "), Lines({output("'' is not a recognized console command.")}));
    EXPECT_EQ(answer(U"help  x"), Lines({output("'' is not a recognized console command.")}));
    mConsole.execute(U"alias  a");
    EXPECT_EQ(answer(U"help  "), Lines({output(" -> \"a\"", 4)}));
}

TEST_F(HelpCommand, ListsNamesWithMarkupAndOddCodePointsAsTheyAre)
{
    const std::u32string odd = {U'<', U'b', U'>', U'%', U'1', U'\0', char32_t(0xD800), U'\uFFFF'};
    addCommand(mConsole, odd);
    mConsole.execute(U"help");
    EXPECT_EQ(mConsole.snapshot().lines()[4].text, U"    " + odd);
}

TEST_F(HelpCommand, CountsTheWordsWithoutTheRedirection)
{
    const test::TemporaryDirectory directory;
    const test::WorkingDirectory here(directory.path());
    mConsole.execute(U"help > out.txt");
    EXPECT_EQ(directory.read("out.txt"), "Registered Commands:\n    alias\n    help\n\nAliases:\n");
    EXPECT_EQ(answer(U"help >").size(), 5U);
}

TEST_F(HelpCommand, MayBeReplaced)
{
    addCommand(mConsole, U"help").onExecute = [](const ConsoleArgs&, Console& c) {
        c.write(U"mine", Output);
    };
    EXPECT_EQ(answer(U"help"), Lines({output("mine")}));
}

TEST_F(HelpCommand, ShowsTheTableOfTheConsoleThatRunsIt)
{
    Console other;
    addCommand(other, U"elsewhere");
    ConsoleCommand* const help = mConsole.lookupCommand(U"help");
    help->execute(ConsoleArgs({U"help"}), other);
    EXPECT_EQ(test::logLines(other),
              Lines({output("Registered Commands:"), output("alias", 4), output("elsewhere", 4),
                     output("help", 4), output(""), output("Aliases:")}));
    EXPECT_EQ(test::logLines(mConsole), Lines());
}

} // namespace
} // namespace zephyr::console
