#include "view/CommandNames.h"
#include "support/ScriptedCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console::qt {
namespace {

using Texts = std::vector<std::string>;

class TheNames : public testing::Test
{
protected:
    void add(const std::vector<std::u32string>& commands)
    {
        for (const std::u32string& name : commands) {
            test::addCommand(console, name);
        }
        names.read(console);
    }

    static Texts inUtf8(const SharedTexts& texts)
    {
        Texts result;
        for (const std::u32string& text : texts) {
            result.push_back(StringUtil::toString(text));
        }
        return result;
    }

    Texts beginningWith(std::u32string_view word) const { return inUtf8(names.beginningWith(word)); }
    Texts closeTo(std::u32string_view word) { return inUtf8(names.closeTo(word)); }

    Console console;
    CommandNames names;
};

TEST_F(TheNames, AreThoseOfCommandsAndAliasesInAscendingOrderOfCodePoints)
{
    console.execute(U"alias setall \"help\"");
    add({U"setup", U"set", U"Set", U"seven"});
    EXPECT_EQ((Texts{"set", "setall", "setup", "seven"}), beginningWith(U"se"));
    EXPECT_EQ((Texts{"set", "setall", "setup"}), beginningWith(U"set"));
    EXPECT_EQ(Texts{"Set"}, beginningWith(U"S"));
    EXPECT_EQ(Texts{}, beginningWith(U"x"));
}

TEST_F(TheNames, StandOnceWhereAnAliasHasTheNameOfACommand)
{
    console.execute(U"alias twice \"help\"");
    add({U"twice"});
    EXPECT_EQ(Texts{"twice"}, beginningWith(U"tw"));
}

TEST_F(TheNames, AreOnlyThoseThatALineCanBeginWith)
{
    add({U"", U"two words", U"word"});
    EXPECT_EQ((Texts{"alias", "help", "word"}), beginningWith(U""));
}

TEST_F(TheNames, AreThoseOfTheLastReading)
{
    EXPECT_FALSE(names.isRead());
    add({U"first"});
    EXPECT_TRUE(names.isRead());
    test::addCommand(console, U"fish");
    EXPECT_EQ(Texts{"first"}, beginningWith(U"fi"));
    names.read(console);
    EXPECT_EQ((Texts{"first", "fish"}), beginningWith(U"fi"));
    EXPECT_EQ(Texts{"fish"}, closeTo(U"xish"));
    names.forget();
    EXPECT_FALSE(names.isRead());
    EXPECT_EQ(Texts{}, beginningWith(U""));
    EXPECT_EQ(Texts{}, closeTo(U"fish"));
}

TEST_F(TheNames, LeaveOutACommandThatFailsToTellIts)
{
    class Nameless : public ConsoleCommand
    {
    public:
        std::u32string name() const override
        {
            if (mCalls++ > 0) {
                throw 42;
            }
            return U"nameless";
        }

    private:
        mutable int mCalls = 0;
    };
    console.registerCommand(std::make_unique<Nameless>());
    add({U"name"});
    EXPECT_EQ(Texts{"name"}, beginningWith(U"n"));
}

TEST_F(TheNames, CloseToAWordDifferByAThirdOfItsLength)
{
    add({U"position", U"pos"});
    EXPECT_EQ(Texts{"position"}, closeTo(U"postition"));
    EXPECT_EQ(Texts{"position"}, closeTo(U"positoin"));
    EXPECT_EQ(Texts{"position"}, closeTo(U"psiton")) << "two of six";
    EXPECT_EQ(Texts{"pos"}, closeTo(U"pso"));
    EXPECT_EQ(Texts{}, closeTo(U"psitn")) << "three of five";
    EXPECT_EQ(Texts{}, closeTo(U"xo"));
}

TEST_F(TheNames, CloseToALongWordDifferByThreeAtMost)
{
    add({U"abcdefghijklmnop"});
    EXPECT_EQ(Texts{"abcdefghijklmnop"}, closeTo(U"abcdefghijklmxyz"));
    EXPECT_EQ(Texts{}, closeTo(U"abcdefghijklwxyz"));
}

TEST_F(TheNames, CloseToAWordHaveItInside)
{
    add({U"path_list", U"path"});
    EXPECT_EQ(Texts{"path_list"}, closeTo(U"list"));
    EXPECT_EQ(Texts{"path_list"}, closeTo(U"_"));
}

TEST_F(TheNames, CloseToAWordAreFoundWhateverTheirCase)
{
    add({U"SetGain", U"\u00DCber"});
    EXPECT_EQ(Texts{"SetGain"}, closeTo(U"setgain"));
    EXPECT_EQ(Texts{"SetGain"}, closeTo(U"GAIN"));
    EXPECT_EQ(Texts{"\u00DCber"}, closeTo(U"\u00FC"));
}

TEST_F(TheNames, CloseToAWordComeTheClosestFirst)
{
    add({U"a_trackers", U"TRACK", U"trick", U"truck", U"tric"});
    EXPECT_EQ((Texts{"TRACK", "trick", "truck", "a_trackers"}), closeTo(U"track"));
}

} // namespace
} // namespace zephyr::console::qt
