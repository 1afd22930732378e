#include "view/NameSteps.h"
#include "KeyDelivery.h"
#include "support/ConsoleDriver.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

class TheSteps : public testing::Test
{
protected:
    TheSteps() { console.open(); }

    void begin(std::vector<std::u32string> names, bool addsSpace = true)
    {
        steps.begin(console, SharedTexts(std::move(names)), addsSpace);
    }

    std::string forwards() { return step(false); }
    std::string backwards() { return step(true); }

    std::string goTo(std::size_t index)
    {
        steps.goTo(console, index, pressKey);
        return lineAndCursor();
    }

    Console console;
    test::ConsoleDriver driver{console};
    KeyDelivery keys{[](const QString&) {}};
    PressKey pressKey = [this](int key, int modifiers, const std::u32string& text) {
        keys.press(console, key, modifiers, text);
    };
    NameSteps steps;

private:
    std::string step(bool backwards)
    {
        steps.step(console, backwards, pressKey);
        return lineAndCursor();
    }

    std::string lineAndCursor() const
    {
        std::string line = driver.input();
        return line.insert(console.cursorPosition(), "|"); // the lines are ASCII
    }
};

TEST_F(TheSteps, ReplaceTheFirstWordAndWrapAround)
{
    driver.type("se");
    begin({U"set", U"setup", U"shut"});
    EXPECT_EQ("set|", forwards());
    EXPECT_EQ("setup|", forwards());
    EXPECT_EQ("shut|", forwards());
    EXPECT_EQ("set|", forwards());
    EXPECT_EQ("shut|", backwards());
}

TEST_F(TheSteps, BeginAtTheEndBackwards)
{
    driver.type("se");
    begin({U"set", U"setup"});
    EXPECT_EQ("setup|", backwards());
}

TEST_F(TheSteps, KeepTheRestOfTheLine)
{
    driver.type("foo  bar ");
    begin({U"food", U"f"});
    EXPECT_EQ("food|  bar ", forwards());
    EXPECT_EQ("f|  bar ", forwards());
    EXPECT_EQ(1U, steps.index());
}

TEST_F(TheSteps, GoOnFromTheNameThatStandsThere)
{
    driver.type("set");
    begin({U"set", U"setup"});
    EXPECT_EQ("setup|", forwards());
    EXPECT_EQ("set|", forwards());
}

TEST_F(TheSteps, AddASpaceBehindTheOnlyName)
{
    driver.type("he");
    begin({U"help"});
    EXPECT_EQ("help |", forwards());
    EXPECT_FALSE(steps.isAt(console)) << "there is no other";
}

TEST_F(TheSteps, AddNoSpaceBeforeTheRestOfTheLine)
{
    driver.type("he me");
    begin({U"help"});
    EXPECT_EQ("help| me", forwards());
}

TEST_F(TheSteps, AddNoSpaceBehindASuggestion)
{
    driver.type("hlp");
    begin({U"help"}, false);
    EXPECT_EQ("help|", forwards());
}

TEST_F(TheSteps, AreOverWhereTheLineOrTheCursorChanged)
{
    driver.type("se");
    begin({U"set", U"setup"});
    forwards();
    EXPECT_TRUE(steps.isAt(console));
    driver.press(Qt::Key_Left);
    EXPECT_FALSE(steps.isAt(console));
    driver.press(Qt::Key_Right);
    EXPECT_TRUE(steps.isAt(console));
    driver.type("x");
    EXPECT_FALSE(steps.isAt(console));
    driver.press(Qt::Key_Backspace);
    steps.end();
    EXPECT_FALSE(steps.isAt(console));
    EXPECT_EQ(std::nullopt, steps.index());
}

TEST_F(TheSteps, GoToAnyName)
{
    driver.type("x y");
    begin({U"set", U"setup", U"shut"});
    EXPECT_EQ("shut| y", goTo(2));
    EXPECT_EQ("set| y", forwards());
}

TEST_F(TheSteps, CostTheLineNoPlaces)
{
    driver.type("se");
    begin({U"set", U"a_much_longer_name"});
    for (int i = 0; i < 400; ++i) {
        forwards();
    }
    EXPECT_EQ("a_much_longer_name|", goTo(1));
    driver.type(std::string(2030, 'x'));
    EXPECT_GE(console.activeInput().size(), 2048U);
}

TEST_F(TheSteps, EndWhereAFullLineTakesNoName)
{
    keys.press(console, 0, Qt::NoModifier, std::u32string(2048, U'x'));
    ASSERT_EQ(2048U, console.activeInput().size());
    begin({std::u32string(2049, U'x'), std::u32string(2050, U'x')});
    forwards();
    EXPECT_FALSE(steps.isAt(console));
    EXPECT_EQ(2048U, console.activeInput().size());
}

} // namespace
} // namespace zephyr::console::qt
