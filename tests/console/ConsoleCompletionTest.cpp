#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/KeyTable.h"
#include "support/ScriptedCommand.h"
#include "support/SeenLine.h"
#include "zephyr/console/Console.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using namespace test;
using Words = std::vector<std::u32string>;

/// What pressing Tab or Backtab does: the line, with the cursor at its end, and whether the key was consumed.
struct Completed
{
    std::string line;
    bool consumed;

    friend bool operator==(const Completed&, const Completed&) = default;

    friend std::ostream& operator<<(std::ostream& out, const Completed& completed)
    {
        return out << '"' << completed.line << '"' << (completed.consumed ? " consumed" : " not consumed");
    }
};

class ConsoleCompletion : public testing::Test
{
protected:
    ConsoleCompletion() { mConsole.open(); }

    Completed tab() { return complete(KeyTab); }

    Completed backtab() { return complete(KeyBacktab); }

    /// The line that Tab makes of a freshly typed one.
    std::string completed(const std::string& typed)
    {
        mConsole.open();
        mDriver.type(typed);
        const Completed result = tab();
        EXPECT_FALSE(result.consumed);
        return result.line;
    }

    /// A Tab that neither changes the line nor is consumed.
    void expectNothingCompleted(const std::string& typed)
    {
        mConsole.open();
        mDriver.type(typed);
        mDriver.press(KeyLeft);
        const SeenLine before = inputLine(mConsole);
        EXPECT_FALSE(mDriver.press(KeyTab));
        EXPECT_EQ(inputLine(mConsole), before);
        EXPECT_FALSE(mDriver.press(KeyBacktab));
        EXPECT_EQ(inputLine(mConsole), before);
    }

    void addCmd(const Words& candidates = {U"alpha", U"beta"})
    {
        addCompletingCommand(mConsole, U"cmd", candidates);
    }

    /// Registers cmd so that it keeps the words of each question.
    void addAskedCmd()
    {
        addCommand(mConsole, U"cmd").onComplete = [this](const ConsoleArgs& args) {
            mAsked.push_back(wordsOf(args));
            return Words{U"alpha", U"beta"};
        };
    }

    Console mConsole;
    ConsoleDriver mDriver{mConsole};
    std::vector<Words> mAsked;

private:
    Completed complete(int key)
    {
        const bool consumed = mDriver.press(key);
        EXPECT_EQ(mConsole.cursorPosition(), mConsole.activeInput().size());
        return {mDriver.input(), consumed};
    }
};

TEST_F(ConsoleCompletion, TabGoesThroughTheCandidatesAndBacktabGoesBack)
{
    addCmd();
    mDriver.type("cmd a");
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
    EXPECT_EQ(tab(), (Completed{"cmd beta", true}));
    EXPECT_EQ(tab(), (Completed{"cmd alpha", true}));
    EXPECT_EQ(backtab(), (Completed{"cmd beta", true}));
}

TEST_F(ConsoleCompletion, BacktabStartsAtTheLastCandidate)
{
    addCmd({U"alpha", U"beta", U"gamma"});
    mDriver.type("cmd a");
    EXPECT_EQ(backtab(), (Completed{"cmd gamma", false}));
    EXPECT_EQ(backtab(), (Completed{"cmd beta", true}));
    EXPECT_EQ(backtab(), (Completed{"cmd alpha", true}));
    EXPECT_EQ(backtab(), (Completed{"cmd gamma", true}));
    EXPECT_EQ(tab(), (Completed{"cmd alpha", true}));
    EXPECT_EQ(tab(), (Completed{"cmd beta", true}));
}

TEST_F(ConsoleCompletion, ASingleCandidateComesAgainAndAgain)
{
    addCmd({U"alpha"});
    mDriver.type("cmd a");
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
    EXPECT_EQ(tab(), (Completed{"cmd alpha", true}));
    EXPECT_EQ(backtab(), (Completed{"cmd alpha", true}));
}

TEST_F(ConsoleCompletion, CompletesANewWordAfterATrailingSpace)
{
    addCmd();
    EXPECT_EQ(completed("cmd "), "cmd alpha");
    EXPECT_EQ(completed("cmd a "), "cmd a alpha");
}

TEST_F(ConsoleCompletion, TellsTheCommandOfATrailingSpace)
{
    std::vector<bool> blanks;
    ScriptedCommand& command = addCommand(mConsole, U"cmd");
    command.onComplete = [&](const ConsoleArgs& args) {
        blanks.push_back(args.endsWithBlank());
        return Words();
    };
    command.onExecute = [&](const ConsoleArgs& args, Console&) { blanks.push_back(args.endsWithBlank()); };
    for (const char* line : {"cmd", "cmd ", "cmd a", "cmd a ", "cmd a  ", "cmd \"a "}) {
        expectNothingCompleted(line);
        blanks.pop_back(); // Tab and Backtab ask alike
    }
    EXPECT_EQ(blanks, (std::vector<bool>{false, true, false, true, true, true}));
    mConsole.execute(U"cmd a ");
    EXPECT_FALSE(blanks.back());
}

