#include "OffersFixture.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

/// Commands `cmd` with completions, `set` and `setup` without, and an alias `settle`.
class TheOffersKeys : public OffersFixture
{
protected:
    TheOffersKeys()
    {
        test::addCompletingCommand(console, U"cmd", {U"alpha", U"beta", U"gamma"});
        test::addCommand(console, U"set");
        test::addCommand(console, U"setup");
        console.execute(U"alias settle \"set gain; set speed\"");
        offers.update(console);
    }
};

using InTheConsole = TheOffersKeys;

TEST_F(InTheConsole, TabStepsThroughTheCandidatesOfTheList)
{
    type("cmd a");
    tab();
    EXPECT_EQ("cmd alpha", line());
    EXPECT_EQ((Texts{"alpha", "beta", "gamma"}), list());
    EXPECT_EQ("alpha", selected());
    tab();
    EXPECT_EQ("cmd beta", line());
    EXPECT_EQ("beta", selected());
    backtab();
    backtab();
    EXPECT_EQ("cmd gamma", line());
    EXPECT_EQ("gamma", selected());
}

TEST_F(InTheConsole, TabPassesWithItsModifiersAndItsText)
{
    type("cmd a");
    std::vector<int> pressed;
    offers.pressKey(console, Qt::Key_Backtab, Qt::ShiftModifier, U"",
                    [&](int key, int modifiers, const std::u32string&) {
                        pressed.insert(pressed.end(), {key, modifiers});
                        console.keyPressed(key, modifiers, {});
                    });
    EXPECT_EQ((std::vector<int>{Qt::Key_Backtab, Qt::ShiftModifier}), pressed);
    EXPECT_EQ("gamma", selected());
}

TEST_F(InTheConsole, ACompletionGoesOnAfterTheCursorMoved)
{
    type("cmd ");
    tab();
    press(Qt::Key_Left);
    EXPECT_EQ("alpha", selected());
    press(Qt::Key_Home);
    EXPECT_EQ((Texts{"alpha", "beta", "gamma"}), list()) << "what Tab steps through";
    tab();
    EXPECT_EQ("cmd beta", line());
    EXPECT_EQ("beta", selected());
}

TEST_F(InTheConsole, ACompletionGoesOnAfterALineRanAndAnotherWasRecalled)
{
    type("set x");
    press(Qt::Key_Return);
    type("cmd a");
    tab();
    press(Qt::Key_Return);
    EXPECT_EQ(Texts{}, list());
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ("set x", line());
    EXPECT_EQ((Texts{"alpha", "beta", "gamma"}), list());
    EXPECT_EQ(std::nullopt, offers.selected());
    tab();
    EXPECT_EQ("cmd beta", line());
    EXPECT_EQ("beta", selected());
}

TEST_F(InTheConsole, ACompletionEndsWithAnInsertionOrAnErasure)
{
    type("cmd ");
    tab();
    type("x");
    EXPECT_EQ(std::nullopt, offers.selected());
    tab();
    EXPECT_EQ("cmd alpha", line());
    tab();
    press(Qt::Key_Backspace);
    tab();
    EXPECT_EQ("cmd alpha", line());
    EXPECT_EQ("alpha", selected());
}

TEST_F(InTheConsole, NothingHappensOnAnEmptyLine)
{
    tab();
    backtab();
    EXPECT_EQ("", line());
    EXPECT_EQ(Texts{}, list());
}

TEST_F(InTheConsole, ArrowsRecallAndNeverMoveInTheList)
{
    type("set x");
    press(Qt::Key_Return);
    type("cmd ");
    press(Qt::Key_Up);
    EXPECT_EQ("set x", line());
    press(Qt::Key_Down);
    EXPECT_EQ("", line());
    EXPECT_EQ(std::nullopt, offers.selected());
}

TEST_F(InTheConsole, EnterRunsTheLineAsItStands)
{
    std::vector<std::u32string> ran;
    test::addCompletingCommand(console, U"go", {U"north", U"south"}).onExecute =
        [&](const ConsoleArgs& args, Console&) { ran = test::wordsOf(args); };
    type("go no");
    press(Qt::Key_Return);
    EXPECT_EQ((std::vector<std::u32string>{U"go", U"no"}), ran);
}

TEST_F(InTheConsole, ACandidateIsPicked)
{
    type("cmd a");
    pick(2);
    EXPECT_EQ("cmd gamma|", lineAndCursor());
    EXPECT_EQ("gamma", selected());
    pick(1);
    EXPECT_EQ("cmd beta", line());
    pick(1);
    EXPECT_EQ("cmd beta", line());
    tab();
    EXPECT_EQ("cmd gamma", line());
    pick(0);
    EXPECT_EQ("cmd alpha", line());
    pick(3);
    EXPECT_EQ("cmd alpha", line()) << "there is no such offer";
}

