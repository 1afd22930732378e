#include "commands/Wind.h"

#include <filesystem>

namespace zephyr::test {
namespace {

using namespace console::commands;

using CommandWords = WindFixture;

TEST_F(CommandWords, FillParametersByPlaceAndByName)
{
    EXPECT_EQ(Texts(), textsOfAnswer("wind set 3 /heading=90"));
    EXPECT_EQ(3, mSpeed);
    EXPECT_EQ(90, mHeading);
    EXPECT_EQ(Texts(), textsOfAnswer("wind set /heading=180 4.5"));
    EXPECT_EQ(4.5, mSpeed);
    EXPECT_EQ(180, mHeading);
}

TEST_F(CommandWords, LeaveOutWhatIsOptional)
{
    textsOfAnswer("wind set 3 /heading=90");
    textsOfAnswer("wind set 4");
    EXPECT_EQ(4, mSpeed);
    EXPECT_EQ(std::nullopt, mHeading);
}

TEST_F(CommandWords, ReadFlagsAndDefaults)
{
    EXPECT_EQ(Texts(), textsOfAnswer("wind mode gusty"));
    EXPECT_EQ(Mode::Gusty, mMode);
    EXPECT_FALSE(mLoud);
    EXPECT_EQ(10, mSteps);
    EXPECT_EQ(Texts(), textsOfAnswer("wind mode /steps=100 /loud still"));
    EXPECT_EQ(Mode::Still, mMode);
    EXPECT_TRUE(mLoud);
    EXPECT_EQ(100, mSteps);
}

TEST_F(CommandWords, MayHaveSeveralBlanksBetweenThem)
{
    EXPECT_EQ(Texts(), textsOfAnswer("wind   set  3   /heading=90  "));
    EXPECT_EQ(3, mSpeed);
}

TEST_F(CommandWords, LoseTheirQuotes)
{
    std::u32string first;
    std::u32string second;
    add(
        mConsole, U"say", U"",
        [&](const std::u32string& word, std::u32string more) {
            first = word;
            second = more;
        },
        argument(U"word"), option(U"more"));
    EXPECT_EQ(Texts(), textsOfAnswer("say \"two words\" /more=\"a = b\""));
    EXPECT_EQ(U"two words", first);
    EXPECT_EQ(U"a = b", second);
    EXPECT_EQ(Texts(), textsOfAnswer("say \"\" /more="));
    EXPECT_EQ(U"", first);
    EXPECT_EQ(U"", second);
    EXPECT_EQ(Texts(), textsOfAnswer("say \"/more=3\" /more=a=b"));
    EXPECT_EQ(U"/more=3", first);
    EXPECT_EQ(U"a=b", second);
}

TEST_F(CommandWords, ThatBeginWithASlashAreTextWhereThereAreNoSwitches)
{
    std::u32string text;
    add(mConsole, U"say", U"", [&](const std::u32string& word) { text = word; });
    EXPECT_EQ(Texts(), textsOfAnswer("say /home"));
    EXPECT_EQ(U"/home", text);
}

TEST_F(CommandWords, ThatBeginWithASlashMayNameAFile)
{
    std::filesystem::path file;
    bool loud = false;
    add(
        mConsole, U"load", U"",
        [&](std::filesystem::path path, bool isLoud) {
            file = path;
            loud = isLoud;
        },
        argument(U"file"), flag(U"loud"));
    EXPECT_EQ(Texts(), textsOfAnswer("load /tmp/x=1 /loud"));
    EXPECT_EQ("/tmp/x=1", file);
    EXPECT_TRUE(loud);
    EXPECT_EQ("    load: '/tmp/b' is not /loud.", textsOfAnswer("load /tmp/a /tmp/b").front());
}

TEST_F(CommandWords, ThatAreLeftGoToAVector)
{
    std::vector<int> numbers;
    std::u32string name;
    add(mConsole, U"sum", U"", [&](std::u32string first, std::vector<int> rest) {
        name = first;
        numbers = rest;
    });
    EXPECT_EQ(Texts(), textsOfAnswer("sum a 1 2 3"));
    EXPECT_EQ((std::vector<int>{1, 2, 3}), numbers);
    EXPECT_EQ(Texts(), textsOfAnswer("sum b"));
    EXPECT_EQ(std::vector<int>(), numbers);
    EXPECT_EQ(Texts({"    number: 'x' is not a whole number.", "    Usage: sum TEXT [NUMBER...]"}),
              textsOfAnswer("sum c 1 x"));
    EXPECT_EQ(U"b", name);
}

TEST_F(CommandWords, ReachACommandsOwnFunctionWhereNoSubCommandIsNamed)
{
    std::optional<int> own;
    bool cleared = false;
    add(mConsole, command(U"mark", U"Marks a line.")
                      .run([&](std::optional<int> line) { own = line; })
                      .sub(U"clear", U"Removes all marks.", [&] { cleared = true; }));
    EXPECT_EQ(Texts(), textsOfAnswer("mark 3"));
    EXPECT_EQ(3, own);
    EXPECT_EQ(Texts(), textsOfAnswer("mark"));
    EXPECT_EQ(std::nullopt, own);
    EXPECT_FALSE(cleared);
    EXPECT_EQ(Texts(), textsOfAnswer("mark clear"));
    EXPECT_TRUE(cleared);
}

TEST_F(CommandWords, MayBeTypedByPlaceOrByName)
{
    double x = 0;
    double y = 0;
    add(
        mConsole, U"place", U"",
        [&](double across, std::optional<double> down) { x = across, y = down.value_or(-1); },
        argument(U"x").between(0, 9).orByName(), argument(U"y").orByName());
    EXPECT_EQ(Texts(), textsOfAnswer("place 1 2"));
    EXPECT_EQ(1, x);
    EXPECT_EQ(2, y);
    EXPECT_EQ(Texts(), textsOfAnswer("place /y=4 /x=3"));
    EXPECT_EQ(3, x);
    EXPECT_EQ(4, y);
    EXPECT_EQ(Texts(), textsOfAnswer("place 5 /y=6"));
    EXPECT_EQ(6, y);
    const std::string usage = "    Usage: place X [Y]";
    EXPECT_EQ(Texts({"    x: given twice.", usage}), textsOfAnswer("place /x=5 /x=6"));
    EXPECT_EQ(Texts({"    x: 10 is above 9.", usage}), textsOfAnswer("place /x=10"));
    EXPECT_EQ(Texts({"    place: '/z' is not /x or /y.", usage}), textsOfAnswer("place /z=10"));
    EXPECT_EQ(5, x);
    EXPECT_EQ("    Usage: place X [Y]\n       \n       X or /x=NUMBER: a number from 0 to 9.\n       "
              "Y or /y=NUMBER: a number.",
              textsOfAnswer("help place").front());
}

TEST_F(CommandWords, FillByPlaceWhatIsNotGivenByNameBeforeThem)
{
    std::vector<double> place;
    add(
        mConsole, U"place", U"",
        [&](double x, double y, std::optional<double> z) { place = {x, y, z.value_or(-1)}; },
        argument(U"x").orByName(), argument(U"y").orByName(), argument(U"z").orByName());
    using Place = std::vector<double>;
    EXPECT_EQ(Texts(), textsOfAnswer("place /x=5 6"));
    EXPECT_EQ((Place{5, 6, -1}), place);
    EXPECT_EQ(Texts(), textsOfAnswer("place 1 /y=2 3"));
    EXPECT_EQ((Place{1, 2, 3}), place);
    const std::string usage = "    Usage: place X Y [Z]";
    EXPECT_EQ(Texts({"    place: '3' is one word too many, since y is given by name.", usage}),
              textsOfAnswer("place /y=5 1 2 3"));
    EXPECT_EQ(Texts({"    place: '3' is one word too many, since x and z are given by name.", usage}),
              textsOfAnswer("place /z=1 /x=4 2 3"));
    EXPECT_EQ(Texts({"    y: nothing given; expected a number.", usage}), textsOfAnswer("place /x=2 /z=3"));
    EXPECT_EQ(Texts({"    x: given twice, by its place and by its name.", usage}),
              textsOfAnswer("place 7 /x=8"));
    EXPECT_EQ(Texts({"    x: given twice.", usage}), textsOfAnswer("place /x=8 7 /x=8"));
}

TEST_F(CommandWords, OfARedirectionAreNotTheCommands)
{
    EXPECT_EQ(Texts(), textsOfAnswer("wind set 3 > /dev/null"));
    EXPECT_EQ(3, mSpeed);
}

TEST_F(CommandWords, AreReadInTheOrderOfTheParameters)
{
    add(mConsole, U"two", U"", [](int, int) {});
    EXPECT_EQ("    number1: 'a' is not a whole number.", textsOfAnswer("two a b").front());
}

int doubled(int number) { return 2 * number; }

TEST_F(CommandWords, GoToAPlainFunctionToo)
{
    add(mConsole, U"double", U"", &doubled);
    EXPECT_EQ(Texts({"    42"}), textsOfAnswer("double 21"));
}

} // namespace
} // namespace zephyr::test