TEST_F(ConsoleCompletion, ReplacesTheCommandWordWhenItStandsAlone)
{
    addCmd();
    mDriver.type("cmd");
    EXPECT_EQ(tab(), (Completed{" alpha", false}));
    EXPECT_EQ(tab(), (Completed{" beta", true}));
}

TEST_F(ConsoleCompletion, KeepsEverySpaceBetweenTheWordsBefore)
{
    addCmd();
    EXPECT_EQ(completed("cmd  x  y"), "cmd  x  alpha");
    EXPECT_EQ(completed("cmd  "), "cmd  alpha");
    EXPECT_EQ(completed("cmd   "), "cmd   alpha");
}

TEST_F(ConsoleCompletion, ReplacesTheLastWordWholeWhateverItIs)
{
    addCmd();
    EXPECT_EQ(completed("cmd zzz"), "cmd alpha");
    EXPECT_EQ(completed("cmd x zzz"), "cmd x alpha");
}

TEST_F(ConsoleCompletion, TakesACandidateAsItIs)
{
    addCmd({U"two words", U"", U"\u00FC\U0001F680"});
    mDriver.type("cmd a");
    EXPECT_EQ(tab().line, "cmd two words");
    EXPECT_EQ(tab().line, "cmd ");
    EXPECT_EQ(tab().line, "cmd \u00FC\U0001F680");
    EXPECT_EQ(mConsole.cursorPosition(), 6U);
}

TEST_F(ConsoleCompletion, CompletesTheEndOfTheLineWhereverTheCursorIs)
{
    addCmd();
    mDriver.type("cmd x a");
    mDriver.press(KeyHome);
    EXPECT_EQ(tab().line, "cmd x alpha");
}

TEST_F(ConsoleCompletion, CompletesALineOfTheCommandUnderTheEmptyName)
{
    addCompletingCommand(mConsole, U"", {U"alpha"});
    EXPECT_EQ(completed(" x"), " alpha");
    EXPECT_EQ(completed(" "), " alpha");
}

TEST_F(ConsoleCompletion, NothingIsCompletedWithoutACommand)
{
    addCmd();
    expectNothingCompleted("");
    expectNothingCompleted(" ");
    expectNothingCompleted("nosuch a");
    expectNothingCompleted("cm");
    expectNothingCompleted("CMD a");
    expectNothingCompleted(" cmd a");
    expectNothingCompleted("\"cmd\" a");
}

TEST_F(ConsoleCompletion, AnAliasIsNotCompleted)
{
    addCmd();
    mConsole.execute(U"alias short cmd");
    ASSERT_NE(mConsole.lookupAlias(U"short"), nullptr);
    expectNothingCompleted("short a");
}

TEST_F(ConsoleCompletion, ACommandIsCompletedThoughAnAliasHidesIt)
{
    addCmd();
    mConsole.execute(U"alias cmd help");
    ASSERT_NE(mConsole.lookupAlias(U"cmd"), nullptr);
    EXPECT_EQ(completed("cmd a"), "cmd alpha");
}

TEST_F(ConsoleCompletion, TheBuiltInCommandsCompleteNothing)
{
    expectNothingCompleted("help a");
    expectNothingCompleted("alias a");
}

TEST_F(ConsoleCompletion, ACommandWithoutCandidatesIsAskedEachTime)
{
    int asked = 0;
    addCommand(mConsole, U"cmd").onComplete = [&asked](const ConsoleArgs&) {
        ++asked;
        return asked < 3 ? Words() : Words{U"late"};
    };
    mDriver.type("cmd a");
    EXPECT_EQ(tab(), (Completed{"cmd a", false}));
    EXPECT_EQ(tab(), (Completed{"cmd a", false}));
    EXPECT_EQ(tab(), (Completed{"cmd late", false}));
    EXPECT_EQ(tab(), (Completed{"cmd late", true}));
    EXPECT_EQ(asked, 3);
}

TEST_F(ConsoleCompletion, TheCommandIsAskedOnceForAList)
{
    addAskedCmd();
    mDriver.type("cmd a");
    tab();
    tab();
    backtab();
    EXPECT_EQ(mAsked, (std::vector<Words>{{U"cmd", U"a"}}));
}

