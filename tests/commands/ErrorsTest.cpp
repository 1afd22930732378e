#include "commands/ModuleLimits.h"
#include "commands/Wind.h"

#include <cstdint>

namespace zephyr::test {
namespace {

using namespace console::commands;

const std::string kSetUsage = "    Usage: wind set SPEED [/heading=NUMBER]";
const std::string kModeUsage = "    Usage: wind mode MODE [/loud] [/steps=1|10|100]";

class CommandErrors : public WindFixture
{
protected:
    /// Expects `line` to be answered with `error` and `usage`, as lines of output that are indented, and to run nothing.
    void expectError(const std::string& line, const std::string& error, const std::string& usage)
    {
        EXPECT_EQ(Texts({"    " + error, usage}), textsOfAnswer(line)) << line;
        EXPECT_EQ(12, mSpeed);
        EXPECT_EQ(std::nullopt, mHeading);
        EXPECT_EQ(0, mSteps);
    }
};

TEST_F(CommandErrors, AreLinesOfOutputAtAnIndentOfFour)
{
    EXPECT_EQ((Lines{output("speed: 75 is above 60 m/s.", 4),
                     output("Usage: wind set SPEED [/heading=NUMBER]", 4)}),
              answer(U"wind set 75"));
}

TEST_F(CommandErrors, SayWhatIsOutOfRange)
{
    expectError("wind set 75", "speed: 75 is above 60 m/s.", kSetUsage);
    expectError("wind set -0.5", "speed: -0.5 is below 0 m/s.", kSetUsage);
    expectError("wind set 5 /heading=361", "/heading: 361 is above 360.", kSetUsage);
    expectError("wind set nan", "speed: 'nan' is not a number from 0 to 60 m/s.", kSetUsage);
    expectError("wind set 1e999", "speed: 1e999 is too large, or too close to zero, for a number.",
                kSetUsage);
}

TEST_F(CommandErrors, SayWhatWasExpected)
{
    expectError("wind set fast", "speed: 'fast' is not a number from 0 to 60 m/s.", kSetUsage);
    expectError("wind set 5m/s", "speed: '5m/s' is not a number from 0 to 60 m/s.", kSetUsage);
    expectError("wind set 1,5", "speed: '1,5' is not a number from 0 to 60 m/s.", kSetUsage);
    expectError("wind set \"\"", "speed: '' is not a number from 0 to 60 m/s.", kSetUsage);
    expectError("wind mode wild", "mode: 'wild' is not steady, gusty or still.", kModeUsage);
    expectError("wind mode still /steps=11", "/steps: '11' is not 1, 10 or 100.", kModeUsage);
}

TEST_F(CommandErrors, SayWhatIsMissing)
{
    expectError("wind set", "speed: nothing given; expected a number from 0 to 60 m/s.", kSetUsage);
    expectError("wind set /heading=3", "speed: nothing given; expected a number from 0 to 60 m/s.",
                kSetUsage);
    expectError("wind set 3 /heading", "/heading: nothing given; expected a number from 0 to 360.",
                kSetUsage);
    expectError("wind set 3 /heading=", "/heading: '' is not a number from 0 to 360.", kSetUsage);
}

TEST_F(CommandErrors, SayWhatIsTooMuch)
{
    expectError("wind set 3 4", "wind set: '4' is one word too many.", kSetUsage);
    expectError("wind show now", "wind show: 'now' is one word too many.", "    Usage: wind show");
    expectError("wind set 3 /heading=1 /heading=2", "/heading: given twice.", kSetUsage);
    expectError("wind mode still /loud /loud", "/loud: given twice.", kModeUsage);
    expectError("wind mode still /loud=on", "/loud: 'on' is not expected; the flag takes no value.",
                kModeUsage);
}

TEST_F(CommandErrors, SayThatQuotesHoldWordsTogetherWhereTheyWould)
{
    add(
        mConsole, U"say", U"", [](std::string, int, std::string) {}, argument(U"who").choices("a", "b c"),
        argument(U"count"), option(U"how"));
    add(mConsole, U"ask", U"", [](std::string) {}, argument(U"who").choices("a", "b c"));
    const std::string hint = "; quote words that belong together.";
    EXPECT_EQ("    ask: 'c' is one word too many" + hint, textsOfAnswer("ask b c").front());
    EXPECT_EQ("    ask: 'd' is one word too many.", textsOfAnswer("ask b d").front());
    EXPECT_EQ("    ask: 'c' is one word too many.", textsOfAnswer("ask \"b\" c").front());
    EXPECT_EQ("    say: '2' is one word too many.", textsOfAnswer("say a 1 2").front());
    EXPECT_EQ("    say: 'slow' is one word too many" + hint, textsOfAnswer("say a 1 /how=very slow").front());
    add(mConsole, U"now", U"", [] {});
    EXPECT_EQ("    now: 'or' is one word too many.", textsOfAnswer("now or never").front());
}

TEST_F(CommandErrors, SayWhichSwitchesThereAre)
{
    expectError("wind set 3 /sped=4", "wind set: '/sped' is not /heading.", kSetUsage);
    expectError("wind mode still /x", "wind mode: '/x' is not /loud or /steps.", kModeUsage);
}

TEST_F(CommandErrors, SayWhichSubCommandsThereAre)
{
    EXPECT_EQ(
        Texts({"    wind: 'sett' is not set, mode or show.", kSetUsage, kModeUsage, "    Usage: wind show"}),
        textsOfAnswer("wind sett 3"));
}

TEST_F(CommandErrors, RunNothingWhenALaterWordIsWrong)
{
    expectError("wind mode gusty /steps=no", "/steps: 'no' is not 1, 10 or 100.", kModeUsage);
    EXPECT_EQ(Mode::Steady, mMode);
}

TEST_F(CommandErrors, NeverWrapANumber)
{
    add(mConsole, U"small", U"", [](std::uint8_t, std::int8_t) {});
    const std::string usage = "    Usage: small NUMBER1 NUMBER2";
    EXPECT_EQ(Texts({"    number1: 256 is above 255.", usage}), textsOfAnswer("small 256 0"));
    EXPECT_EQ(Texts({"    number1: -1 is below 0.", usage}), textsOfAnswer("small -1 0"));
    EXPECT_EQ(Texts({"    number2: -129 is below -128.", usage}), textsOfAnswer("small 1 -129"));
    EXPECT_EQ(Texts({"    number2: 99999999999999999999 is above 127.", usage}),
              textsOfAnswer("small 1 99999999999999999999"));
    EXPECT_EQ(Texts({"    number2: -99999999999999999999 is below -128.", usage}),
              textsOfAnswer("small 1 -99999999999999999999"));
    EXPECT_EQ(Texts({"    number2: '1.0' is not a whole number.", usage}), textsOfAnswer("small 1 1.0"));
    EXPECT_EQ(Texts({"    number2: '--1' is not a whole number.", usage}), textsOfAnswer("small 1 --1"));
}

TEST_F(CommandErrors, NameTheLimitThatWasGivenAndNotTheTypes)
{
    add(
        mConsole, U"step", U"", [](unsigned, std::chrono::milliseconds) {},
        argument(U"count").between(1, 100).unit(U"times"),
        argument(U"pause")
            .between(std::chrono::milliseconds(1), std::chrono::seconds(1))
            .byDefault(std::chrono::seconds(1)));
    add(mConsole, U"pick", U"", [](std::uint8_t) {}, argument(U"card").choices(1, 2));
    const std::string usage = "    Usage: step COUNT [PAUSE]";
    EXPECT_EQ(Texts({"    count: -1 is below 1 times.", usage}), textsOfAnswer("step -1"));
    EXPECT_EQ(Texts({"    count: 99999999999 is above 100 times.", usage}),
              textsOfAnswer("step 99999999999"));
    EXPECT_EQ(Texts({"    pause: 99999999999999999h is above 1s.", usage}),
              textsOfAnswer("step 1 99999999999999999h"));
    EXPECT_EQ(Texts({"    card: '999' is not 1 or 2.", "    Usage: pick CARD"}), textsOfAnswer("pick 999"));
}

TEST_F(CommandErrors, ShowAnEmptyCommandsUsage)
{
    add(mConsole, U"quit", U"Ends the program.", [] {});
    EXPECT_EQ(Texts({"    quit: 'now' is one word too many.", "    Usage: quit"}), textsOfAnswer("quit now"));
}

TEST_F(CommandErrors, TellOfAHostsOwnCheck)
{
    add(
        mConsole, U"floor", U"Goes to a floor.", [](int) {},
        argument(U"floor").check([](int floor) { return floor != 13; }, U"is unlucky"));
    EXPECT_EQ(Texts({"    floor: 13 is unlucky.", "    Usage: floor FLOOR"}), textsOfAnswer("floor 13"));
    EXPECT_EQ(Texts(), textsOfAnswer("floor 12"));
}

TEST_F(CommandErrors, TellOfACheckOfAnotherModule)
{
    add(mConsole, U"pair", U"Makes pairs.", [](int) {}, evenNumber());
    EXPECT_EQ("    number: 3 is odd.", textsOfAnswer("pair 3").front());
    EXPECT_EQ(Texts(), textsOfAnswer("pair 4"));
}

TEST_F(CommandErrors, TellOfOneLimitOnly)
{
    add(mConsole, U"low", U"", [](int) {}, argument(U"depth").atLeast(3));
    add(mConsole, U"high", U"", [](int) {}, argument(U"height").atMost(3).unit(U"m"));
    EXPECT_EQ("    depth: 'x' is not a whole number of at least 3.", textsOfAnswer("low x").front());
    EXPECT_EQ("    depth: 2 is below 3.", textsOfAnswer("low 2").front());
    EXPECT_EQ("    height: 'x' is not a whole number of at most 3 m.", textsOfAnswer("high x").front());
    EXPECT_EQ("    height: 4 is above 3 m.", textsOfAnswer("high 4").front());
}

} // namespace
} // namespace zephyr::test
