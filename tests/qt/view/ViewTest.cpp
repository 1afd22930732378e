#include "qt/view/ViewedConsole.h"
#include "support/ScriptedCommand.h"
#include "view/ViewKeys.h"
#include "zephyr/console/qt/Look.h"

#include <QClipboard>
#include <QGuiApplication>

#include <fstream>
#include <sstream>

namespace zephyr::console::qt {
namespace {

using Texts = std::vector<std::string>;

class ViewTest : public ViewedConsole
{
protected:
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    /// Selects from the start of one entry to an offset of another.
    void select(TextPlace from, TextPlace to)
    {
        view.select(from, Unit::Grapheme);
        view.extendTo(to);
    }
};

// Scrolling

TEST_F(ViewTest, FollowsTheNewestLine)
{
    write(100);
    EXPECT_EQ("line 99", last());
    write(1);
    EXPECT_EQ("line 100", last());
}

TEST_F(ViewTest, StaysInPlaceWhileOutputArrivesAndTellsHowMuchIsNew)
{
    write(100);
    view.scrollBy(3);
    const Texts before = shown();
    EXPECT_EQ("line 96", before.back());
    EXPECT_EQ(0U, frame()->newEntries);
    write(5);
    EXPECT_EQ(before, shown());
    EXPECT_EQ(5U, frame()->newEntries);
    EXPECT_FALSE(frame()->mark.isEmpty());
    view.showNewest();
    EXPECT_EQ("line 104", last());
    EXPECT_TRUE(frame()->mark.isEmpty());
}

TEST_F(ViewTest, FollowsAgainWhenItIsScrolledDownToTheEnd)
{
    write(100);
    view.scrollBy(3);
    view.scrollBy(-3);
    write(1);
    EXPECT_EQ("line 100", last());
}

TEST_F(ViewTest, PagesByTheRowsInViewLessOne)
{
    write(200);
    const std::string top = first();
    press(Qt::Key_PageUp);
    EXPECT_EQ(top, last());
    press(Qt::Key_PageDown);
    EXPECT_EQ("line 199", last());
}

TEST_F(ViewTest, ReadsAnAnswerTallerThanTheWindowFromEndToEnd)
{
    std::u32string answer;
    for (int i = 0; i < 200; ++i) {
        answer += U"row " + StringUtil::toU32String(std::to_string(i)) + U"\n";
    }
    console->write(answer, Output);
    EXPECT_EQ("row 199", last());
    std::string top = first();
    while (top != "Zephyr Console:") {
        press(Qt::Key_PageUp);
        const Texts page = shown();
        EXPECT_NE(page.end(), std::find(page.begin(), page.end(), top)) << "no row is skipped";
        ASSERT_NE(top, page.front());
        top = page.front();
    }
}

TEST_F(ViewTest, ShowsTheNewestLinesWhenAKeyActsOnTheConsole)
{
    write(100);
    press(Qt::Key_PageUp);
    press(Qt::Key_Left);
    EXPECT_EQ("line 99", last());
}

TEST_F(ViewTest, ScrollsToAShareOfTheLog)
{
    write(1000);
    view.scrollToShare(0.0);
    EXPECT_EQ("Zephyr Console:", first());
    view.scrollToShare(0.5);
    EXPECT_EQ("line 499", first());
    view.scrollToShare(1.0);
    EXPECT_EQ("line 999", last());
}

TEST_F(ViewTest, HidesWhatWasClearedAndKeepsItInTheLog)
{
    write(50);
    view.clear();
    EXPECT_EQ(Texts(), shown());
    write(2);
    EXPECT_EQ((Texts{"line 50", "line 51"}), shown());
    press(Qt::Key_PageUp);
    view.scrollToShare(0.0);
    EXPECT_EQ((Texts{"line 50", "line 51"}), shown());
    EXPECT_EQ(54U, console->logSize());
}

// Selecting

TEST_F(ViewTest, CopiesASelectionAsItWasWritten)
{
    console->write(std::u32string(300, U'x') + U" end", Output);
    type(U"help");
    press(Qt::Key_Return);
    select({2, 298}, {3, 5});
    press(Qt::Key_C, kCtrl);
    EXPECT_EQ("xx end\n>> he", clipboard());
}

TEST_F(ViewTest, LeavesCtrlCToTheHostWithoutASelection)
{
    EXPECT_FALSE(view.wants(Qt::Key_C, kCtrl));
    select({0, 0}, {0, 3});
    EXPECT_TRUE(view.wants(Qt::Key_C, kCtrl));
}

TEST_F(ViewTest, CopiesTheInputLineWithItsPrompt)
{
    type(U"abc def");
    select({kInputLine, 0}, {kInputLine, 6});
    press(Qt::Key_C, kCtrl);
    EXPECT_EQ(">> abc", clipboard());
}

TEST_F(ViewTest, SelectsWordsAndLines)
{
    console->write(U"one two-three\nfour", Output);
    view.select({2, 5}, Unit::Word);
    EXPECT_EQ((TextRange{{2, 4}, {2, 7}}), state().selection);
    view.select({2, 5}, Unit::Line);
    EXPECT_EQ((TextRange{{2, 0}, {2, 13}}), state().selection);
    view.extendTo({2, 15});
    EXPECT_EQ((TextRange{{2, 0}, {2, 18}}), state().selection);
}

TEST_F(ViewTest, ExtendsTheSelectionToBothSidesOfWhereItBegan)
{
    write(10);
    view.select({5, 2}, Unit::Grapheme);
    view.extendTo({8, 1});
    EXPECT_EQ((TextRange{{5, 2}, {8, 1}}), state().selection);
    view.extendTo({3, 0});
    EXPECT_EQ((TextRange{{3, 0}, {5, 2}}), state().selection);
}

// Finding

TEST_F(ViewTest, FindsFromTheNewestHitBackwards)
{
    write(100);
    press(Qt::Key_F, kCtrl);
    type(U"LINE 3");
    search();
    EXPECT_EQ((TextPlace{41, 0}), state().find.current);
    EXPECT_EQ(U"1 of 11", state().bar->status);
    EXPECT_EQ("", StringUtil::toString(console->activeInput())) << "the bar has the keys";
    press(Qt::Key_Return);
    EXPECT_EQ((TextPlace{40, 0}), state().find.current);
    press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ((TextPlace{41, 0}), state().find.current);
    const Texts rowsShown = shown();
    EXPECT_NE(rowsShown.end(), std::find(rowsShown.begin(), rowsShown.end(), "line 39"));
    EXPECT_FALSE(frame()->hits.empty());
}

TEST_F(ViewTest, TellsCaseApartWhereItIsAskedTo)
{
    console->write(U"Abc abc", Output);
    press(Qt::Key_F, kCtrl);
    type(U"abc");
    search();
    EXPECT_EQ(U"1 of 2", state().bar->status);
    ASSERT_TRUE(view.wants(Qt::Key_C, Qt::AltModifier));
    press(Qt::Key_C, Qt::AltModifier);
    search();
    EXPECT_TRUE(state().find.matchesCase);
    EXPECT_NE(std::u32string::npos, state().bar->status.find(U"1 of 1"));
}

TEST_F(ViewTest, SaysThatNothingWasFound)
{
    press(Qt::Key_F, kCtrl);
    type(U"nowhere");
    search();
    EXPECT_EQ(U"not found", state().bar->status);
}

TEST_F(ViewTest, StaysAtTheHitWhenTheBarIsClosed)
{
    write(200);
    press(Qt::Key_F, kCtrl);
    type(U"line 50");
    search();
    const std::string top = first();
    press(Qt::Key_Escape);
    EXPECT_FALSE(state().bar);
    EXPECT_EQ(top, first());
    EXPECT_TRUE(frame()->hits.empty());
}

TEST_F(ViewTest, SearchesWhatIsWrittenMeanwhile)
{
    press(Qt::Key_F, kCtrl);
    type(U"line");
    search();
    EXPECT_EQ(U"not found", state().bar->status);
    write(3);
    search();
    EXPECT_EQ(U"3", state().bar->status.substr(state().bar->status.size() - 1));
}

// Recalling

TEST_F(ViewTest, SearchesTheHistory)
{
    type(U"help one\nhelp two\nhelp three\nabc");
    press(Qt::Key_R, kCtrl);
    type(U"T");
    EXPECT_EQ(U"help three", state().recalled);
    press(Qt::Key_R, kCtrl);
    EXPECT_EQ(U"help two", state().recalled);
    press(Qt::Key_Escape);
    EXPECT_EQ(U"abc", console->activeInput());
    press(Qt::Key_R, kCtrl);
    type(U"one");
    press(Qt::Key_Tab);
    EXPECT_EQ(U"help one", console->activeInput());
    EXPECT_FALSE(state().bar);
}

TEST_F(ViewTest, ShowsTheBeginningOfAVeryLongLineOfTheHistory)
{
    console->addToHistory(U"long " + std::u32string(1000000, U'x'));
    press(Qt::Key_R, kCtrl);
    type(U"long");
    ASSERT_TRUE(state().recalled);
    EXPECT_LT(state().recalled->size(), 10000U);
    EXPECT_EQ(U"long x", state().recalled->substr(0, 6));
}

TEST_F(ViewTest, RunsTheLineThatWasFound)
{
    type(U"help one\nhelp two\n");
    press(Qt::Key_R, kCtrl);
    type(U"one");
    const std::size_t before = console->logSize();
    press(Qt::Key_Return);
    EXPECT_EQ(U"help one", console->readLogPart(before, 0, 100).text);
    EXPECT_EQ(U"", console->activeInput());
}

TEST_F(ViewTest, GivesTheKeysToTheBarThatWasOpenedLast)
{
    type(U"help one\n");
    press(Qt::Key_R, kCtrl);
    type(U"one");
    press(Qt::Key_F, kCtrl);
    type(U"abc");
    ASSERT_TRUE(state().bar);
    EXPECT_EQ(U"Find: ", state().bar->label);
    EXPECT_EQ(U"abc", state().bar->text);
    EXPECT_FALSE(state().recalled);
    press(Qt::Key_R, kCtrl);
    type(U"h");
    EXPECT_EQ(U"History: ", state().bar->label);
    EXPECT_EQ(U"h", state().bar->text);
}

TEST_F(ViewTest, ComposesInTheBarThatHasTheKeys)
{
    view.setComposition("ni");
    EXPECT_EQ("ni", state().composition);
    for (const int key : {Qt::Key_F, Qt::Key_R}) {
        press(key, kCtrl);
        EXPECT_EQ(U"ni", state().bar->composition);
        EXPECT_TRUE(state().composition.isEmpty());
        press(Qt::Key_Escape);
        EXPECT_EQ("ni", state().composition);
    }
}

TEST_F(ViewTest, KeepsALateKeyFromTheFindBar)
{
    press(Qt::Key_F, kCtrl);
    const KeyPress late{0, Qt::NoModifier, U"x"};
    EXPECT_FALSE(view.press(*console, late, true));
    EXPECT_EQ(U"", state().bar->text);
}

TEST_F(ViewTest, KeepsTheLineWhereNothingIsRecalled)
{
    type(U"help one\nabc");
    press(Qt::Key_R, kCtrl);
    type(U"zzz");
    EXPECT_EQ(U"not found", state().bar->status);
    press(Qt::Key_Right);
    EXPECT_EQ(U"abc", console->activeInput());
}

// Offers

TEST_F(ViewTest, OffersWhatFitsTheLine)
{
    type(U"he");
    ASSERT_EQ(1U, state().list.offers.size());
    EXPECT_EQ(U"help", state().list.offers[0].text);
    EXPECT_FALSE(frame()->list.isEmpty());
    press(Qt::Key_Tab);
    EXPECT_EQ(U"help ", console->activeInput());
}

TEST_F(ViewTest, SaysThatOffersAreGuesses)
{
    type(U"hepl");
    ASSERT_EQ(1U, state().list.offers.size());
    EXPECT_TRUE(state().list.areSuggestions);
    EXPECT_EQ(U"Did you mean:", frame()->noteText);
    EXPECT_FALSE(frame()->note.isEmpty());
}

TEST_F(ViewTest, OffersFromTheFirstLetterOn)
{
    console->close();
    view.reset();
    console->open();
    view.reset();
    EXPECT_TRUE(state().list.offers.empty());
    type(U"h");
    EXPECT_EQ(1U, state().list.offers.size());
}

TEST_F(ViewTest, PutsTheOfferOnTheLineThatIsPicked)
{
    test::addCommand(*console, U"hear");
    type(U"he");
    ASSERT_EQ(2U, state().list.offers.size());
    view.pickOffer(1);
    EXPECT_EQ(U"help", console->activeInput().substr(0, 4));
}

TEST_F(ViewTest, RunsTheLineAsItStandsOnEnter)
{
    type(U"he");
    const std::size_t before = console->logSize();
    press(Qt::Key_Return);
    EXPECT_EQ(U"he", console->readLogPart(before, 0, 10).text);
    EXPECT_TRUE(state().list.offers.empty());
}

// Escape

TEST_F(ViewTest, LeavesWhatIsOnTopFirst)
{
    type(U"he");
    select({0, 0}, {0, 3});
    press(Qt::Key_F, kCtrl);
    press(Qt::Key_Escape);
    EXPECT_FALSE(state().bar);
    EXPECT_FALSE(state().list.offers.empty());
    press(Qt::Key_Escape);
    EXPECT_TRUE(state().list.offers.empty());
    EXPECT_FALSE(state().selection.isEmpty());
    press(Qt::Key_Escape);
    EXPECT_TRUE(state().selection.isEmpty());
    press(Qt::Key_Escape);
    EXPECT_TRUE(console->isOpen()) << "there is text on the line";
    EXPECT_EQ(U"he", console->activeInput());
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    press(Qt::Key_Escape);
    EXPECT_FALSE(console->isOpen());
}

// Look

TEST_F(ViewTest, ZoomsInTheSession)
{
    const int before = frame()->font->lineHeight();
    press(Qt::Key_Plus, kCtrl);
    press(Qt::Key_Plus, kCtrl);
    EXPECT_GT(frame()->font->lineHeight(), before);
    EXPECT_EQ(10.0, view.look().fontSize);
    press(Qt::Key_0, kCtrl);
    EXPECT_EQ(before, frame()->font->lineHeight());
    press(Qt::Key_Minus, kCtrl);
    press(Qt::Key_Minus, kCtrl);
    EXPECT_LT(frame()->font->lineHeight(), before);
}

TEST_F(ViewTest, CoversTheUpperHalf)
{
    Look look;
    look.part = Look::Part::UpperHalf;
    view.setLook(look);
    write(100);
    EXPECT_EQ(QSize(640, 200), frame()->size);
    EXPECT_EQ("line 99", last());
}

TEST_F(ViewTest, AsksForAFrameOnlyWhereSomethingChanged)
{
    write(100);
    changes = 0;
    view.showNewest();
    view.selectNothing();
    EXPECT_EQ(0, changes);
    view.scrollBy(1);
    EXPECT_EQ(1, changes);
}

// Keys

/// The rows of the table under a heading of a page.
Texts tableUnder(const std::string& heading, const char* page)
{
    std::ifstream file(page);
    Texts rows;
    bool isIn = false;
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, 3, "## ") == 0) {
            isIn = line == "## " + heading;
        } else if (isIn && line.compare(0, 2, "| ") == 0 && line.compare(0, 6, "| Key ") != 0) {
            rows.push_back(line);
        }
    }
    return rows;
}

