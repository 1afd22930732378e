#include "support/ConsoleDriver.h"
#include "support/ConsoleFixture.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using test::echo;
using test::output;
using Lines = std::vector<test::LogLine>;
using Stored = std::vector<std::u32string>;

class AliasCommand : public test::ConsoleFixture
{
protected:
    /// The lines that are stored under `name`; one impossible line where there is no such alias.
    Stored stored(const std::u32string& name) const
    {
        const Stored* const lines = mConsole.lookupAlias(name);
        return lines != nullptr ? *lines : Stored{U"(no alias)"};
    }

    std::size_t aliasCount()
    {
        std::size_t count = 0;
        mConsole.forEachAlias([&count](const std::u32string&, const Stored&) { ++count; });
        return count;
    }
};

const Lines kDone = {output("Done.", 4)};

Lines notValid(const std::string& word) { return {output("'" + word + "' is not a valid argument.", 4)}; }

TEST_F(AliasCommand, IsRegisteredUnderItsNameWithoutArguments)
{
    ConsoleCommand* const command = mConsole.lookupCommand(U"alias");
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->name(), U"alias");
    EXPECT_EQ(command->argHandlerCount(), 0U);
    EXPECT_TRUE(command->getAutoCompleteResults(ConsoleArgs({U"alias", U""})).empty());
}

TEST_F(AliasCommand, StoresTheLinesOfTheValue)
{
    EXPECT_EQ(answer(U"alias ll \"help; help\""), kDone);
    EXPECT_EQ(stored(U"ll"), Stored({U"help", U"help"}));
}

TEST_F(AliasCommand, StoresAValueWithoutQuotes)
{
    EXPECT_EQ(answer(U"alias a x"), kDone);
    EXPECT_EQ(stored(U"a"), Stored({U"x"}));
    EXPECT_EQ(answer(U"alias b x;y"), kDone);
    EXPECT_EQ(stored(U"b"), Stored({U"x", U"y"}));
}

TEST_F(AliasCommand, KeepsAnEmptyLineInTheMiddle)
{
    EXPECT_EQ(answer(U"alias x a;;b"), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"a", U"", U"b"}));
}

TEST_F(AliasCommand, DropsTheEmptyLineAfterTheLastSemicolon)
{
    EXPECT_EQ(answer(U"alias x \"a;b;\""), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"a", U"b"}));
}

TEST_F(AliasCommand, KeepsALineOfBlanksAfterTheLastSemicolon)
{
    EXPECT_EQ(answer(U"alias x \"a; \""), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"a", U""}));
}

TEST_F(AliasCommand, KeepsAnEmptyFirstLine)
{
    EXPECT_EQ(answer(U"alias x ;a"), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"", U"a"}));
}

TEST_F(AliasCommand, StoresOneEmptyLineForALoneSemicolon)
{
    EXPECT_EQ(answer(U"alias x a"), kDone);
    EXPECT_EQ(answer(U"alias x ;"), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U""}));
}

TEST_F(AliasCommand, StoresOneEmptyLineForAValueOfBlanks)
{
    EXPECT_EQ(answer(U"alias x \"  \""), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U""}));
}

TEST_F(AliasCommand, TrimsEachLineButNotItsInside)
{
    EXPECT_EQ(answer(U"alias x \"  a  b ;\tc\u00A0;\u3000\uFEFFd\u2028\""), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"a  b", U"c", U"d"}));
}

TEST_F(AliasCommand, RemovesEveryQuoteFromTheValue)
{
    EXPECT_EQ(answer(U"alias x \"say \"hi\"\""), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"say hi"}));
    EXPECT_EQ(answer(U"alias y a\"\"\"\"b\"\"\";c\""), kDone);
    EXPECT_EQ(stored(U"y"), Stored({U"ab", U"c"}));
}

TEST_F(AliasCommand, TrimsAfterTheQuotesAreGone)
{
    EXPECT_EQ(answer(U"alias x \" \"a\" \""), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"a"}));
}

TEST_F(AliasCommand, ReplacesTheLinesOfAnAlias)
{
    EXPECT_EQ(answer(U"alias x \"a; b; c\""), kDone);
    EXPECT_EQ(answer(U"alias x d"), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"d"}));
    EXPECT_EQ(aliasCount(), 1U);
}

TEST_F(AliasCommand, ClearsAnAliasForAnEmptyValue)
{
    answer(U"alias x a");
    answer(U"alias y b");
    EXPECT_EQ(answer(U"alias x \"\""), Lines({output("Cleared alias 'x'", 4)}));
    EXPECT_EQ(mConsole.lookupAlias(U"x"), nullptr);
    EXPECT_EQ(stored(U"y"), Stored({U"b"}));
}

TEST_F(AliasCommand, TakesNothingButQuotesForAnEmptyValue)
{
    answer(U"alias x a");
    EXPECT_EQ(answer(U"alias x \"\"\"\"\""), Lines({output("Cleared alias 'x'", 4)}));
    EXPECT_EQ(aliasCount(), 0U);
}

TEST_F(AliasCommand, TakesAnEmptyWordForAnEmptyValue)
{
    answer(U"alias x a");
    EXPECT_EQ(answer(U"alias x  "), Lines({output("Cleared alias 'x'", 4)}));
}

TEST_F(AliasCommand, HasNothingToClearWhereThereIsNoAlias)
{
    EXPECT_EQ(answer(U"alias x \"\""), Lines({output("x is not an existing alias.  Nothing to do.", 4)}));
    EXPECT_EQ(aliasCount(), 0U);
}