TEST_F(InTheConsole, ACandidateIsPickedForALineThatWasRecalled)
{
    type("cmd beta");
    press(Qt::Key_Return);
    type("cmd ");
    tab();
    press(Qt::Key_Up);
    EXPECT_EQ("cmd beta", line());
    for (const std::size_t index : {0, 1, 2, 0}) {
        pick(index);
        EXPECT_EQ(index, offers.selected());
    }
    EXPECT_EQ("cmd alpha", line());
}

TEST_F(InTheConsole, NothingIsPickedFromAListThatIsPutAway)
{
    type("cmd a");
    offers.dismiss();
    pick(0);
    EXPECT_EQ("cmd a", line());
}

using BehindAName = TheOffersKeys;

TEST_F(BehindAName, TabTypesTheSpaceFirst)
{
    type("cmd");
    tab();
    EXPECT_EQ("cmd alpha|", lineAndCursor());
    EXPECT_EQ((Texts{"alpha", "beta", "gamma"}), list());
    EXPECT_EQ("alpha", selected());
    tab();
    EXPECT_EQ("cmd beta", line());
}

TEST_F(BehindAName, BacktabTypesTheSpaceFirst)
{
    type("cmd");
    backtab();
    EXPECT_EQ("cmd gamma", line());
    EXPECT_EQ("gamma", selected());
}

TEST_F(BehindAName, TabTypesTheSpaceAtTheEndWhereverTheCursorIs)
{
    type("cmd");
    press(Qt::Key_Left);
    tab();
    EXPECT_EQ("cmd alpha", line());
}

TEST_F(BehindAName, TabStepsThroughTheNamesIfTheCommandHasNoCompletions)
{
    type("set");
    tab();
    EXPECT_EQ("settle|", lineAndCursor());
    EXPECT_EQ((Texts{"set", "settle", "setup"}), list());
    EXPECT_EQ("settle", selected());
    backtab();
    EXPECT_EQ("set", line());
    EXPECT_EQ("set", selected());
}

TEST_F(BehindAName, TabAddsASpaceIfThereIsNothingElseToDo)
{
    type("setup");
    tab();
    EXPECT_EQ("setup |", lineAndCursor());
}

TEST_F(BehindAName, ACompletionInProgressGoesOn)
{
    type("set x");
    press(Qt::Key_Return);
    console.addToHistory(U"cmd");
    type("cmd a");
    tab();
    press(Qt::Key_Up);
    EXPECT_EQ("cmd", line());
    tab();
    EXPECT_EQ("cmd beta", line());
    EXPECT_EQ("beta", selected());
}

TEST_F(BehindAName, AFullLineIsLeftAlone)
{
    const std::u32string name(2048, U'n');
    test::addCompletingCommand(console, name, {U"a"});
    press(0, Qt::NoModifier, name);
    ASSERT_EQ(name, console.activeInput());
    tab();
    EXPECT_EQ(name, console.activeInput());
}

using InTheFirstWord = TheOffersKeys;

TEST_F(InTheFirstWord, TabStepsThroughTheNames)
{
    type("se");
    tab();
    EXPECT_EQ("set|", lineAndCursor());
    EXPECT_EQ((Texts{"set", "settle", "setup"}), list());
    EXPECT_EQ("set", selected());
    tab();
    EXPECT_EQ("settle|", lineAndCursor());
    tab();
    tab();
    EXPECT_EQ("set|", lineAndCursor());
    backtab();
    EXPECT_EQ("setup|", lineAndCursor());
    EXPECT_EQ("setup", selected());
}

TEST_F(InTheFirstWord, BacktabBeginsAtTheEnd)
{
    type("se");
    backtab();
    EXPECT_EQ("setup", line());
}

TEST_F(InTheFirstWord, TabKeepsTheRestOfTheLine)
{
    type("se  gain ");
    press(Qt::Key_Home);
    tab();
    EXPECT_EQ("set|  gain ", lineAndCursor());
    tab();
    EXPECT_EQ("settle|  gain ", lineAndCursor());
}

TEST_F(InTheFirstWord, TheOnlyNameGetsASpace)
{
    type("he");
    tab();
    EXPECT_EQ("help |", lineAndCursor());
    type("cmd");
    EXPECT_EQ("help cmd", line());
}

