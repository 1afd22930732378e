#include "OffersFixture.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

using namespace std::chrono_literals;

/// Commands `set`, whose argument `gain` is described, and `setup`, and an alias `settle`.
class TheOffers : public OffersFixture
{
protected:
    TheOffers()
    {
        test::ScriptedCommand& set = test::addCompletingCommand(console, U"set", {U"gain", U"speed", U"x"});
        set.registerArgHandler(U"gain", {}, U"How loud it is.", {});
        set.registerArgHandler(U"speed", {}, {}, {});
        test::addCommand(console, U"setup");
        console.execute(U"alias settle \"set gain; set speed\"");
        offers.update(console);
    }

    std::size_t asked = 0; // by addCounting()'s command

    void addCounting(const std::u32string& name, std::chrono::milliseconds duration = 0ms)
    {
        test::addCommand(console, name).onComplete = [this, duration](const ConsoleArgs&) {
            ++asked;
            now += duration;
            return std::vector<std::u32string>{U"one", U"two"};
        };
    }
};

TEST_F(TheOffers, AreNoneOnAnEmptyLine)
{
    EXPECT_EQ(Texts{}, list());
    EXPECT_FALSE(offers.isShown());
    type("s");
    EXPECT_TRUE(offers.isShown());
    press(Qt::Key_Backspace);
    EXPECT_EQ(Texts{}, list());
}

TEST_F(TheOffers, AreTheNamesThatBeginWithTheFirstWord)
{
    type("set");
    EXPECT_EQ((Texts{"set", "settle", "setup"}), list());
    EXPECT_FALSE(offers.areSuggestions());
    EXPECT_EQ(std::nullopt, offers.selected());
    type("t");
    EXPECT_EQ(Texts{"settle"}, list());
}

TEST_F(TheOffers, DescribeACommandByItsArgumentsAndAnAliasByItsLines)
{
    type("set");
    EXPECT_EQ("gain, speed", description(0));
    EXPECT_EQ("set gain; set speed", description(1));
    EXPECT_EQ("", description(2));
}

TEST_F(TheOffers, DescribeWhatRunsWhereAnAliasHasTheNameOfACommand)
{
    console.execute(U"alias set \"help\"");
    type("set");
    EXPECT_EQ("help", description(0));
}

TEST_F(TheOffers, AreNamesWhileTheCursorIsInTheFirstWord)
{
    type("set gain");
    EXPECT_EQ((Texts{"gain", "speed", "x"}), list());
    press(Qt::Key_Home);
    EXPECT_EQ((Texts{"set", "settle", "setup"}), list());
    press(Qt::Key_End);
    EXPECT_EQ((Texts{"gain", "speed", "x"}), list());
}

TEST_F(TheOffers, AreTheCommandsOwnCompletionsBehindItsName)
{
    type("set ");
    EXPECT_EQ((Texts{"gain", "speed", "x"}), list());
    type("nothing of these");
    EXPECT_EQ((Texts{"gain", "speed", "x"}), list()) << "Tab steps through them";
    EXPECT_EQ("How loud it is.", description(0));
    EXPECT_EQ("", description(1)) << "an argument without a description";
    EXPECT_EQ("", description(2)) << "no argument";
}

TEST_F(TheOffers, AreNoneForACommandWithoutCompletions)
{
    type("setup ");
    EXPECT_EQ(Texts{}, list());
}

TEST_F(TheOffers, AreNoneBehindAnAlias)
{
    type("settle ");
    EXPECT_EQ(Texts{}, list());
}

TEST_F(TheOffers, AreNoneWhereTheLineBeginsWithASpace)
{
    type(" s");
    EXPECT_EQ(Texts{}, list());
    press(Qt::Key_Home);
    EXPECT_EQ(Texts{}, list());
}

TEST_F(TheOffers, SuggestWhatMayHaveBeenMeant)
{
    type("stup");
    EXPECT_EQ(Texts{"setup"}, list());
    EXPECT_TRUE(offers.areSuggestions());
    type(" a");
    EXPECT_EQ(Texts{"setup"}, list());
    EXPECT_TRUE(offers.areSuggestions());
}

TEST_F(TheOffers, SuggestNothingWhereNothingIsClose)
{
    type("frobnicate");
    EXPECT_EQ(Texts{}, list());
}

TEST_F(TheOffers, LeaveNoTraceInTheLog)
{
    const std::size_t before = console.logSize();
    type("stup");
    tab();
    press(Qt::Key_Home);
    type("set gain");
    EXPECT_EQ(before, console.logSize());
    EXPECT_TRUE(caught.empty());
}

