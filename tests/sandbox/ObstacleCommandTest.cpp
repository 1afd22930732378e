#include "sandbox/SandboxFixture.h"

namespace zephyr::test {
namespace {

using ObstacleCommand = SandboxFixture;

constexpr char kAddDescription[] =
    "    Places a disc that the wind flows around, X metres from the left and Y from the top.";
constexpr char kAddHelp[] =
    "    Usage: obstacle add X Y [RADIUS], or obstacle add /x=X /y=Y [/radius=RADIUS].  "
    "X is 0 to 160, Y 0 to 90, RADIUS 1 to 12 m, 5 if left out.";
constexpr char kRemoveDescription[] = "    Removes an obstacle; those behind it move up one number.";
constexpr char kRemoveHelp[] = "    Usage: obstacle remove N.  N is a number that 'obstacle list' shows.";

const Lines kBadAdd{"    Invalid usage", "    ", kAddDescription, kAddHelp};
const Lines kBadRemove{"    Invalid usage", "    ", kRemoveDescription, kRemoveHelp};

TEST_F(ObstacleCommand, ListsTheFirstObstacles)
{
    EXPECT_EQ(
        Lines({"    Obstacle 1: x 38 m, y 30 m, radius 7 m.", "    Obstacle 2: x 46 m, y 66 m, radius 9 m.",
               "    Obstacle 3: x 80 m, y 44 m, radius 11 m.", "    Obstacle 4: x 112 m, y 20 m, radius 6 m.",
               "    Obstacle 5: x 120 m, y 68 m, radius 8 m.",
               "    Obstacle 6: x 142 m, y 42 m, radius 5 m."}),
        answerTo("obstacle list"));
}

TEST_F(ObstacleCommand, AddsByPlainWordsAndBySwitches)
{
    EXPECT_EQ(Lines({"    Obstacle 7: x 10.5 m, y 20 m, radius 5 m."}), answerTo("obstacle add 10.5 20"));
    EXPECT_EQ(Lines({"    Obstacle 8: x 160 m, y 0 m, radius 1 m."}), answerTo("obstacle add 160 0 1"));
    EXPECT_EQ(Lines({"    Obstacle 9: x 0 m, y 90 m, radius 12 m."}),
              answerTo("obstacle add /radius=12 /y=90 /x=0"));

    EXPECT_EQ((sandbox::Obstacle{{0.0, 90.0}, 12.0}), sandbox.simulation().obstacles().back());
}

TEST_F(ObstacleCommand, RefusesBadObstaclesAndAddsNothing)
{
    for (const char* const words : {"", "5", "5 5 5 5", "-1 5", "160.1 5", "5 -1", "5 90.1", "5 5 0.9",
                                    "5 5 12.1", "x 5", "5 nan", "5 5 big", "/x=5", "/y=5", "/radius=5",
                                    "/x=5 /y=", "5 /y=5", "/x=5 /y=5 /x=6", "/x=5 /y=5 /radius=0"}) {
        EXPECT_EQ(kBadAdd, answerTo(std::string("obstacle add ") + words)) << words;
    }
    EXPECT_EQ(Lines({"    Unrecognized switch '/size'", kAddDescription, kAddHelp}),
              answerTo("obstacle add /x=5 /y=5 /size=5"));
    EXPECT_EQ(6U, sandbox.simulation().obstacles().size());
}

TEST_F(ObstacleCommand, SaysWhenThereIsNoRoomForMore)
{
    answerTo("obstacle clear");
    for (int i = 0; i < 24; ++i) {
        answerTo("obstacle add 5 5 1");
    }
    EXPECT_EQ(24U, sandbox.simulation().obstacles().size());
    EXPECT_EQ(Lines({"    No room: there are 24 obstacles, which is the most."}),
              answerTo("obstacle add 5 5 1"));
    EXPECT_EQ(24U, sandbox.simulation().obstacles().size());
}

TEST_F(ObstacleCommand, RemovesByNumber)
{
    EXPECT_EQ(Lines({"    Removed obstacle 2."}), answerTo("obstacle remove 2"));
    EXPECT_EQ(5U, sandbox.simulation().obstacles().size());
    EXPECT_EQ("    Obstacle 2: x 80 m, y 44 m, radius 11 m.", answerTo("obstacle list")[1]);
}

TEST_F(ObstacleCommand, RefusesNumbersThatNoObstacleHas)
{
    for (const char* const words : {"", "0", "7", "-1", "1.5", "all", "1 2", "99999999999999999999"}) {
        EXPECT_EQ(kBadRemove, answerTo(std::string("obstacle remove ") + words)) << words;
    }
    EXPECT_EQ(6U, sandbox.simulation().obstacles().size());
}

TEST_F(ObstacleCommand, ClearsThemAll)
{
    EXPECT_EQ(Lines({"    Invalid usage", "    ", "    Removes all obstacles.", "    Usage: obstacle clear"}),
              answerTo("obstacle clear now"));
    EXPECT_EQ(Lines({"    There are no obstacles."}), answerTo("obstacle clear"));
    EXPECT_EQ(Lines({"    There are no obstacles."}), answerTo("obstacle list"));
    EXPECT_EQ(kBadRemove, answerTo("obstacle remove 1"));
}

TEST_F(ObstacleCommand, RefusesWordsAfterList)
{
    EXPECT_EQ(Lines({"    Invalid usage", "    ", "    Lists the obstacles with their numbers.",
                     "    Usage: obstacle list"}),
              answerTo("obstacle list all"));
}

} // namespace
} // namespace zephyr::test
