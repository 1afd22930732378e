#include "sandbox/SandboxFixture.h"

namespace zephyr::test {
namespace {

using WindCommand = SandboxFixture;

const std::string kGustUsage = "wind gust [STRENGTH]";
const std::string kSetUsage = "wind set [SPEED] [HEADING]";
const std::string kShowUsage = "wind show";

const Lines kDescription{"    Usage: " + kGustUsage + "\n       " + kSetUsage + "\n       " + kShowUsage +
                             "\n       The wind over the field.",
                         "",
                         "    gust: Lets the wind blow harder for a moment.",
                         "",
                         "    set: Sets the wind's speed and heading.",
                         "",
                         "    show: Shows the wind's speed, its heading and the gust on top of it.",
                         ""};

TEST_F(WindCommand, IsDescribedByHelp)
{
    EXPECT_EQ(kDescription, answerTo("help wind"));
    EXPECT_EQ(Lines({"    Lets the wind blow harder for a moment.",
                     "    Usage: wind gust [STRENGTH]\n"
                     "       STRENGTH: a number from 0 to 60 m/s, by default 15 m/s."}),
              answerTo("help wind gust"));
    EXPECT_EQ(
        Lines({"    Sets the wind's speed and heading.",
               "    Usage: wind set [SPEED] [HEADING]\n"
               "       SPEED or /speed=NUMBER: a number from 0 to 60 m/s.\n"
               "       HEADING or /heading=NUMBER: a number from 0 to 360 degrees. 0 is up, 90 right."}),
        answerTo("help wind set"));
    EXPECT_EQ(
        Lines({"    Shows the wind's speed, its heading and the gust on top of it.", "    Usage: wind show"}),
        answerTo("help wind show"));
}

TEST_F(WindCommand, IsDescribedWhenItStandsAlone)
{
    Lines asked{"    What do you want to do?", ""};
    asked.insert(asked.end(), kDescription.begin(), kDescription.end());
    EXPECT_EQ(asked, answerTo("wind"));
}

TEST_F(WindCommand, RefusesAnUnknownSubCommand)
{
    EXPECT_EQ(Lines({"    wind: 'blow' is not gust, set or show.", "    Usage: " + kGustUsage,
                     "    Usage: " + kSetUsage, "    Usage: " + kShowUsage}),
              answerTo("wind blow 3"));
}

TEST_F(WindCommand, ShowsTheWind)
{
    EXPECT_EQ(Lines({"    Wind: 12 m/s, heading 90 degrees, gust 0 m/s."}), answerTo("wind show"));
}

TEST_F(WindCommand, RefusesWordsAfterShow)
{
    expectErrors("wind show", {{"now", "wind show: 'now' is one word too many."}}, kShowUsage);
}

TEST_F(WindCommand, IsSetByPlainWords)
{
    EXPECT_EQ(Lines({"    Wind: 12.5 m/s, heading 270 degrees, gust 0 m/s."}), answerTo("wind set 12.5 270"));
    EXPECT_EQ(12.5, sandbox.simulation().wind().speed);
    EXPECT_EQ(270.0, sandbox.simulation().wind().heading);
}

TEST_F(WindCommand, IsSetBySwitchesInAnyOrderAndBesideWords)
{
    const Lines set{"    Wind: 12.5 m/s, heading 270 degrees, gust 0 m/s."};
    EXPECT_EQ(set, answerTo("wind set /heading=270 /speed=12.5"));
    EXPECT_EQ(set, answerTo("wind set 12.5 /heading=270"));
    EXPECT_EQ(set, answerTo("wind set /heading=270 12.5"));
}

TEST_F(WindCommand, KeepsWhatSetDoesNotName)
{
    EXPECT_EQ(Lines({"    Wind: 3 m/s, heading 90 degrees, gust 0 m/s."}), answerTo("wind set 3"));
    EXPECT_EQ(Lines({"    Wind: 3 m/s, heading 0.5 degrees, gust 0 m/s."}),
              answerTo("wind set /heading=0.5"));
}

TEST_F(WindCommand, TakesTheLimitsSpacesBetweenWordsAndQuotes)
{
    EXPECT_EQ(Lines({"    Wind: 60 m/s, heading 0 degrees, gust 0 m/s."}), answerTo("wind set  60   0"));
    EXPECT_EQ(Lines({"    Wind: 0 m/s, heading 0 degrees, gust 0 m/s."}), answerTo("wind set /speed=\"0\""));
    EXPECT_EQ(Lines({"    Wind: 5 m/s, heading 0 degrees, gust 0 m/s."}), answerTo("wind set \"5\""));
}

TEST_F(WindCommand, TakesMinusZeroForZero)
{
    EXPECT_EQ(Lines({"    Wind: 0 m/s, heading 0 degrees, gust 0 m/s."}), answerTo("wind set -0 -0"));
}

TEST_F(WindCommand, RefusesBadValuesAndChangesNothing)
{
    expectErrors("wind set",
                 {{"fast", "speed: 'fast' is not a number from 0 to 60 m/s."},
                  {"-1", "speed: -1 is below 0 m/s."},
                  {"60.1", "speed: 60.1 is above 60 m/s."},
                  {"nan", "speed: 'nan' is not a number from 0 to 60 m/s."},
                  {"0x10", "speed: '0x10' is not a number from 0 to 60 m/s."},
                  {"12,5", "speed: '12,5' is not a number from 0 to 60 m/s."},
                  {"12.5x", "speed: '12.5x' is not a number from 0 to 60 m/s."},
                  {"1e999", "speed: 1e999 is too large, or too close to zero, for a number."},
                  {"5 360", "heading: 360 is 0 degrees again."},
                  {"5 -1", "heading: -1 is below 0 degrees."},
                  {"5 east", "heading: 'east' is not a number from 0 to 360 degrees."},
                  {"5 6 7", "wind set: '7' is one word too many."},
                  {"/speed", "speed: nothing given; expected a number from 0 to 60 m/s."},
                  {"/speed=", "speed: '' is not a number from 0 to 60 m/s."},
                  {"/speed=61", "speed: 61 is above 60 m/s."},
                  {"/heading=360", "heading: 360 is 0 degrees again."},
                  {"/speed=5 /heading=east", "heading: 'east' is not a number from 0 to 360 degrees."},
                  {"/speed=5 /speed=6", "speed: given twice."},
                  {"/speed=5 /colour=red", "wind set: '/colour' is not /speed or /heading."}},
                 kSetUsage);
    EXPECT_EQ(Lines({"    Give a speed, a heading or both."}), answerTo("wind set"));
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(90.0, sandbox.simulation().wind().heading);
}

TEST_F(WindCommand, GustsWithFifteenMetresASecondOrAsToldTo)
{
    EXPECT_EQ(Lines({"    Wind: 12 m/s, heading 90 degrees, gust 15 m/s."}), answerTo("wind gust"));
    EXPECT_EQ(Lines({"    Wind: 12 m/s, heading 90 degrees, gust 2.5 m/s."}), answerTo("wind gust 2.5"));
    EXPECT_EQ(2.5, sandbox.simulation().gust());
}

TEST_F(WindCommand, RefusesBadGusts)
{
    expectErrors("wind gust",
                 {{"0", "strength: 0 is no gust."},
                  {"-3", "strength: -3 is below 0 m/s."},
                  {"60.5", "strength: 60.5 is above 60 m/s."},
                  {"x", "strength: 'x' is not a number from 0 to 60 m/s."},
                  {"1 2", "wind gust: '2' is one word too many."}},
                 kGustUsage);
    EXPECT_EQ(0.0, sandbox.simulation().gust());
}

} // namespace
} // namespace zephyr::test
