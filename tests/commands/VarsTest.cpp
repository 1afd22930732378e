#include "commands/Wind.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/commands/Variable.h"

#include <chrono>
#include <limits>
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

TEST_F(Vars, SavesNothingWhereAValueCantBeReadBack)
{
    mDirectory.write("mine.console", "old\n");
    const Variable<double> wild(
        mConsole, U"wild", [] { return 75.0; }, [](double) {}, 12.0, U"", between(0, 60).unit(U"m/s"));
    const Variable<Mode> nameless(
        mConsole, U"nameless", [] { return static_cast<Mode>(9); }, [](Mode) {}, Mode::Still, U"");
    mSpeed.set(20);
    const FailureCounter failures(mConsole);
    EXPECT_EQ(Texts({"    Can't save nameless: '' is not steady, gusty or still.",
                     "    Can't save wild: 75 is above 60 m/s."}),
              textsOfAnswer("vars save mine"));
    EXPECT_EQ("old\n", mDirectory.read("mine.console"));
    EXPECT_EQ(1U, failures.count());
}

TEST_F(Vars, SavesNumbersOfTheLongestType)
{
    using Number = long double;
    using Limits = std::numeric_limits<Number>;
    Variable<Number> number(mConsole, U"number", 0.5L, U"");
    Variable<std::chrono::duration<Number>> time(mConsole, U"time", std::chrono::duration<Number>(1), U"");
    for (const Number value : {1 / 3.0L, 1e16L / 3, Limits::max(), Limits::lowest(), Limits::min(),
                               Limits::denorm_min(), Limits::epsilon()}) {
        number.set(value);
        time.set(std::chrono::duration<Number>(value));
        textsOfAnswer("vars save mine");
        textsOfAnswer("vars reset");
        ASSERT_TRUE(mConsole.runFile("mine.console"));
        EXPECT_EQ(value, number.value());
        EXPECT_EQ(value, time.value().count());
    }
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

TEST_F(Vars, ResetsTheOthersWhereASetterFails)
{
    const Variable<int> fps(
        mConsole, U"fps", [] { return 60; }, [](int) { fail(U"The screen can't do that."); }, 30, U"");
    const Variable<int> rate(
        mConsole, U"rate", [] { return 8000; }, [](int) { fail(U"There is no sound."); }, 44100, U"");
    mSpeed.set(20);
    const FailureCounter failures(mConsole);
    EXPECT_EQ(Texts({"    fps: The screen can't do that.", "    rate: There is no sound."}),
              textsOfAnswer("vars reset"));
    EXPECT_EQ(12.0, mSpeed.value());
    EXPECT_EQ(1U, failures.count());
    EXPECT_EQ(U"rate: There is no sound.", failures.lastLine());
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