TEST_F(InTheFirstWord, ASpaceTypedByHabitIsNoSecondOne)
{
    type("he");
    tab();
    type(" ");
    EXPECT_EQ("help |", lineAndCursor());
    type(" ");
    EXPECT_EQ("help  |", lineAndCursor());
}

TEST_F(InTheFirstWord, ASpaceElsewhereIsTyped)
{
    type("he");
    tab();
    press(Qt::Key_Left);
    press(Qt::Key_Right);
    type(" ");
    EXPECT_EQ("help  |", lineAndCursor());
}

TEST_F(InTheFirstWord, TheNextTabCompletesTheArguments)
{
    type("cm");
    tab();
    EXPECT_EQ("cmd |", lineAndCursor());
    EXPECT_EQ((Texts{"alpha", "beta", "gamma"}), list());
    tab();
    EXPECT_EQ("cmd alpha", line());
}

TEST_F(InTheFirstWord, AnAliasIsCompletedToo)
{
    type("sett");
    tab();
    EXPECT_EQ("settle |", lineAndCursor());
    tab();
    EXPECT_EQ("settle |", lineAndCursor()) << "its arguments are nobody's";
}

TEST_F(InTheFirstWord, AnyOtherKeyEndsTheStepping)
{
    type("se");
    tab();
    tab();
    EXPECT_EQ("settle", line());
    press(Qt::Key_Left);
    EXPECT_EQ((Texts{"settle"}), list());
    press(Qt::Key_Right);
    tab();
    EXPECT_EQ("settle |", lineAndCursor()) << "the only one that fits";
}

TEST_F(InTheFirstWord, PuttingTheListAwayEndsTheStepping)
{
    type("se");
    tab();
    offers.dismiss();
    EXPECT_FALSE(offers.isShown());
    tab();
    EXPECT_EQ("settle", line());
    EXPECT_EQ((Texts{"set", "settle", "setup"}), list());
}

TEST_F(InTheFirstWord, SuggestionsAreSteppedThroughToo)
{
    test::addCommand(console, U"stop");
    test::addCommand(console, U"step");
    type("stpo now");
    EXPECT_EQ((Texts{"stop"}), list());
    tab();
    EXPECT_EQ("stop| now", lineAndCursor());
    press(Qt::Key_Home);
    press(Qt::Key_Delete, Qt::ControlModifier);
    type("sttp ");
    EXPECT_EQ((Texts{"step", "stop"}), list());
    EXPECT_TRUE(offers.areSuggestions());
    tab();
    EXPECT_EQ("step| now", lineAndCursor());
    EXPECT_EQ("step", selected());
    EXPECT_TRUE(offers.areSuggestions());
    tab();
    EXPECT_EQ("stop| now", lineAndCursor());
    tab();
    EXPECT_EQ("step| now", lineAndCursor());
    type("x");
    EXPECT_EQ("stepx| now", lineAndCursor());
    EXPECT_EQ(Texts{"step"}, list());
    EXPECT_EQ(std::nullopt, offers.selected());
}

TEST_F(InTheFirstWord, ASingleSuggestionGetsNoSpace)
{
    type("hlp");
    tab();
    EXPECT_EQ("help|", lineAndCursor());
}

TEST_F(InTheFirstWord, NothingHappensWhereNothingFits)
{
    type("frobnicate");
    tab();
    EXPECT_EQ("frobnicate|", lineAndCursor());
    type(" x");
    tab();
    EXPECT_EQ("frobnicate x|", lineAndCursor());
}

TEST_F(InTheFirstWord, TabSeesACommandThatIsNew)
{
    type("se");
    test::addCommand(console, U"seal");
    tab();
    EXPECT_EQ("seal", line());
    EXPECT_EQ((Texts{"seal", "set", "settle", "setup"}), list());
}

TEST_F(InTheFirstWord, ANameIsPicked)
{
    type("se gain");
    press(Qt::Key_Home);
    pick(2);
    EXPECT_EQ("setup| gain", lineAndCursor());
    EXPECT_EQ("setup", selected());
    pick(0);
    EXPECT_EQ("set| gain", lineAndCursor());
    tab();
    EXPECT_EQ("settle| gain", lineAndCursor());
}

TEST_F(InTheFirstWord, TheOnlyNameIsPickedWithItsSpace)
{
    type("he");
    pick(0);
    EXPECT_EQ("help |", lineAndCursor());
}

TEST_F(InTheFirstWord, StandingOfNamesDoesNotOutliveTheLine)
{
    type("se");
    tab();
    console.execute(U"help");
    test::ConsoleDriver(console).type("he");
    tab();
    EXPECT_EQ("help |", lineAndCursor());
}

} // namespace
} // namespace zephyr::console::qt