TEST_F(AliasCommand, HasNothingToClearUnderAnotherCase)
{
    answer(U"alias x a");
    EXPECT_EQ(answer(U"alias X \"\""), Lines({output("X is not an existing alias.  Nothing to do.", 4)}));
    EXPECT_EQ(stored(U"x"), Stored({U"a"}));
}

TEST_F(AliasCommand, RejectsTheWordAfterItForAnyOtherNumberOfWords)
{
    EXPECT_EQ(answer(U"alias"), notValid(""));
    EXPECT_EQ(answer(U"alias x"), notValid("x"));
    EXPECT_EQ(answer(U"alias x a b"), notValid("x"));
    EXPECT_EQ(answer(U"alias x \"a b\" "), kDone);
    EXPECT_EQ(answer(U"alias x \"a b\"  "), notValid("x"));
    EXPECT_EQ(aliasCount(), 1U);
}

TEST_F(AliasCommand, ChangesNothingForAnyOtherNumberOfWords)
{
    answer(U"alias x a");
    answer(U"alias x");
    answer(U"alias x b c");
    EXPECT_EQ(stored(U"x"), Stored({U"a"}));
}

TEST_F(AliasCommand, SplitsAValueWhoseInnerQuotesOpenASpace)
{
    EXPECT_EQ(answer(U"alias g \"say \"a b\"\""), notValid("g"));
    EXPECT_EQ(aliasCount(), 0U);
}

TEST_F(AliasCommand, KeepsTheNameExactlyAsTyped)
{
    EXPECT_EQ(answer(U"alias \"a b\" x"), kDone);
    EXPECT_EQ(stored(U"\"a b\""), Stored({U"x"}));
    EXPECT_EQ(answer(U"alias \"\" y"), kDone);
    EXPECT_EQ(stored(U"\"\""), Stored({U"y"}));
    EXPECT_EQ(answer(U"alias <b>%1;A z"), kDone);
    EXPECT_EQ(stored(U"<b>%1;A"), Stored({U"z"}));
    EXPECT_EQ(aliasCount(), 3U);
}

TEST_F(AliasCommand, NamesTheAliasExactlyAsTypedInItsAnswers)
{
    EXPECT_EQ(answer(U"alias <b>%1\" \" \"\""),
              Lines({output("<b>%1\" \" is not an existing alias.  Nothing to do.", 4)}));
    answer(U"alias %n\U0001F600 x");
    EXPECT_EQ(answer(U"alias %n\U0001F600 \"\""), Lines({output("Cleared alias '%n\U0001F600'", 4)}));
    EXPECT_EQ(answer(U"alias <i>"), notValid("<i>"));
}

TEST_F(AliasCommand, TakesTheEmptyName)
{
    EXPECT_EQ(answer(U"alias  unknown"), kDone);
    EXPECT_EQ(stored(U""), Stored({U"unknown"}));
    mConsole.execute(U" ");
    EXPECT_EQ(test::logLines(mConsole, 5),
              Lines({echo(" "), echo("unknown"), output(test::notRecognized("unknown")), output("")}));
    EXPECT_EQ(answer(U"alias  \"\""), Lines({output("Cleared alias ''", 4)}));
}

TEST_F(AliasCommand, TakesANulAndCodePointsThatAreNoCharacters)
{
    const std::u32string name = {U'a', U'\0', char32_t(0xD800)};
    const std::u32string line = {U'b', U'\0', char32_t(0x110000)};
    mConsole.execute(U"alias " + name + U" " + line);
    EXPECT_EQ(stored(name), Stored({line}));
}

TEST_F(AliasCommand, HidesHelpOnceAnAliasHasItsName)
{
    EXPECT_EQ(answer(U"alias help unknown"), kDone);
    mConsole.execute(U"help");
    EXPECT_EQ(test::logLines(mConsole, 5),
              Lines({echo("help"), echo("unknown"), output(test::notRecognized("unknown")), output("")}));
}

TEST_F(AliasCommand, HidesItselfOnceAnAliasHasItsName)
{
    EXPECT_EQ(answer(U"alias alias unknown"), kDone);
    mConsole.execute(U"alias alias \"\"");
    EXPECT_EQ(stored(U"alias"), Stored({U"unknown"}));
}

TEST_F(AliasCommand, MayNameItselfInAStoredLine)
{
    EXPECT_EQ(answer(U"alias x x"), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"x"}));
}

TEST_F(AliasCommand, CutsARedirectionOffFirst)
{
    EXPECT_EQ(answer(U"alias x a > /dev/null"), kDone);
    EXPECT_EQ(stored(U"x"), Stored({U"a"}));
    EXPECT_EQ(answer(U"alias y \"a > f\""), kDone);
    EXPECT_EQ(stored(U"y"), Stored({U"a > f"}));
}

TEST_F(AliasCommand, StoresManyLinesAndLongOnes)
{
    std::u32string value;
    for (int i = 0; i < 10000; ++i) {
        value += U"x;";
    }
    mConsole.execute(U"alias many " + value);
    EXPECT_EQ(stored(U"many"), Stored(10000, U"x"));
    const std::u32string longLine(100000, U'y');
    mConsole.execute(U"alias long " + longLine);
    EXPECT_EQ(stored(U"long"), Stored({longLine}));
}

TEST_F(AliasCommand, CompletesNothing)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("alias x");
    EXPECT_FALSE(user.press(Qt::Key_Tab));
    EXPECT_FALSE(user.press(Qt::Key_Tab));
    EXPECT_EQ(user.input(), "alias x");
}

TEST_F(AliasCommand, EditsTheAliasesOfItsOwnConsoleOnly)
{
    Console other;
    answer(U"alias x a");
    EXPECT_EQ(other.lookupAlias(U"x"), nullptr);
}

} // namespace
} // namespace zephyr::console
