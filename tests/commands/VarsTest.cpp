#include "commands/Wind.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/commands/Variable.h"

#include <memory>

namespace zephyr::test {
namespace {

using namespace console::commands;

class Vars : public CommandsFixture
{
protected:
    Vars() { addVars(mConsole); }

    TemporaryDirectory mDirectory;
    WorkingDirectory mInside{mDirectory.path()};
    Variable<double> mSpeed{mConsole, U"wind.speed", 12.0, U"Wind speed.", between(0, 60).unit(U"m/s")};
    Variable<std::string> mTitle{mConsole, U"title", "My world", U"The title."};
    Variable<int> mSteps{mConsole, U"steps", 0, U"", readOnly()};
    Variable<int> mSecret{mConsole, U"wind.secret", 1, U"", hidden()};
    Variable<int> mPassing{mConsole, U"wind.passing", 1, U"", archived(false)};
};

TEST_F(Vars, ListsVariables)
{
    EXPECT_EQ(Texts({"    steps 0", "    title \"My world\"", "    wind.passing 1", "    wind.speed 12 m/s"}),
              textsOfAnswer("vars"));
    EXPECT_EQ(Texts({"    wind.passing 1", "    wind.speed 12 m/s"}), textsOfAnswer("vars wind."));
    EXPECT_EQ(Texts({"    No variable's name begins with 'x'."}), textsOfAnswer("vars x"));
    console::Console other;
    addVars(other);
    EXPECT_EQ((Lines{output("There are no variables.", 4)}), test::answer(U"vars", other));
}

TEST_F(Vars, SavesWhatDiffersFromItsDefault)
{
    mSpeed.set(20);
    mSteps.set(3);
    mSecret.set(2);
    mPassing.set(2);
    EXPECT_EQ(Texts({"    Wrote 2 variables to 'mine.console'."}), textsOfAnswer("vars save mine"));
    EXPECT_EQ("// Variables, as vars save wrote them.\nwind.secret 2\nwind.speed 20\n",
              mDirectory.read("mine.console"));
    textsOfAnswer("vars reset");
    EXPECT_EQ(12.0, mSpeed.value());
    mConsole.runFile("mine.console");
    EXPECT_EQ(20.0, mSpeed.value());
    EXPECT_EQ(2, mSecret.value());
}

TEST_F(Vars, SavesAnyText)
{
    for (const char* text : {"", "default", "two words", "\"quoted\"", "a\nb", "\\u{41}", "/x", ">",
                             "\xEF\xBF\xBF", "\t", "end\uFEFF"}) {
        mTitle.set(text);
        textsOfAnswer("vars save mine.console");
        mTitle.set("lost");
        ASSERT_TRUE(mConsole.runFile("mine.console"));
        EXPECT_EQ(text, mTitle.value());
    }
    mTitle.set("say \"hi\"");
    textsOfAnswer("vars save mine");
    EXPECT_EQ("// Variables, as vars save wrote them.\ntitle /escaped=say\\u{20}\\u{22}hi\\u{22}\n",
              mDirectory.read("mine.console"));
}

TEST_F(Vars, SavesAllOrNothing)
{
    mDirectory.write("mine.console", "old\n");
    EXPECT_EQ(Texts({"    Can't write 'none/mine.console': No such file or directory."}),
              textsOfAnswer("vars save none/mine"));
    std::filesystem::create_directory("folder.console");
    EXPECT_EQ(Texts({"    Can't write 'folder.console': Filename refers to a directory."}),
              textsOfAnswer("vars save folder"));
    EXPECT_EQ("old\n", mDirectory.read("mine.console"));
    EXPECT_EQ(Texts({"    Wrote 0 variables to 'mine.console'."}), textsOfAnswer("vars save mine"));
}

TEST_F(Vars, ResetsThoseThatBeginSo)
{
    mSpeed.set(20);
    mTitle.set("other");
    mSteps.set(3);
    EXPECT_EQ(Texts(), textsOfAnswer("vars reset wind."));
    EXPECT_EQ(12.0, mSpeed.value());
    EXPECT_EQ("other", mTitle.value());
    EXPECT_EQ(Texts(), textsOfAnswer("vars reset"));
    EXPECT_EQ("My world", mTitle.value());
    EXPECT_EQ(3, mSteps.value());
}

TEST_F(Vars, MayBeRemovedByWhoIsToldOfAReset)
{
    auto next = std::make_unique<Variable<int>>(mConsole, U"wind.tail", 1, U"");
    mSpeed.onChange([&](double) { next.reset(); });
    mSpeed.set(20);
    EXPECT_EQ(nullptr, mConsole.lookupCommand(U"wind.tail"));
    next = std::make_unique<Variable<int>>(mConsole, U"wind.tail", 1, U"");
    EXPECT_EQ(Texts(), textsOfAnswer("vars reset"));
    EXPECT_EQ(12.0, mSpeed.value());
    EXPECT_EQ(nullptr, mConsole.lookupCommand(U"wind.tail"));
}

TEST_F(Vars, OffersNamesThatAreNotHidden)
{
    EXPECT_EQ(Texts({"vars wind.passing", "vars wind.speed"}), completionsOf("vars wi"));
    EXPECT_EQ(Texts({"vars save", "vars steps"}), completionsOf("vars s"));
    EXPECT_EQ(Texts({"vars reset title"}), completionsOf("vars reset t"));
}

} // namespace
} // namespace zephyr::test