TEST_F(TheOffers, ComeFromHostCodeOnceForEachLine)
{
    addCounting(U"count");
    type("count");
    EXPECT_EQ(0U, asked);
    type(" ");
    EXPECT_EQ(1U, asked);
    offers.update(console);
    press(Qt::Key_Left);
    press(Qt::Key_Right);
    offers.update(console);
    EXPECT_EQ(2U, asked) << "behind the name again";
    type("o");
    EXPECT_EQ(3U, asked);
    press(Qt::Key_Left);
    press(Qt::Key_Right);
    EXPECT_EQ(3U, asked);
}

TEST_F(TheOffers, AskACommandThatTookLongOnlyForTab)
{
    addCounting(U"slow", 31ms);
    type("slow ");
    EXPECT_EQ((Texts{"one", "two"}), list());
    EXPECT_EQ(1U, asked);
    type("o");
    EXPECT_EQ(Texts{}, list());
    EXPECT_EQ(1U, asked);
    tab();
    EXPECT_EQ("slow one", line());
    EXPECT_EQ((Texts{"one", "two"}), list());
    EXPECT_EQ("one", selected());
    EXPECT_EQ(3U, asked) << "by the console, and for the list";
    tab();
    EXPECT_EQ("two", selected());
    EXPECT_EQ(3U, asked);
}

TEST_F(TheOffers, FollowALineThatChangedWithoutThem)
{
    test::ConsoleDriver driver(console);
    driver.type("set");
    EXPECT_EQ(Texts{}, list());
    offers.update(console);
    EXPECT_EQ((Texts{"set", "settle", "setup"}), list());
    console.execute(U"help");
    offers.update(console);
    EXPECT_EQ(Texts{}, list());
}

TEST_F(TheOffers, FollowTheTablesFromOneLineToTheNext)
{
    type("s");
    press(Qt::Key_Backspace);
    test::addCommand(console, U"seven");
    console.unregisterCommand(U"set");
    type("se");
    EXPECT_EQ((Texts{"settle", "setup", "seven"}), list());
}

TEST_F(TheOffers, ArePutAwayUntilTheLineChanges)
{
    type("set");
    offers.dismiss();
    EXPECT_FALSE(offers.isShown());
    offers.update(console);
    press(Qt::Key_Left);
    press(Qt::Key_PageUp);
    EXPECT_FALSE(offers.isShown());
    press(Qt::Key_Right);
    type("t");
    EXPECT_EQ(Texts{"settle"}, list());
}

TEST_F(TheOffers, ComeBackWithTab)
{
    type("set gain");
    offers.dismiss();
    tab();
    EXPECT_EQ("set gain", line());
    EXPECT_EQ("gain", selected());
    EXPECT_TRUE(offers.isShown());
}

TEST_F(TheOffers, AreNoneWhileTheConsoleIsClosed)
{
    type("set");
    press(Qt::Key_QuoteLeft);
    EXPECT_FALSE(console.isOpen());
    EXPECT_EQ(Texts{}, list());
    type("s");
    EXPECT_EQ(Texts{}, list());
    press(Qt::Key_QuoteLeft);
    EXPECT_TRUE(console.isOpen());
    EXPECT_EQ(Texts{}, list());
    type("set");
    EXPECT_EQ((Texts{"set", "settle", "setup"}), list());
    console.close();
    offers.update(console);
    EXPECT_EQ(Texts{}, list());
}

TEST_F(TheOffers, AreGoneOnceTheLineRan)
{
    type("set gain");
    press(Qt::Key_Return);
    EXPECT_EQ("", line());
    EXPECT_EQ(Texts{}, list());
}

TEST_F(TheOffers, AreGoneThoughTheLineStaysAsItsCommandThrew)
{
    test::addCompletingCommand(console, U"fail", {U"a"}).onExecute = [](const ConsoleArgs&, Console&) {
        throw 42;
    };
    type("fail a");
    EXPECT_EQ(Texts{"a"}, list());
    press(Qt::Key_Return);
    EXPECT_EQ("fail a", line());
    EXPECT_EQ(Texts{}, list());
    type("b");
    EXPECT_EQ(Texts{"a"}, list());
}

TEST_F(TheOffers, HoldAHundredThousandCandidates)
{
    std::vector<std::u32string> many(100000, U"same");
    many.back() = U"last";
    test::addCompletingCommand(console, U"many", std::move(many));
    type("many ");
    EXPECT_EQ(100000U, offers.count());
    backtab();
    EXPECT_EQ("many last", line());
    EXPECT_EQ(99999U, offers.selected());
    pick(1);
    EXPECT_EQ("many same", line());
    EXPECT_EQ(1U, offers.selected());
}

TEST_F(TheOffers, FitALineLongerThanTheBuffer)
{
    test::addCompletingCommand(console, U"long", {std::u32string(3000, U'x'), U"y"});
    type("long ");
    tab();
    EXPECT_EQ(2048U, console.activeInput().size());
    EXPECT_EQ(0U, offers.selected());
    tab();
    EXPECT_EQ("long y", line());
    EXPECT_EQ(1U, offers.selected());
}

} // namespace
} // namespace zephyr::console::qt
