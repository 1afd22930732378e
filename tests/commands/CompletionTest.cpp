#include "commands/Wind.h"
#include "support/TemporaryDirectory.h"

namespace zephyr::test {
namespace {

using namespace console::commands;

using CommandCompletion = WindFixture;

TEST_F(CommandCompletion, OffersSubCommands)
{
    EXPECT_EQ(Texts({"wind set", "wind mode", "wind show"}), completionsOf("wind "));
    EXPECT_EQ(Texts({"wind set", "wind show"}), completionsOf("wind s"));
    EXPECT_EQ(Texts(), completionsOf("wind x"));
}

TEST_F(CommandCompletion, OffersNothingUntilTheWordIsFinished)
{
    EXPECT_EQ(Texts(), completionsOf("wind"));
    EXPECT_EQ(Texts(), completionsOf("wind set"));
    EXPECT_EQ(Texts(), completionsOf("wind mode gusty"));
}

TEST_F(CommandCompletion, OffersSwitchesThatAreNotThereYet)
{
    EXPECT_EQ(Texts({"wind set /heading="}), completionsOf("wind set "));
    EXPECT_EQ(Texts({"wind set 3 /heading="}), completionsOf("wind set 3 "));
    EXPECT_EQ(Texts({"wind set 3 /heading="}), completionsOf("wind set 3 /h"));
    EXPECT_EQ(Texts(), completionsOf("wind set /heading=3 "));
    EXPECT_EQ(Texts(), completionsOf("wind set /x"));
}

TEST_F(CommandCompletion, OffersSwitchesWithTheirValues)
{
    EXPECT_EQ(Texts({"wind mode still /loud", "wind mode still /steps=", "wind mode still /steps=1",
                     "wind mode still /steps=10", "wind mode still /steps=100"}),
              completionsOf("wind mode still "));
    EXPECT_EQ(Texts({"wind mode /steps=1", "wind mode /steps=10", "wind mode /steps=100"}),
              completionsOf("wind mode /s"));
    EXPECT_EQ(Texts({"wind mode /steps=10", "wind mode /steps=100"}), completionsOf("wind mode /steps=1"));
    EXPECT_EQ(Texts({"wind mode still /loud /steps=1", "wind mode still /loud /steps=10",
                     "wind mode still /loud /steps=100"}),
              completionsOf("wind mode still /loud "));
}

TEST_F(CommandCompletion, OffersTheValuesOfAType)
{
    EXPECT_EQ(Texts({"wind mode gusty"}), completionsOf("wind mode g"));
    add(mConsole, U"lamp", U"", [](bool) {});
    EXPECT_EQ(Texts({"lamp on", "lamp off"}), completionsOf("lamp "));
    EXPECT_EQ(Texts({"lamp off"}), completionsOf("lamp of"));
    EXPECT_EQ(Texts(), completionsOf("lamp on "));
}

TEST_F(CommandCompletion, OffersWhatTheHostSays)
{
    add(
        mConsole, U"load", U"", [](std::string) {},
        argument(U"scene").candidates([] { return std::vector<std::u32string>{U"forest", U"long storm"}; }));
    EXPECT_EQ(Texts({"load forest", "load \"long storm\""}), completionsOf("load "));
    EXPECT_EQ(Texts({"load \"long storm\""}), completionsOf("load lo"));
    EXPECT_EQ(Texts({"load \"long storm\""}), completionsOf("load \"lo"));
    EXPECT_EQ(Texts({"load \"long storm\""}), completionsOf("load \"long "));
    EXPECT_EQ(Texts({"load \"long storm\""}), completionsOf("load \"long st"));
}

TEST_F(CommandCompletion, OffersValuesByPlaceOrByName)
{
    add(
        mConsole, U"place", U"", [](double, std::optional<double>) {},
        argument(U"x").offers(1, 2.5).orByName(), argument(U"y").offers(3).orByName());
    EXPECT_EQ(
        Texts({"place /x=", "place /y=", "place /x=1", "place /x=2.5", "place /y=3", "place 1", "place 2.5"}),
        completionsOf("place "));
    EXPECT_EQ(Texts({"place 1 /y=3", "place 1 3"}), completionsOf("place 1 "));
    EXPECT_EQ(Texts({"place /x=1 /y=3", "place /x=1 3"}), completionsOf("place /x=1 "));
    EXPECT_EQ(Texts({"place /x=2.5"}), completionsOf("place /x=2"));
    EXPECT_EQ(Texts(), textsOfAnswer("place 7"));
}

TEST_F(CommandCompletion, QuotesWhatWouldBeReadAsASwitch)
{
    const auto text = argument(U"text").offers("/a", "/loud");
    add(mConsole, U"say", U"", [](std::string, bool) {}, text, flag(U"loud"));
    EXPECT_EQ(Texts({"say /loud", "say \"/a\"", "say \"/loud\""}), completionsOf("say /"));
    EXPECT_EQ(Texts({"say \"/a\"", "say \"/loud\""}), completionsOf("say \"/"));
    add(mConsole, U"tell", U"", [](std::string) {}, text);
    EXPECT_EQ(Texts({"tell /a", "tell /loud"}), completionsOf("tell /"));
}

TEST_F(CommandCompletion, OffersFiles)
{
    const TemporaryDirectory directory;
    const WorkingDirectory inside(directory.path());
    directory.write("one.txt", "");
    directory.write("two words.txt", "");
    directory.write("deep/three.txt", "");
    directory.write(".hidden", "");
    add(mConsole, U"show", U"", [](std::filesystem::path, bool) {}, argument(U"file"), flag(U"all"));
    EXPECT_EQ(Texts({"show /all", "show deep/", "show one.txt", "show \"two words.txt\""}),
              completionsOf("show "));
    EXPECT_EQ(Texts({"show one.txt"}), completionsOf("show o"));
    EXPECT_EQ(Texts({"show deep/three.txt"}), completionsOf("show deep/"));
    EXPECT_EQ(Texts({"show .hidden"}), completionsOf("show ."));
    EXPECT_EQ(Texts({"show \"two words.txt\""}), completionsOf("show \"two w"));
    EXPECT_EQ(Texts(), completionsOf("show none/"));
    const std::string absolute = directory.path().string();
    EXPECT_EQ(Texts({"show " + absolute + "/one.txt"}), completionsOf("show " + absolute + "/o"));
}

TEST_F(CommandCompletion, OffersEachFurtherWordOfTheRest)
{
    add(mConsole, U"modes", U"", [](std::vector<Mode>) {});
    EXPECT_EQ(Texts({"modes still still"}), completionsOf("modes still sti"));
}

TEST_F(CommandCompletion, OffersNothingForARedirection)
{
    EXPECT_EQ(Texts(), completionsOf("wind show > s"));
}

TEST_F(CommandCompletion, OffersASwitchsValueWithBlanks)
{
    add(
        mConsole, U"load", U"", [](std::optional<std::string>) {},
        option(U"scene").choices("long storm", "gap"));
    EXPECT_EQ(Texts({"load /scene=\"long storm\"", "load /scene=gap"}), completionsOf("load "));
    EXPECT_EQ(Texts({"load /scene=\"long storm\""}), completionsOf("load /scene=\"long s"));
}

} // namespace
} // namespace zephyr::test
