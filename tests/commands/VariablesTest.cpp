#include "commands/Wind.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/commands/Variable.h"

#include <memory>
#include <stdexcept>
#include <thread>

namespace zephyr::test {
namespace {

using namespace console::commands;

class Variables : public CommandsFixture
{
protected:
    Variable<double> mWind{mConsole, U"wind.speed", 12.0, U"Wind speed.", between(0, 60).unit(U"m/s")};
};

TEST_F(Variables, AnswerValueDefaultAndRange)
{
    EXPECT_EQ((Lines{output("wind.speed: 12 m/s; by default 12 m/s; a number from 0 to 60 m/s.", 4)}),
              answer(U"wind.speed"));
    EXPECT_EQ(Texts(), textsOfAnswer("wind.speed 20"));
    EXPECT_EQ(20.0, mWind.value());
    EXPECT_EQ(Texts({"    wind.speed: 20 m/s; by default 12 m/s; a number from 0 to 60 m/s."}),
              textsOfAnswer("wind.speed"));
    EXPECT_EQ(Texts(), textsOfAnswer("wind.speed default"));
    EXPECT_EQ(12.0, mWind.value());
}

TEST_F(Variables, AnswerWhatIsWrong)
{
    const std::string usage = "    Usage: wind.speed [VALUE|default]";
    EXPECT_EQ(Texts({"    wind.speed: 75 is above 60 m/s.", usage}), textsOfAnswer("wind.speed 75"));
    EXPECT_EQ(Texts({"    wind.speed: 'x' is not a number from 0 to 60 m/s.", usage}),
              textsOfAnswer("wind.speed x"));
    EXPECT_EQ(Texts({"    wind.speed: '2' is one word too many.", usage}), textsOfAnswer("wind.speed 1 2"));
    const Variable<std::string> title(mConsole, U"title", "x", U"");
    EXPECT_EQ("    title: 'world' is one word too many; quote words that belong together.",
              textsOfAnswer("title My world").front());
    EXPECT_EQ(12.0, mWind.value());
    const FailureCounter failures(mConsole);
    textsOfAnswer("wind.speed 75");
    EXPECT_EQ(1U, failures.count());
}

TEST_F(Variables, AreDescribedByHelp)
{
    EXPECT_EQ(Texts({"    Usage: wind.speed [VALUE|default]\n       Wind speed.\n"
                     "       VALUE: a number from 0 to 60 m/s, by default 12 m/s.",
                     ""}),
              textsOfAnswer("help wind.speed"));
}

TEST_F(Variables, AreSetByTheProgramWithinTheirLimits)
{
    mWind.set(30);
    EXPECT_EQ(30.0, mWind.value());
    try {
        mWind.set(61);
        ADD_FAILURE() << "61 was taken";
    } catch (const CommandError& error) {
        EXPECT_STREQ("wind.speed: 61 is above 60 m/s.", error.what());
    }
    EXPECT_EQ(30.0, mWind.value());
    mWind.reset();
    EXPECT_EQ(12.0, mWind.value());
}

TEST_F(Variables, TellOfChanges)
{
    std::vector<double> seen;
    mWind.onChange([&](double speed) { seen.push_back(speed); });
    mWind.set(20);
    mWind.set(20);
    textsOfAnswer("wind.speed 21");
    textsOfAnswer("wind.speed 75");
    textsOfAnswer("wind.speed default");
    EXPECT_EQ((std::vector<double>{20, 21, 12}), seen);
}

TEST_F(Variables, MayBeDestroyedByWhoIsToldOfAChange)
{
    auto lamp = std::make_unique<Variable<bool>>(mConsole, U"lamp", false, U"");
    int calls = 0;
    lamp->onChange([&](bool) { lamp.reset(); });
    lamp->onChange([&](bool) { ++calls; });
    textsOfAnswer("lamp on");
    EXPECT_EQ(nullptr, mConsole.lookupCommand(U"lamp"));
    EXPECT_EQ(1, calls);
}

TEST_F(Variables, EndWithTheirObjects)
{
    {
        const Variable<int> count(mConsole, U"count", 1, U"");
        EXPECT_NE(nullptr, mConsole.lookupCommand(U"count"));
    }
    EXPECT_EQ(nullptr, mConsole.lookupCommand(U"count"));
    auto console = std::make_unique<console::Console>();
    const Variable<int> left(*console, U"left", 1, U"");
    console.reset();
    EXPECT_EQ(1, left.value());
}

TEST_F(Variables, MayBelongToTheProgram)
{
    int frames = 60;
    const Variable<int> fps(
        mConsole, U"fps", [&] { return frames; },
        [&](int value) {
            if (value == 61) {
                fail(U"The screen can't do that.");
            }
            frames = value;
        },
        30, U"Frames a second.");
    EXPECT_EQ(60, fps.value());
    EXPECT_EQ(Texts(), textsOfAnswer("fps 59"));
    EXPECT_EQ(59, frames);
    EXPECT_EQ(Texts({"    The screen can't do that."}), textsOfAnswer("fps 61"));
    EXPECT_EQ(Texts(), textsOfAnswer("fps default"));
    EXPECT_EQ(30, frames);
}

TEST_F(Variables, MayBeReadOnlyForTheUser)
{
    Variable<int> steps(mConsole, U"steps", 0, U"Steps so far.", readOnly());
    steps.set(3);
    EXPECT_EQ(Texts({"    steps: 3; by default 0; a whole number; read-only."}), textsOfAnswer("steps"));
    EXPECT_EQ(Texts({"    steps: '4' is not expected; the variable is read-only.", "    Usage: steps"}),
              textsOfAnswer("steps 4"));
    EXPECT_EQ(3, steps.value());
    EXPECT_EQ(Texts(), completionsOf("steps "));
}

TEST_F(Variables, AreReadOnlyWithoutASetter)
{
    Variable<int> frames(mConsole, U"frames", [] { return 60; }, nullptr, 0, U"Frames so far.");
    EXPECT_EQ(Texts({"    frames: 60; by default 0; a whole number; read-only."}), textsOfAnswer("frames"));
    EXPECT_EQ(Texts({"    frames: '4' is not expected; the variable is read-only.", "    Usage: frames"}),
              textsOfAnswer("frames 4"));
    EXPECT_THROW(frames.reset(), CommandError);
    try {
        frames.set(4);
        ADD_FAILURE() << "it was set";
    } catch (const CommandError& error) {
        EXPECT_STREQ("frames: the variable is read-only.", error.what());
    }
}

TEST_F(Variables, MayHaveEachLimitAlone)
{
    const Variable<int> least(mConsole, U"least", 5, U"", atLeast(0));
    const Variable<int> most(mConsole, U"most", 5, U"", atMost(9));
    const Variable<int> some(mConsole, U"some", 5, U"", offers(60, 70));
    const Variable<int> asked(mConsole, U"asked", 5, U"",
                              candidates([] { return std::vector<std::u32string>{U"80"}; }));
    EXPECT_EQ("    least: -1 is below 0.", textsOfAnswer("least -1").front());
    EXPECT_EQ("    most: 10 is above 9.", textsOfAnswer("most 10").front());
    EXPECT_EQ(Texts({"some 70"}), completionsOf("some 7"));
    EXPECT_EQ(Texts({"asked 80"}), completionsOf("asked 8"));
}

TEST_F(Variables, OfferTheirValues)
{
    const Variable<Mode> mode(mConsole, U"mode", Mode::Still, U"");
    EXPECT_EQ(Texts({"mode steady", "mode gusty", "mode still", "mode default"}), completionsOf("mode "));
    EXPECT_EQ(Texts({"mode gusty"}), completionsOf("mode g"));
    EXPECT_EQ(Texts({"wind.speed 12", "wind.speed default"}), completionsOf("wind.speed "));
    EXPECT_EQ(Texts(), completionsOf("wind.speed 12 "));
}

TEST_F(Variables, OfferInQuotesWhatIsNoPlainWord)
{
    const Variable<std::string> name(mConsole, U"name", "nobody", U"", offers("default", "/escaped=a", "/b"));
    EXPECT_EQ(Texts({"name \"default\"", "name default"}), completionsOf("name d"));
    EXPECT_EQ(Texts({"name \"/escaped=a\"", "name /b"}), completionsOf("name /"));
}

TEST_F(Variables, HoldATextThatLooksLikeTheWordForTheDefault)
{
    const Variable<std::u32string> name(mConsole, U"name", U"nobody", U"");
    EXPECT_EQ(Texts(), textsOfAnswer("name \"default\""));
    EXPECT_EQ(U"default", name.value());
    EXPECT_EQ(Texts(), textsOfAnswer("name default"));
    EXPECT_EQ(U"nobody", name.value());
    EXPECT_EQ(Texts(), textsOfAnswer("name /escaped=a\\u{22}b"));
    EXPECT_EQ(U"a\"b", name.value());
    EXPECT_EQ("    name: 'a\\u{22' is not an escaped text.", textsOfAnswer("name /escaped=a\\u{22").front());
    EXPECT_EQ("    name: 'a\\u{}' is not an escaped text.", textsOfAnswer("name /escaped=a\\u{}").front());
}

TEST_F(Variables, RefuseMistakesOfTheProgram)
{
    EXPECT_THROW(Variable<int>(mConsole, U"a b", 1, U""), std::invalid_argument);
    EXPECT_THROW(Variable<int>(mConsole, U"a", 1, U"", between(2, 3)), std::invalid_argument);
    EXPECT_THROW(Variable<int>(mConsole, U"a", 1, U"", between(U"x", 3)), std::invalid_argument);
    try {
        Variable<int>(mConsole, U"a", nullptr, [](int) {}, 1, U"");
        ADD_FAILURE() << "it was made";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ("a: a variable needs a getter", error.what());
    }
    EXPECT_EQ(nullptr, mConsole.lookupCommand(U"a"));
}

TEST_F(Variables, AreReadFromAnyThread)
{
    static_assert(Variable<double>::kIsLockFree && Variable<bool>::kIsLockFree &&
                  Variable<Mode>::kIsLockFree && Variable<std::chrono::milliseconds>::kIsLockFree &&
                  !Variable<std::string>::kIsLockFree);
    Variable<std::string> text(mConsole, U"text", "aa", U"");
    std::thread reader([&] {
        for (std::string seen; seen != "zz"; seen = text.value()) {
            EXPECT_TRUE(seen.empty() || seen[0] == seen[1]);
        }
    });
    for (char c = 'a'; c <= 'z'; ++c) {
        text.set(std::string(2, c));
    }
    reader.join();
}

} // namespace
} // namespace zephyr::test
