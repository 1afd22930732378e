#include "sandbox/SandboxFixture.h"

namespace zephyr::test {
namespace {

using ObstacleCommand = SandboxFixture;

const std::string kAddUsage = "obstacle add X Y [RADIUS]";

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
    const std::string noX = "x: nothing given; expected a number from 0 to 160 m.";
    const std::string noY = "y: nothing given; expected a number from 0 to 90 m.";
    expectErrors("obstacle add",
                 {{"", noX},
                  {"5", noY},
                  {"5 5 5 5", "obstacle add: '5' is one word too many."},
                  {"-1 5", "x: -1 is below 0 m."},
                  {"160.1 5", "x: 160.1 is above 160 m."},
                  {"5 -1", "y: -1 is below 0 m."},
                  {"5 90.1", "y: 90.1 is above 90 m."},
                  {"5 5 0.9", "radius: 0.9 is below 1 m."},
                  {"5 5 12.1", "radius: 12.1 is above 12 m."},
                  {"x 5", "x: 'x' is not a number from 0 to 160 m."},
                  {"5 nan", "y: 'nan' is not a number from 0 to 90 m."},
                  {"5 5 big", "radius: 'big' is not a number from 1 to 12 m."},
                  {"/x=5", noY},
                  {"/y=5", noX},
                  {"/radius=5", noX},
                  {"/x=5 /y=", "y: '' is not a number from 0 to 90 m."},
                  {"/x=5 /y=5 /x=6", "x: given twice."},
                  {"5 5 /x=6", "x: given twice, by its place and by its name."},
                  {"/x=5 /y=5 /radius=0", "radius: 0 is below 1 m."},
                  {"/x=5 /y=5 /size=5", "obstacle add: '/size' is not /x, /y or /radius."}},
                 kAddUsage);
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
    EXPECT_EQ(Lines({"    There is no obstacle 0."}), answerTo("obstacle remove 0"));
    EXPECT_EQ(Lines({"    There is no obstacle 7."}), answerTo("obstacle remove 7"));
    expectErrors("obstacle remove",
                 {{"", "number: nothing given; expected a whole number."},
                  {"-1", "number: -1 is below 0."},
                  {"1.5", "number: '1.5' is not a whole number."},
                  {"all", "number: 'all' is not a whole number."},
                  {"1 2", "obstacle remove: '2' is one word too many."},
                  {"99999999999999999999", "number: 99999999999999999999 is above 18446744073709551615."}},
                 "obstacle remove NUMBER");
    EXPECT_EQ(6U, sandbox.simulation().obstacles().size());
}

TEST_F(ObstacleCommand, ClearsThemAll)
{
    expectErrors("obstacle clear", {{"now", "obstacle clear: 'now' is one word too many."}},
                 "obstacle clear");
    EXPECT_EQ(Lines({"    There are no obstacles."}), answerTo("obstacle clear"));
    EXPECT_EQ(Lines({"    There are no obstacles."}), answerTo("obstacle list"));
    EXPECT_EQ(Lines({"    There is no obstacle 1."}), answerTo("obstacle remove 1"));
}

TEST_F(ObstacleCommand, RefusesWordsAfterList)
{
    expectErrors("obstacle list", {{"all", "obstacle list: 'all' is one word too many."}}, "obstacle list");
}

TEST_F(ObstacleCommand, IsDescribedByHelp)
{
    EXPECT_EQ(Lines({"    Places a disc, X metres from the left and Y from the top.",
                     "    Usage: obstacle add X Y [RADIUS]\n"
                     "       X or /x=NUMBER: a number from 0 to 160 m.\n"
                     "       Y or /y=NUMBER: a number from 0 to 90 m.\n"
                     "       RADIUS or /radius=NUMBER: a number from 1 to 12 m, by default 5 m."}),
              answerTo("help obstacle add"));
    EXPECT_EQ(Lines({"    Removes an obstacle; those behind it move up one number.",
                     "    Usage: obstacle remove NUMBER\n"
                     "       NUMBER: a whole number. As 'obstacle list' shows it."}),
              answerTo("help obstacle remove"));
}

} // namespace
} // namespace zephyr::test
