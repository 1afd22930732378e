#include "accessible/AccessibleText.h"
#include "view/ViewState.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zephyr::test {
namespace {

using console::Console;
using console::Input;
using console::Output;
using console::qt::AccessibleText;
using console::qt::kInputLine;
using console::qt::TextPlace;
using console::qt::ViewState;
using Changes = std::vector<AccessibleText::Change>;

/// A text of an open console whose two lines of the start are hidden.
class AnAccessibleText : public testing::Test
{
protected:
    AnAccessibleText()
    {
        console.open();
        state.firstEntry = console.logSize();
        text.update(console, state);
    }

    Changes update() { return text.update(console, state); }
    std::string all() const { return text.text().toStdString(); }

    void type(const std::u32string& line)
    {
        for (const char32_t c : line) {
            console.keyPressed(Qt::Key_unknown, 0, std::u32string(1, c));
        }
    }

    /// Applies changes to a text, as one who heard of them only would.
    static QString applied(QString to, const Changes& changes)
    {
        for (const AccessibleText::Change& change : changes) {
            EXPECT_EQ(change.removed, to.sliced(change.position, change.removed.size()));
            to.replace(change.position, change.removed.size(), change.inserted);
        }
        return to;
    }

    Console console;
    ViewState state;
    AccessibleText text;
};

TEST_F(AnAccessibleText, IsTheLogAndTheInputLineBehindItsPrompt)
{
    EXPECT_EQ(">> ", all());
    EXPECT_EQ(3, text.cursor());
    console.write(U"one", Output);
    console.write(U"two", Input);
    type(U"th");
    update();
    EXPECT_EQ("one\n>> two\n>> th", all());
    EXPECT_EQ(16, text.cursor());
    console.keyPressed(Qt::Key_Left, 0, {});
    EXPECT_TRUE(update().empty());
    EXPECT_EQ(15, text.cursor());
}

TEST_F(AnAccessibleText, TellsOutputAndTypingApart)
{
    console.write(U"out", Output);
    EXPECT_EQ((Changes{{0, {}, "out\n", true}}), update());
    type(U"a");
    EXPECT_EQ((Changes{{7, {}, "a", false}}), update());
    console.keyPressed(Qt::Key_Backspace, 0, {});
    EXPECT_EQ((Changes{{7, "a", {}, false}}), update());
    EXPECT_TRUE(update().empty());
}

TEST_F(AnAccessibleText, TellsOnlyWhatDiffersAndCutsNoLetter)
{
    type(U"a\U0001F600b");
    update();
    console.keyPressed(Qt::Key_Left, 0, {});
    console.keyPressed(Qt::Key_Backspace, 0, {});
    type(U"\U0001F601");
    EXPECT_EQ((Changes{{4, QString::fromUcs4(U"\U0001F600"), QString::fromUcs4(U"\U0001F601"), false}}),
              update());
}

TEST_F(AnAccessibleText, KnowsTheOffsetOfEachPlace)
{
    console.write(U"\U0001F600x", Output);
    console.write(U"yz", Input);
    type(U"\U0001F600q");
    update();
    const std::size_t entry = state.firstEntry;
    for (const auto& [offset, place] : std::vector<std::pair<int, TextPlace>>{{0, {entry, 0}},
                                                                              {2, {entry, 1}},
                                                                              {3, {entry, 2}},
                                                                              {4, {entry + 1, 0}},
                                                                              {9, {entry + 1, 5}},
                                                                              {10, {kInputLine, 0}},
                                                                              {15, {kInputLine, 4}},
                                                                              {16, {kInputLine, 5}}}) {
        EXPECT_EQ(place, text.placeAt(offset)) << offset;
        EXPECT_EQ(offset, text.offsetOf(place)) << offset;
    }
    EXPECT_FALSE(text.offsetOf({entry, 3}));
    EXPECT_FALSE(text.offsetOf({entry - 1, 0})) << "a hidden entry";
    EXPECT_FALSE(text.placeAt(-1));
    EXPECT_FALSE(text.placeAt(17));
}

TEST_F(AnAccessibleText, HasTheBarBelowTheInputLineAndTheCursorInIt)
{
    type(U"abc");
    state.bar = ViewState::Bar{U"Find: ", U"xyz", 2, U"1 of 5", {}};
    update();
    EXPECT_EQ(">> abc\nFind: xyz 1 of 5", all());
    EXPECT_EQ(15, text.cursor());
    EXPECT_FALSE(text.placeAt(8));
    state.bar.reset();
    EXPECT_EQ((Changes{{6, "\nFind: xyz 1 of 5", {}, false}}), update());
}

TEST_F(AnAccessibleText, DropsWhatIsHidden)
{
    console.write(U"one", Output);
    console.write(U"two", Output);
    update();
    ++state.firstEntry;
    EXPECT_EQ((Changes{{0, "one\n", {}, true}}), update());
    EXPECT_EQ("two\n>> ", all());
}

TEST_F(AnAccessibleText, HoldsTheNewestPartOfALongLogAndTellsEachChangeRightly)
{
    QString heard = text.text();
    for (int i = 0; i < 4000; ++i) {
        console.write(U"line " + std::u32string(static_cast<std::size_t>(i % 150), U'\u00E4'), Output);
        if (i % 7 == 0 || i > 3900) {
            heard = applied(heard, update());
            ASSERT_EQ(text.text(), heard);
            ASSERT_LE(text.text().size(), AccessibleText::kMostUnits + 3);
            ASSERT_LE(text.text().count('\n'), qsizetype{AccessibleText::kMostEntries});
        }
    }
    EXPECT_GE(text.text().size(), AccessibleText::kMostUnits / 4);
    EXPECT_TRUE(text.text().endsWith(QString("line ") + QString(3999 % 150, u'\u00E4') + "\n>> "));
    EXPECT_TRUE(text.offsetOf({console.logSize() - 1, 0}));
}

TEST_F(AnAccessibleText, ReadsNoMoreOfAFloodThanItHolds)
{
    console.write(U"old", Output);
    update();
    for (int i = 0; i < 100'000; ++i) {
        console.write(U"a line of a flood", Output);
    }
    const QString before = text.text();
    const Changes changes = update();
    EXPECT_EQ(text.text(), applied(before, changes));
    EXPECT_LE(text.text().count('\n'), qsizetype{AccessibleText::kMostEntries});
    EXPECT_FALSE(text.text().contains("old"));
}

TEST_F(AnAccessibleText, HoldsTheEndOfAnEntryThatIsTooLong)
{
    console.write(std::u32string(1'000'000, U'a') + U"\U0001F600 end", Output);
    update();
    EXPECT_TRUE(text.text().endsWith(" end\n>> "));
    EXPECT_LE(text.text().size(), AccessibleText::kMostUnits);
    const std::size_t entry = console.logSize() - 1;
    const auto offset = text.offsetOf({entry, 1'000'001});
    ASSERT_TRUE(offset);
    EXPECT_EQ(" end", text.text().sliced(*offset, 4));
    EXPECT_EQ((TextPlace{entry, 1'000'001}), text.placeAt(*offset));
    EXPECT_FALSE(text.offsetOf({entry, 0}));
}

} // namespace
} // namespace zephyr::test
