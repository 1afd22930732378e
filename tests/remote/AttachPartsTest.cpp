#include "attach/Answer.h"
#include "attach/HistoryPlace.h"
#include "attach/Listing.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace zephyr::attach {
namespace {

using console::remote::Entry;
using console::remote::RunningProgram;

/// The texts that answer a line which wrote these entries.
std::vector<std::string> answerOf(const std::vector<Entry>& entries)
{
    Answer answer;
    std::vector<std::string> texts;
    for (const Entry& entry : entries) {
        for (const Entry& printed : answer.add(entry)) {
            texts.push_back(printed.text.toStdString());
        }
    }
    return texts;
}

Entry input(const char* text) { return {0, Entry::Type::Input, text}; }
Entry output(const char* text) { return {0, Entry::Type::Output, text}; }

using Texts = std::vector<std::string>;

TEST(Answer, HasNoEchoAndNotTheEmptyEntryAtTheEnd)
{
    EXPECT_EQ((Texts{"a", "b"}), answerOf({input("help"), output("a"), output("b"), output("")}));
    EXPECT_EQ(Texts{}, answerOf({input("echo"), output("")}));
}

TEST(Answer, HasTheEmptyEntriesBetweenOthers)
{
    EXPECT_EQ((Texts{"", "a", "", "", "b", ""}), answerOf({input("help"), output(""), output("a"), output(""),
                                                           output(""), output("b"), output(""), output("")}));
}

TEST(Answer, HasWhatTheLinesOfAnAliasWriteWithoutTheirEchoes)
{
    EXPECT_EQ((Texts{"a", "b"}), answerOf({input("both"), input("one"), output("a"), output(""), input("two"),
                                           output("b"), output("")}));
}

TEST(Answer, HasQuestions)
{
    EXPECT_EQ((Texts{"What do you want to do?"}),
              answerOf({input("run"), {1, Entry::Type::Prompt, "What do you want to do?"}, output("")}));
}

TEST(Answer, SaysAReasonThatIsInOneOfItsLastEntries)
{
    Answer answer;
    EXPECT_FALSE(answer.says("75 is above 60"));
    answer.add(output("    speed: 75 is above 60 m/s."));
    answer.add(output(""));
    EXPECT_TRUE(answer.says("speed: 75 is above 60 m/s."));
    EXPECT_FALSE(answer.says("speed: 80 is above 60 m/s."));
}

TEST(Listing, HasTheNumbersInAColumn)
{
    EXPECT_EQ("sandbox    4711\n"
              "sandbox-2  99 (doesn't answer)\n",
              listing({{"sandbox", 4711, true}, {"sandbox-2", 99, false}}));
    EXPECT_EQ("", listing({}));
}

TEST(Listing, IsAnObjectALineAsJson)
{
    EXPECT_EQ("{\"answers\":true,\"name\":\"sandbox\",\"pid\":4711}\n"
              "{\"answers\":false,\"name\":\"sandbox-2\",\"pid\":99}\n",
              jsonListing({{"sandbox", 4711, true}, {"sandbox-2", 99, false}}));
}

TEST(HistoryPlace, IsInTheFolderForStateWhichItMakes)
{
    const test::TemporaryDirectory directory;
    const QString state = QString::fromStdString((directory.path() / "a/state").string());
    qputenv("XDG_STATE_HOME", state.toUtf8());
    EXPECT_EQ(state + "/zephyr-console/history", historyFile());
    qunsetenv("XDG_STATE_HOME");
    EXPECT_EQ(std::filesystem::perms(0700),
              std::filesystem::status(directory.path() / "a/state/zephyr-console").permissions());
}

TEST(HistoryPlace, IsInTheHomeWithoutOne)
{
    const test::TemporaryDirectory directory;
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", QByteArray::fromStdString(directory.path().string()));
    for (const char* const state : {"", "relative"}) {
        qputenv("XDG_STATE_HOME", state);
        EXPECT_EQ(QString::fromStdString(directory.path().string()) + "/.local/state/zephyr-console/history",
                  historyFile());
    }
    qunsetenv("XDG_STATE_HOME");
    qputenv("HOME", home);
    EXPECT_TRUE(directory.has(".local/state/zephyr-console"));
}

} // namespace
} // namespace zephyr::attach