TEST_F(ConsoleCompletion, TheCommandSeesTheWordsOfTheLine)
{
    addAskedCmd();
    for (const char* line : {"cmd", "cmd ", "cmd  a", "cmd \"a b", "cmd a > file", "cmd >! file x"}) {
        completed(line);
    }
    EXPECT_EQ(
        mAsked,
        (std::vector<Words>{
            {U"cmd"}, {U"cmd"}, {U"cmd", U"", U"a"}, {U"cmd", U"\"a", U"b"}, {U"cmd", U"a"}, {U"cmd"}}));
}

TEST_F(ConsoleCompletion, CompletesTheRedirectTarget)
{
    addCmd();
    EXPECT_EQ(completed("cmd a > fi"), "cmd a > alpha");
}

TEST_F(ConsoleCompletion, SplitsAtSpacesInQuotesToo)
{
    addCmd();
    EXPECT_EQ(completed("cmd \"a b\""), "cmd \"a alpha");
    EXPECT_EQ(completed("cmd \"a b"), "cmd \"a alpha");
}

TEST_F(ConsoleCompletion, AMaskedSpaceOfARecalledLineStaysMasked)
{
    addAskedCmd();
    mDriver.type("cmd \"a b\" c\n");
    mDriver.press(KeyUp);
    EXPECT_EQ(tab().line, "cmd \"a\uFFFFb\" alpha");
    EXPECT_EQ(mAsked, (std::vector<Words>{{U"cmd", U"\"a\uFFFFb\"", U"c"}}));
}

// How long a list lives

TEST_F(ConsoleCompletion, TypingEndsTheList)
{
    addAskedCmd();
    mDriver.type("cmd a");
    tab();
    mDriver.type(" x");
    EXPECT_EQ(tab(), (Completed{"cmd alpha alpha", false}));
    EXPECT_EQ(mAsked, (std::vector<Words>{{U"cmd", U"a"}, {U"cmd", U"alpha", U"x"}}));
}

TEST_F(ConsoleCompletion, PastingEndsTheList)
{
    addAskedCmd();
    mDriver.type("cmd a");
    tab();
    QGuiApplication::clipboard()->setText(QStringLiteral("x"));
    mDriver.press(KeyV, kControl);
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
    EXPECT_EQ(mAsked, (std::vector<Words>{{U"cmd", U"a"}, {U"cmd", U"alphax"}}));
}

TEST_F(ConsoleCompletion, AnErasureEndsTheList)
{
    addAskedCmd();
    mDriver.type("cmd a");
    tab();
    mDriver.press(KeyBackspace);
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
    mDriver.press(KeyLeft);
    mDriver.press(KeyDelete);
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
    EXPECT_EQ(mAsked, (std::vector<Words>{{U"cmd", U"a"}, {U"cmd", U"alph"}, {U"cmd", U"alph"}}));
}

TEST_F(ConsoleCompletion, AnErasureOfAWordEndsTheList)
{
    addAskedCmd();
    mDriver.type("cmd a");
    tab();
    mDriver.press(KeyBackspace, kControl);
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
    mDriver.press(KeyLeft, kControl);
    mDriver.press(KeyDelete, kControl);
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
    EXPECT_EQ(mAsked, (std::vector<Words>{{U"cmd", U"a"}, {U"cmd"}, {U"cmd"}}));
}

TEST_F(ConsoleCompletion, AnErasureThatErasesNothingKeepsTheList)
{
    addCmd();
    mDriver.type("cmd a");
    tab();
    mDriver.press(KeyDelete);
    mDriver.press(KeyDelete, kControl);
    EXPECT_EQ(tab(), (Completed{"cmd beta", true}));
    mDriver.press(KeyHome);
    mDriver.press(KeyBackspace);
    mDriver.press(KeyBackspace, kControl);
    EXPECT_EQ(tab(), (Completed{"cmd alpha", true}));
}

TEST_F(ConsoleCompletion, PastingNothingKeepsTheList)
{
    addCmd();
    mDriver.type("cmd a");
    tab();
    QGuiApplication::clipboard()->clear();
    mDriver.press(KeyV, kControl);
    EXPECT_EQ(tab(), (Completed{"cmd beta", true}));
}

TEST_F(ConsoleCompletion, MovingTheCursorKeepsTheList)
{
    addCmd();
    mDriver.type("cmd a");
    EXPECT_EQ(tab().line, "cmd alpha");
    std::string expected = "cmd beta";
    for (const int key : {KeyLeft, KeyRight, KeyHome, KeyEnd}) {
        for (const int modifiers : {0, kControl}) {
            mDriver.press(key, modifiers);
            EXPECT_EQ(tab(), (Completed{expected, true})) << key;
            expected = expected == "cmd beta" ? "cmd alpha" : "cmd beta";
        }
    }
}

