#include "commands/Wind.h"

#include <algorithm>

namespace zephyr::test {
namespace {

using namespace console::commands;

using CommandHelp = WindFixture;

const std::string kWind = "    Usage: wind set SPEED [/heading=NUMBER]\n"
                          "       wind mode MODE [/loud] [/steps=1|10|100]\n"
                          "       wind show\n"
                          "       The wind over the field.";

TEST_F(CommandHelp, ShowsUsageDescriptionAndSubCommands)
{
    EXPECT_EQ(Texts({kWind, "", "    mode: Sets how the wind blows.", "", "    set: Sets speed and heading.",
                     "", "    show: Shows the wind.", ""}),
              textsOfAnswer("help wind"));
}

TEST_F(CommandHelp, OfASubCommandShowsEachParameter)
{
    EXPECT_EQ(Texts({"    Sets speed and heading.", "    Usage: wind set SPEED [/heading=NUMBER]\n"
                                                    "       SPEED: a number from 0 to 60 m/s.\n"
                                                    "       /heading: a number from 0 to 360."}),
              textsOfAnswer("help wind set"));
    EXPECT_EQ(Texts({"    Sets how the wind blows.", "    Usage: wind mode MODE [/loud] [/steps=1|10|100]\n"
                                                     "       MODE: steady, gusty or still.\n"
                                                     "       /loud: a flag. Whether it howls.\n"
                                                     "       /steps: 1, 10 or 100, by default 10."}),
              textsOfAnswer("help wind mode"));
    EXPECT_EQ(Texts({"    Shows the wind.", "    Usage: wind show"}), textsOfAnswer("help wind show"));
}

TEST_F(CommandHelp, StandsBehindTheBareCommand)
{
    EXPECT_EQ((Lines{{"    What do you want to do?", console::Prompt, 4},
                     output(""),
                     output(kWind.substr(4), 4),
                     output(""),
                     output("mode: Sets how the wind blows.", 4),
                     output(""),
                     output("set: Sets speed and heading.", 4),
                     output(""),
                     output("show: Shows the wind.", 4),
                     output("")}),
              answer(U"wind"));
    EXPECT_EQ(answer(U"wind"), answer(U"wind  "));
}

TEST_F(CommandHelp, OfACommandWithoutSubCommandsIsNotEmpty)
{
    add(
        mConsole, U"fps", U"Limits the frames drawn in a second.", [](std::optional<int>) {},
        argument(U"limit").between(1, 240).unit(U"Hz"));
    add(mConsole, U"quit", U"Ends the program.", [] {});
    EXPECT_EQ(Texts({"    Usage: fps [LIMIT]\n"
                     "       Limits the frames drawn in a second.\n"
                     "       LIMIT: a whole number from 1 to 240 Hz.",
                     ""}),
              textsOfAnswer("help fps"));
    EXPECT_EQ(Texts({"    Usage: quit\n       Ends the program.", ""}), textsOfAnswer("help quit"));
}

TEST_F(CommandHelp, OfAllCommandsShowsEachParameter)
{
    const Texts all = textsOfAnswer("help *");
    const Texts set{"        set", "        Sets speed and heading.",
                    "        Usage: wind set SPEED [/heading=NUMBER]\n"
                    "       SPEED: a number from 0 to 60 m/s.\n"
                    "       /heading: a number from 0 to 360."};
    EXPECT_NE(all.end(), std::search(all.begin(), all.end(), set.begin(), set.end()));
}

TEST_F(CommandHelp, ListsTheCommand)
{
    const Texts listed = textsOfAnswer("help");
    EXPECT_EQ(1, std::count(listed.begin(), listed.end(), "    wind"));
}

TEST_F(CommandHelp, ShowsACommandsOwnFunctionBesideSubCommands)
{
    add(mConsole, command(U"mark", U"Marks a line.")
                      .run([](int) {}, argument(U"line"))
                      .sub(U"clear", U"Removes all marks.", [] {}));
    EXPECT_EQ(
        Texts({"    Usage: mark LINE\n       mark clear\n       Marks a line.\n       LINE: a whole number.",
               "", "    clear: Removes all marks.", ""}),
        textsOfAnswer("help mark"));
}

TEST_F(CommandHelp, NamesTheTypesOfWhatIsNotDescribed)
{
    add(mConsole, U"all", U"Takes all.",
        [](bool, char32_t, std::string, std::filesystem::path, std::chrono::milliseconds,
           std::vector<double>) {});
    EXPECT_EQ("    Usage: all SWITCH CHARACTER TEXT FILE DURATION [NUMBER...]\n"
              "       Takes all.\n"
              "       SWITCH: on or off.\n"
              "       CHARACTER: a character.\n"
              "       TEXT: a text.\n"
              "       FILE: a file.\n"
              "       DURATION: a duration such as 250ms, 1.5s or 2min.\n"
              "       NUMBER: a number.",
              textsOfAnswer("help all").front());
}

} // namespace
} // namespace zephyr::test
