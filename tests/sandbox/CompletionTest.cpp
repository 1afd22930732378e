#include "sandbox/SandboxFixture.h"
#include "support/TemporaryDirectory.h"

namespace zephyr::test {
namespace {

class Completion : public SandboxFixture
{
protected:
    TemporaryDirectory directory;
    WorkingDirectory inside{directory.path()}; // whose files are offered
};

/// The line `begin`, completed with each heading that Tab offers.
Lines headingsAfter(const std::string& begin)
{
    return {begin + " /heading=0", begin + " /heading=90", begin + " /heading=180", begin + " /heading=270"};
}

/// The same, and then with each heading as a word.
Lines headingsAndWordsAfter(const std::string& begin)
{
    Lines lines = headingsAfter(begin);
    for (const char* const word : {" 0", " 90", " 180", " 270"}) {
        lines.push_back(begin + word);
    }
    return lines;
}

TEST_F(Completion, OffersAllSubCommandsAfterTheCommand)
{
    EXPECT_EQ(Lines({"wind gust", "wind set", "wind show"}), completionsOf("wind "));
    EXPECT_EQ(Lines({"sim pause", "sim record", "sim reset", "sim resume", "sim speed", "sim step"}),
              completionsOf("sim "));
    EXPECT_EQ(Lines({"particles clear", "particles count"}), completionsOf("particles "));
    EXPECT_EQ(Lines({"obstacle add", "obstacle clear", "obstacle list", "obstacle remove"}),
              completionsOf("obstacle "));
}

TEST_F(Completion, OffersSubCommandsThatBeginWithTheTypedText)
{
    EXPECT_EQ(Lines({"wind set", "wind show"}), completionsOf("wind s"));
    EXPECT_EQ(Lines({"sim record", "sim reset", "sim resume"}), completionsOf("sim re"));
    EXPECT_EQ(Lines(), completionsOf("sim x"));
}

TEST_F(Completion, OffersSwitchesBareAndWithTheirValuesAfterASubCommandAndThenWords)
{
    EXPECT_EQ(Lines({"wind set /speed=", "wind set /heading=", "wind set /speed=0", "wind set /speed=5",
                     "wind set /speed=12", "wind set /speed=30", "wind set /heading=0",
                     "wind set /heading=90", "wind set /heading=180", "wind set /heading=270", "wind set 0",
                     "wind set 5", "wind set 12", "wind set 30"}),
              completionsOf("wind set "));
    EXPECT_EQ(Lines({"sim record /path=", "sim record /steps=", "sim record /steps=120",
                     "sim record /steps=600", "sim record /steps=3600"}),
              completionsOf("sim record "));
}

TEST_F(Completion, OffersFilesToRecordTo)
{
    directory.write("run.csv", "");
    EXPECT_EQ(Lines({"sim record /path=run.csv"}), completionsOf("sim record /p"));
    EXPECT_EQ(Lines({"sim record /path=run.csv"}), completionsOf("sim record /path=r"));
}

TEST_F(Completion, OffersSwitchesThatBeginWithTheTypedText)
{
    EXPECT_EQ(headingsAfter("wind set"), completionsOf("wind set /h"));
    EXPECT_EQ(Lines({"sim record /path="}), completionsOf("sim record /p"));
    EXPECT_EQ(Lines({"obstacle add /radius=3", "obstacle add /radius=5", "obstacle add /radius=10"}),
              completionsOf("obstacle add /radius"));
    EXPECT_EQ(Lines(), completionsOf("wind set /x"));
}

TEST_F(Completion, OffersTheSwitchesThatAreNotThereYet)
{
    EXPECT_EQ(headingsAndWordsAfter("wind set /speed=5"), completionsOf("wind set /speed=5 "));
    EXPECT_EQ(Lines(), completionsOf("wind set /speed=5 /heading=3 "));
    EXPECT_EQ(headingsAndWordsAfter("wind set 5"), completionsOf("wind set 5 "));
}

TEST_F(Completion, OffersValuesWhereThereAreNoSwitches)
{
    EXPECT_EQ(Lines({"wind gust 5", "wind gust 15", "wind gust 30"}), completionsOf("wind gust "));
    EXPECT_EQ(Lines({"wind gust 30"}), completionsOf("wind gust 3"));
    EXPECT_EQ(Lines({"particles count 1000", "particles count 4000", "particles count 20000"}),
              completionsOf("particles count "));
    EXPECT_EQ(Lines({"sim step 1", "sim step 120", "sim step 600"}), completionsOf("sim step "));
    EXPECT_EQ(Lines({"sim speed 0.5", "sim speed 1", "sim speed 2"}), completionsOf("sim speed "));
}

TEST_F(Completion, OffersValuesAfterTheEqualsSignOfASwitch)
{
    EXPECT_EQ(Lines({"wind set /speed=0", "wind set /speed=5", "wind set /speed=12", "wind set /speed=30"}),
              completionsOf("wind set /speed="));
    EXPECT_EQ(headingsAfter("wind set /speed=5"), completionsOf("wind set /speed=5 /heading="));
    EXPECT_EQ(Lines({"sim record /steps=120", "sim record /steps=600", "sim record /steps=3600"}),
              completionsOf("sim record /steps="));
    EXPECT_EQ(Lines({"obstacle add /x=40 /radius=3", "obstacle add /x=40 /radius=5",
                     "obstacle add /x=40 /radius=10"}),
              completionsOf("obstacle add /x=40 /radius="));
}

TEST_F(Completion, OffersValuesThatBeginWithTheTypedText)
{
    EXPECT_EQ(Lines({"wind set /speed=12"}), completionsOf("wind set /speed=1"));
    EXPECT_EQ(Lines({"wind set /heading=270"}), completionsOf("wind set /heading=27"));
}

TEST_F(Completion, GoesOnToTheOtherSwitchesAfterAWholeValue)
{
    EXPECT_EQ(headingsAndWordsAfter("wind set /speed=12"), completionsOf("wind set /speed=12 "));
    EXPECT_EQ(headingsAndWordsAfter("wind set /speed=17"), completionsOf("wind set /speed=17 "));
    EXPECT_EQ(Lines({"sim record /path=a.csv /steps=120", "sim record /path=a.csv /steps=600",
                     "sim record /path=a.csv /steps=3600"}),
              completionsOf("sim record /path=a.csv "));
}

TEST_F(Completion, LeadsFromTheBeginningOfASwitchToItsValuesByTabAlone)
{
    sandbox.console().open();
    driver.type("wind set /sp");
    Lines shown;
    for (int i = 0; i < 5; ++i) {
        driver.press(Qt::Key_Tab);
        shown.push_back(driver.input());
    }
    EXPECT_EQ(Lines({"wind set /speed=0", "wind set /speed=5", "wind set /speed=12", "wind set /speed=30",
                     "wind set /speed=0"}),
              shown);

    driver.press(Qt::Key_Backtab);
    driver.type(" ");
    driver.press(Qt::Key_Tab);
    driver.press(Qt::Key_Tab);
    EXPECT_EQ("wind set /speed=30 /heading=90", driver.input());
}

TEST_F(Completion, OffersNothingWhereNothingFollows)
{
    EXPECT_EQ(Lines(), completionsOf("wind show "));
    EXPECT_EQ(Lines(), completionsOf("wind blow hard"));
    EXPECT_EQ(Lines(), completionsOf("quit "));
}

TEST_F(Completion, LeavesTheNameOfARedirectFileAlone)
{
    EXPECT_EQ(Lines(), completionsOf("wind > f"));
    EXPECT_EQ(Lines(), completionsOf("wind >! "));
}

} // namespace
} // namespace zephyr::test