TEST_F(ConsoleCompletion, PagingAndKeysThatTypeNothingKeepTheList)
{
    addCmd();
    mDriver.type("cmd a");
    tab();
    for (const int key : {KeyPageUp, KeyPageDown, KeyEscape, KeyA}) {
        mDriver.press(key);
    }
    EXPECT_EQ(tab(), (Completed{"cmd beta", true}));
}

TEST_F(ConsoleCompletion, RecallingALineKeepsTheListAndItsBase)
{
    addCmd();
    mDriver.type("nosuch\ncmd x a");
    tab();
    mDriver.press(KeyUp);
    EXPECT_EQ(mDriver.input(), "nosuch");
    EXPECT_EQ(tab(), (Completed{"cmd x beta", true}));
    mDriver.press(KeyDown);
    EXPECT_EQ(mDriver.input(), "");
    EXPECT_EQ(tab(), (Completed{"cmd x alpha", true}));
}

TEST_F(ConsoleCompletion, SubmittingKeepsTheListAndItsBase)
{
    addCmd();
    mDriver.type("cmd x a");
    tab();
    mDriver.press(KeyReturn);
    EXPECT_EQ(mDriver.input(), "");
    EXPECT_EQ(tab(), (Completed{"cmd x beta", true}));
}

TEST_F(ConsoleCompletion, ClosingAndOpeningKeepsTheListAndItsBase)
{
    addCmd();
    mDriver.type("cmd x a");
    tab();
    mDriver.press(KeyBackQuote);
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(tab(), (Completed{"cmd x beta", true}));
}

TEST_F(ConsoleCompletion, ALineOfTheHostKeepsTheListAndItsBase)
{
    addCmd();
    mDriver.type("cmd x a");
    tab();
    mConsole.execute(U"nosuch");
    EXPECT_EQ(mDriver.input(), "");
    EXPECT_EQ(tab(), (Completed{"cmd x beta", true}));
}

TEST_F(ConsoleCompletion, AListOutlivesItsCommand)
{
    addCmd();
    mDriver.type("cmd x a");
    tab();
    mConsole.shutdown();
    EXPECT_EQ(tab(), (Completed{"cmd x beta", true}));
    mDriver.press(KeyBackspace);
    EXPECT_EQ(tab(), (Completed{"cmd x bet", false}));
}

TEST_F(ConsoleCompletion, CompletingNeverChangesTheBufferSize)
{
    addCmd({U"a", U"a longer candidate"});
    mDriver.type("cmd ");
    for (int i = 0; i < 4; ++i) {
        tab();
        EXPECT_EQ(inputBuffer(mConsole).size(), 2048U);
    }
}

TEST_F(ConsoleCompletion, ACompletedLineCanBeEditedAndRun)
{
    std::vector<Words> ran;
    ScriptedCommand& cmd = addCompletingCommand(mConsole, U"cmd", {U"alpha", U"beta"});
    cmd.onExecute = [&ran](const ConsoleArgs& args, Console&) { ran.push_back(wordsOf(args)); };
    mDriver.type("cmd ");
    tab();
    mDriver.type("s\n");
    EXPECT_EQ(ran, (std::vector<Words>{{U"cmd", U"alphas"}}));
}

TEST_F(ConsoleCompletion, NothingIsLogged)
{
    addCmd();
    mDriver.type("cmd a");
    tab();
    tab();
    EXPECT_EQ(mDriver.log(), std::vector<std::string>());
}

// The command's side

TEST_F(ConsoleCompletion, NoLockIsHeldWhileACommandCompletes)
{
    addCommand(mConsole, U"cmd").onComplete = [this](const ConsoleArgs&) {
        EXPECT_NO_THROW(mConsole.snapshot());
        EXPECT_NO_THROW(mConsole.write(U"asked", Output));
        return Words{U"alpha"};
    };
    mDriver.type("cmd a");
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
    EXPECT_EQ(mDriver.log(), std::vector<std::string>{"asked"});
}

TEST_F(ConsoleCompletion, WhatACompletionThrowsLeavesThroughTheKey)
{
    bool broken = true;
    addCommand(mConsole, U"cmd").onComplete = [&broken](const ConsoleArgs&) {
        if (broken) {
            throw std::runtime_error("broken");
        }
        return Words{U"alpha"};
    };
    mDriver.type("cmd a");
    EXPECT_THROW(mDriver.press(KeyTab), std::runtime_error);
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"cmd a", 5}));
    EXPECT_NO_THROW(mConsole.snapshot());
    broken = false;
    EXPECT_EQ(tab(), (Completed{"cmd alpha", false}));
}

} // namespace
} // namespace zephyr::console
