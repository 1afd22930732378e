#include "terminal/LineHistory.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace zephyr::console::remote {
namespace {

class LineHistoryTest : public ::testing::Test
{
protected:
    QString file(const char* name = "history") const
    {
        return QString::fromStdString((mFolder.path() / name).string());
    }

    /// The lines, oldest first.
    static std::vector<std::wstring> linesOf(const LineHistory& history)
    {
        std::vector<std::wstring> lines;
        HistEventW event{};
        for (int found = history_w(history.handle(), &event, H_LAST); found == 0;
             found = history_w(history.handle(), &event, H_PREV)) {
            lines.emplace_back(event.str);
        }
        return lines;
    }

    const test::TemporaryDirectory mFolder;
};

TEST_F(LineHistoryTest, KeepsLinesInAFile)
{
    LineHistory history;
    history.setFile(file("new/folder/history"));
    history.add(L"one");
    history.add(L"zwei \u00e4 \U0001F32C");
    EXPECT_EQ("one\nzwei \u00e4 \U0001F32C\n", mFolder.read("new/folder/history"));
    LineHistory next;
    next.setFile(file("new/folder/history"));
    EXPECT_EQ((std::vector<std::wstring>{L"one", L"zwei \u00e4 \U0001F32C"}), linesOf(next));
}

TEST_F(LineHistoryTest, AddsNoEmptyLineAndNoneTwiceInARow)
{
    LineHistory history;
    history.setFile(file());
    for (const wchar_t* const line : {L"a", L"", L"a", L"b", L"a"}) {
        history.add(line);
    }
    EXPECT_EQ("a\nb\na\n", mFolder.read("history"));
    EXPECT_EQ((std::vector<std::wstring>{L"a", L"b", L"a"}), linesOf(history));
}

TEST_F(LineHistoryTest, ComparesWithTheNewestLineWhicheverWasLookedAt)
{
    LineHistory history;
    history.setFile(file());
    history.add(L"a");
    history.add(L"b");
    HistEventW event{};
    history_w(history.handle(), &event, H_LAST); // "a"
    history.add(L"a");
    EXPECT_EQ("a\nb\na\n", mFolder.read("history"));
}

TEST_F(LineHistoryTest, CutsTheFileToTheNewestThousandLines)
{
    std::string lines;
    for (int i = 0; i < 1500; ++i) {
        lines += std::to_string(i) + "\n";
    }
    mFolder.write("history", lines);
    LineHistory history;
    history.setFile(file());
    EXPECT_EQ(1000U, linesOf(history).size());
    EXPECT_EQ(L"1499", linesOf(history).back());
    const std::string kept = mFolder.read("history");
    EXPECT_EQ("500\n", kept.substr(0, 4));
    EXPECT_EQ("1499\n", kept.substr(kept.size() - 5));
    history.add(L"new");
    EXPECT_EQ(1000U, linesOf(history).size());
}

TEST_F(LineHistoryTest, SharesAFileWithOtherPrograms)
{
    constexpr int kLines = 200;
    const auto addLines = [this](wchar_t name) {
        LineHistory history;
        history.setFile(file());
        for (int i = 0; i < kLines; ++i) {
            history.add(name + std::to_wstring(i));
        }
    };
    std::thread other(addLines, L'a');
    addLines(L'b');
    other.join();
    LineHistory history;
    history.setFile(file());
    EXPECT_EQ(std::size_t{2} * kLines, linesOf(history).size());
}

TEST_F(LineHistoryTest, DoesWithoutAFileThatCantBeUsed)
{
    for (const QString& path : {QString(), file("."), QString("/dev/null"), QString("/proc/none/history")}) {
        LineHistory history;
        history.setFile(path);
        history.add(L"a");
        EXPECT_EQ((std::vector<std::wstring>{L"a"}), linesOf(history)) << path.toStdString();
    }
}

} // namespace
} // namespace zephyr::console::remote