TEST(ViewKeys, AreThoseOfTheUsersPage)
{
    Texts expected;
    for (const KeyUse& use : keyUses()) {
        const std::string row = std::string("| ") + use.keys + " | " + use.effect + " |";
        if (expected.empty() || expected.back() != row) {
            expected.push_back(row);
        }
    }
    EXPECT_EQ(expected, tableUnder("Keys", USING_GUIDE));
}

TEST(ViewKeys, CountShiftOnlyWhereItMatters)
{
    EXPECT_EQ(ViewAction::PageUp, viewActionOf(Qt::Key_PageUp, Qt::ShiftModifier));
    EXPECT_EQ(ViewAction::PageUp, viewActionOf(Qt::Key_PageUp, Qt::KeypadModifier));
    EXPECT_EQ(ViewAction::ZoomIn, viewActionOf(Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier));
    EXPECT_EQ(ViewAction::Paste, viewActionOf(Qt::Key_Insert, Qt::ShiftModifier));
    EXPECT_EQ(ViewAction::None, viewActionOf(Qt::Key_Insert, Qt::NoModifier));
    EXPECT_EQ(ViewAction::None, viewActionOf(Qt::Key_F, Qt::ControlModifier | Qt::AltModifier));
    EXPECT_EQ(ViewAction::None, viewActionOf(Qt::Key_PageUp, Qt::ControlModifier));
}

} // namespace
} // namespace zephyr::console::qt
