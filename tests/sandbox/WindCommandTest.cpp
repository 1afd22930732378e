#include "sandbox/SandboxFixture.h"

namespace zephyr::test {
namespace {

using WindCommand = SandboxFixture;

constexpr char kShowDescription[] = "    Shows the wind's speed, its heading and the gust on top of it.";
constexpr char kSetDescription[] =
    "    Sets the wind's speed (0 to 60 m/s) and heading (0 to under 360 degrees; 0 is up, 90 right).";
constexpr char kSetHelp[] =
    "    Usage: wind set SPEED [HEADING], or wind set [/speed=SPEED] [/heading=HEADING]";
constexpr char kGustDescription[] = "    Lets the wind blow harder for a moment.";
constexpr char kGustHelp[] =
    "    Usage: wind gust [STRENGTH].  STRENGTH is above 0 to 60 m/s, 15 if left out.";

const Lines kBadSet{"    Invalid usage", "    ", kSetDescription, kSetHelp};
const Lines kBadGust{"    Invalid usage", "    ", kGustDescription, kGustHelp};

TEST_F(WindCommand, ListsItsSubCommandsWhenItStandsAlone)
{
    EXPECT_EQ(
        Lines({"    What do you want to do?", "", "    gust: Lets the wind blow harder for a moment.", "",
               "    set: Sets the wind's speed (0 to 60 m/s) and heading (0 to under 360 degrees; 0 is up, "
               "90 right).",
               "", "    show: Shows the wind's speed, its heading and the gust on top of it.", ""}),
        answerTo("wind"));
}

TEST_F(WindCommand, RefusesAnUnknownSubCommand)
{
    EXPECT_EQ(Lines({"    Invalid usage", "    ", "    'blow' is not a valid argument."}),
              answerTo("wind blow 3"));
}

TEST_F(WindCommand, ShowsTheWind)
{
    EXPECT_EQ(Lines({"    Wind: 12 m/s, heading 90 degrees, gust 0 m/s."}), answerTo("wind show"));
}

TEST_F(WindCommand, RefusesWordsAfterShow)
{
    const Lines help{"    Invalid usage", "    ", kShowDescription, "    Usage: wind show"};
    EXPECT_EQ(help, answerTo("wind show now"));
}

TEST_F(WindCommand, IsSetByPlainWords)
{
    EXPECT_EQ(Lines({"    Wind: 12.5 m/s, heading 270 degrees, gust 0 m/s."}), answerTo("wind set 12.5 270"));
    EXPECT_EQ(12.5, sandbox.simulation().wind().speed);
    EXPECT_EQ(270.0, sandbox.simulation().wind().heading);
}

TEST_F(WindCommand, IsSetBySwitchesInAnyOrder)
{
    EXPECT_EQ(Lines({"    Wind: 12.5 m/s, heading 270 degrees, gust 0 m/s."}),
              answerTo("wind set /heading=270 /speed=12.5"));
}

TEST_F(WindCommand, KeepsWhatSetDoesNotName)
{
    EXPECT_EQ(Lines({"    Wind: 3 m/s, heading 90 degrees, gust 0 m/s."}), answerTo("wind set 3"));
    EXPECT_EQ(Lines({"    Wind: 3 m/s, heading 0.5 degrees, gust 0 m/s."}),
              answerTo("wind set /heading=0.5"));
}

TEST_F(WindCommand, TakesTheLimitsAndSpacesBetweenWords)
{
    EXPECT_EQ(Lines({"    Wind: 60 m/s, heading 0 degrees, gust 0 m/s."}), answerTo("wind set  60   0"));
    EXPECT_EQ(Lines({"    Wind: 0 m/s, heading 0 degrees, gust 0 m/s."}), answerTo("wind set /speed=\"0\""));
}

TEST_F(WindCommand, RefusesBadValuesAndChangesNothing)
{
    for (const char* const words : {"",
                                    "fast",
                                    "-1",
                                    "60.1",
                                    "nan",
                                    "inf",
                                    "0x10",
                                    "12,5",
                                    "12.5x",
                                    "5 360",
                                    "5 -1",
                                    "5 east",
                                    "5 6 7",
                                    "/speed",
                                    "/speed=",
                                    "/speed=61",
                                    "/heading=360",
                                    "/speed=5 /heading=east",
                                    "/speed=5 /speed=6",
                                    "5 /heading=3",
                                    "\"5\"",
                                    "1e999"}) {
        EXPECT_EQ(kBadSet, answerTo(std::string("wind set ") + words)) << words;
        EXPECT_EQ(12.0, sandbox.simulation().wind().speed) << words;
        EXPECT_EQ(90.0, sandbox.simulation().wind().heading) << words;
    }
}

TEST_F(WindCommand, AnswersAnUnknownSwitchAndChangesNothing)
{
    EXPECT_EQ(Lines({"    Unrecognized switch '/colour'", kSetDescription, kSetHelp}),
              answerTo("wind set /speed=5 /colour=red"));
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
}

TEST_F(WindCommand, GustsWithFifteenMetresASecondOrAsToldTo)
{
    EXPECT_EQ(Lines({"    Wind: 12 m/s, heading 90 degrees, gust 15 m/s."}), answerTo("wind gust"));
    EXPECT_EQ(Lines({"    Wind: 12 m/s, heading 90 degrees, gust 2.5 m/s."}), answerTo("wind gust 2.5"));
    EXPECT_EQ(2.5, sandbox.simulation().gust());
}

TEST_F(WindCommand, RefusesBadGusts)
{
    for (const char* const words : {"0", "-3", "60.5", "x", "1 2"}) {
        EXPECT_EQ(kBadGust, answerTo(std::string("wind gust ") + words)) << words;
    }
    EXPECT_EQ(Lines({"    Unrecognized switch '/hard'", kGustDescription, kGustHelp}),
              answerTo("wind gust /hard"));
    EXPECT_EQ(0.0, sandbox.simulation().gust());
}

TEST_F(WindCommand, IsDescribedByHelp)
{
    EXPECT_EQ(Lines({kSetDescription, kSetHelp}), answerTo("help wind set"));
    EXPECT_EQ(Lines({kShowDescription, "    Usage: wind show"}), answerTo("help wind show"));
    EXPECT_EQ(Lines({kGustDescription, kGustHelp}), answerTo("help wind gust"));
}

} // namespace
} // namespace zephyr::test
