#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/KeyTable.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "support/SeenLine.h"
#include "zephyr/common/Angle.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using namespace test;

constexpr int kRounds = 120;
constexpr int kLinesOfAWriter = 1200;
constexpr int kWriters = 2;

/// What writer `writer` writes as its line `number`; how, changes from line to line.
LogLine writtenLine(int writer, int number)
{
    const std::string text = "writer " + std::to_string(writer) + " line " + std::to_string(number);
    switch (number % 4) {
    case 0: return {text, Output, 0};
    case 1: return {text, Prompt, 0};
    case 2: return {"   " + text, Prompt, 3};
    default: return {"  " + text, Output, 2};
    }
}

void writeLine(Console& console, int writer, int number)
{
    const std::string text = "writer " + std::to_string(writer) + " line " + std::to_string(number);
    switch (number % 4) {
    case 0: console.write(StringUtil::toU32String(text), Output); return;
    case 1: console.write(text, Prompt); return;
    case 2: console.writeIndented(text, Prompt, 3); return;
    default: console.writeIndented(StringUtil::toU32String(text), 2); return;
    }
}

/// Follows a log from snapshot to snapshot: what was in it stays, each line is whole, and each writer's lines
/// come in the order in which they were written.
class LogFollower
{
public:
    explicit LogFollower(std::vector<LogLine> otherLines) : mOtherLines(std::move(otherLines)) {}

    /// Empty when all is well, else what is wrong.
    std::string follow(const std::vector<LogEntry>& log)
    {
        if (log.size() < mLast.size()) {
            return "the log shrank";
        }
        if (!std::equal(mLast.begin(), mLast.end(), log.begin(), sameEntry)) {
            return "an old line changed";
        }
        for (std::size_t i = mLast.size(); i < log.size(); ++i) {
            if (!isKnown({StringUtil::toString(log[i].text), log[i].type, log[i].indent})) {
                return "an unknown line: " + StringUtil::toString(log[i].text);
            }
        }
        mLast = log;
        return {};
    }

    const std::array<int, kWriters>& linesOfWriters() const { return mNextLine; }
    std::size_t otherLines() const { return mOtherCount; }

private:
    static bool sameEntry(const LogEntry& left, const LogEntry& right)
    {
        return left.text == right.text && left.type == right.type && left.indent == right.indent;
    }

    bool isKnown(const LogLine& line)
    {
        for (std::size_t writer = 0; writer < mNextLine.size(); ++writer) {
            if (line == writtenLine(int(writer), mNextLine[writer])) {
                ++mNextLine[writer];
                return true;
            }
        }
        ++mOtherCount;
        return std::find(mOtherLines.begin(), mOtherLines.end(), line) != mOtherLines.end();
    }

    std::vector<LogLine> mOtherLines;
    std::vector<LogEntry> mLast;
    std::array<int, kWriters> mNextLine{};
    std::size_t mOtherCount = 0;
};

/// One thing that the host does, and the input line that it leaves.
struct Step
{
    std::function<void(Console&)> act;
    SeenLine expected;
};

Step typed(char32_t c, const SeenLine& expected)
{
    return {[c](Console& console) { console.keyPressed(KeyA, 0, std::u32string(1, c)); }, expected};
}

Step pressed(int key, const SeenLine& expected, int modifiers = 0)
{
    return {[key, modifiers](Console& console) { console.keyPressed(key, modifiers, {}); }, expected};
}

/// Types `text` at the end of the line `before`.
void append(std::vector<Step>& steps, const std::string& before, const std::string& text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string line = before + text.substr(0, i + 1);
        steps.push_back(typed(char32_t(text[i]), {line, unsigned(line.size())}));
    }
}

/// One round of a host's script, from an empty line to an empty line. It erases as much as it inserts, so
/// that the buffer is as large after it as before; its last line is "say beta".
std::vector<Step> script()
{
    std::vector<Step> steps;
    append(steps, "", "one");
    steps.push_back(pressed(KeyHome, {"one", 0}));
    steps.push_back(typed(U's', {"sone", 1}));
    steps.push_back(typed(U'a', {"saone", 2}));
    steps.push_back(typed(U'y', {"sayone", 3}));
    steps.push_back(typed(U' ', {"say one", 4}));
    steps.push_back(pressed(KeyRight, {"say one", 5}));
    steps.push_back(pressed(KeyLeft, {"say one", 4}, kControl));
    steps.push_back(pressed(KeyLeft, {"say one", 0}, kControl));
    steps.push_back(pressed(KeyRight, {"say one", 4}, kControl));
    steps.push_back(pressed(KeyDelete, {"say ", 4}, kControl));
    append(steps, "say ", "two");
    steps.push_back(pressed(KeyLeft, {"say two", 6}));
    steps.push_back(pressed(KeyBackspace, {"say to", 5}));
    steps.push_back(pressed(KeyPageUp, {"say to", 5}));
    steps.push_back(pressed(KeyEnd, {"say to", 6}));
    steps.push_back(pressed(KeyReturn, {"", 0}));
    steps.push_back({[](Console& console) { console.mouseWheel(Angle(30), Angle(0)); }, {"", 0}});
    steps.push_back(pressed(KeyUp, {"say to", 6}));
    steps.push_back(pressed(KeyUp, {"say beta", 8}));
    steps.push_back(pressed(KeyDown, {"say to", 6}));
    steps.push_back(pressed(KeyDown, {"", 0}));
    append(steps, "", "say ");
    steps.push_back(pressed(KeyTab, {"say alpha", 9}));
    steps.push_back(pressed(KeyTab, {"say beta", 8}));
    steps.push_back(pressed(KeyBacktab, {"say alpha", 9}));
    steps.push_back(pressed(KeyPageDown, {"say alpha", 9}));
    steps.push_back(pressed(KeyBackQuote, {"say alpha", 9}));
    steps.push_back(pressed(KeyBackQuote, {"", 0}));
    steps.push_back(pressed(KeyTab, {"say beta", 8}));
    steps.push_back({[](Console& console) { console.execute(U"say host"); }, {"", 0}});
    steps.push_back(pressed(KeyTab, {"say alpha", 9}));
    steps.push_back({[](Console& console) { console.close(); }, {"say alpha", 9}});
    steps.push_back({[](Console& console) { console.open(); }, {"", 0}});
    append(steps, "", "say beta");
    steps.push_back(pressed(KeyReturn, {"", 0}));
    return steps;
}

/// The lines that the script logs, but for the writers'.
const std::vector<LogLine> kLinesOfScript = {output("Zephyr Console:"), output(""),       echo("say to"),
                                             echo("say host"),          echo("say beta"), output("said", 4),
                                             output("and done", 4)};
constexpr std::size_t kLinesOfARound = 3 * 4; // echo, two lines of the command, an empty line

/// Takes snapshots on a thread of its own until it is told to stop, and keeps what is wrong with them.
class Watcher
{
public:
    Watcher(const Console& console, std::set<SeenLine> legalLines, std::vector<LogLine> otherLines)
        : mConsole(console),
          mLegalLines(std::move(legalLines)),
          mFollower(std::move(otherLines)),
          mThread([this] { watch(); })
    {}

    ~Watcher() { stop(); }

    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    void stop()
    {
        mStopped = true;
        if (mThread.joinable()) {
            mThread.join();
        }
    }

    /// Returns when `count` snapshots have been taken whole from now on.
    void waitForSnapshots(unsigned count) const
    {
        const unsigned target = mTaken + count + 1; // one may be half taken
        while (mTaken < target) {
            std::this_thread::yield();
        }
    }

    // The following are for when it has stopped.
    const std::vector<std::string>& faults() const { return mFaults; }
    const std::set<SeenLine>& linesSeen() const { return mLinesSeen; }
    const LogFollower& log() const { return mFollower; }

private:
    /// Looks at new snapshots and at one that it refreshes, in turn.
    void watch()
    {
        ConsoleSnapshot refreshed = mConsole.snapshot();
        while (!mStopped) {
            look(mConsole.snapshot());
            mConsole.refresh(refreshed);
            look(refreshed);
            ++mTaken;
        }
        look(mConsole.snapshot());
    }

    void look(const ConsoleSnapshot& snapshot)
    {
        const SeenLine line = inputLine(snapshot);
        mLinesSeen.insert(line);
        if (!mLegalLines.contains(line)) {
            note("never was: " + line.text + " with the cursor at " + std::to_string(line.cursor));
        }
        if (snapshot.scrollOffset() > snapshot.lines().size()) {
            note("scrolled back further than the log reaches");
        }
        note(mFollower.follow(snapshot.lines()));
    }

    void note(const std::string& fault)
    {
        constexpr std::size_t kEnough = 10;
        if (!fault.empty() && mFaults.size() < kEnough) {
            mFaults.push_back(fault);
        }
    }

    const Console& mConsole;
    const std::set<SeenLine> mLegalLines;
    LogFollower mFollower;
    std::set<SeenLine> mLinesSeen;
    std::vector<std::string> mFaults;
    std::atomic<unsigned> mTaken = 0;
    std::atomic<bool> mStopped = false;
    std::thread mThread; // last, since it uses the rest
};

/// Writers on threads of their own, each pausing now and then until the watcher has looked.
class Writers
{
public:
    Writers(Console& console, const Watcher& watcher)
    {
        for (int writer = 0; writer < kWriters; ++writer) {
            mThreads.emplace_back([&console, &watcher, writer] {
                constexpr int kLinesBetweenLooks = 25;
                for (int i = 0; i < kLinesOfAWriter; ++i) {
                    writeLine(console, writer, i);
                    if (i % kLinesBetweenLooks == 0) {
                        watcher.waitForSnapshots(1);
                    }
                }
            });
        }
    }

    void join()
    {
        for (std::thread& thread : mThreads) {
            thread.join();
        }
    }

private:
    std::vector<std::thread> mThreads;
};

std::set<SeenLine> linesOf(const std::vector<Step>& steps)
{
    std::set<SeenLine> lines;
    for (const Step& step : steps) {
        lines.insert(step.expected);
    }
    return lines;
}

class ConsoleThreads : public testing::Test
{
protected:
    ConsoleThreads()
    {
        ScriptedCommand& say = addCompletingCommand(mConsole, U"say", {U"alpha", U"beta"});
        say.onExecute = [](const ConsoleArgs&, Console& console) {
            console.writeIndented(U"said", 4);
            console.writeIndented(std::string("and done"), 4);
        };
        mConsole.setWindowSize({800, 300});
        mConsole.open();
    }

    /// Does the steps in order, and after each lets `pause` run.
    void play(const std::vector<Step>& steps, const std::function<void()>& pause = {})
    {
        for (const Step& step : steps) {
            step.act(mConsole);
            ASSERT_EQ(inputLine(mConsole), step.expected);
            if (pause) {
                pause();
            }
        }
    }

    /// Plays a first round slowly, so that the watcher sees every line, and the others at full speed.
    void playRounds(const std::vector<Step>& steps, const Watcher& watcher)
    {
        play(steps, [&watcher] { watcher.waitForSnapshots(1); });
        for (int round = 1; round < kRounds && !HasFailure(); ++round) {
            play(steps);
            watcher.waitForSnapshots(1);
        }
    }

    Console mConsole;
    ConsoleDriver mDriver{mConsole};
};

TEST_F(ConsoleThreads, EverySnapshotShowsALineThatWasAndALogThatOnlyGrows)
{
    const std::vector<Step> steps = script();
    mDriver.type("say beta\n"); // the last line of the round before the first

    Watcher watcher(mConsole, linesOf(steps), kLinesOfScript);
    Writers writers(mConsole, watcher);
    playRounds(steps, watcher);
    writers.join();
    watcher.stop();

    EXPECT_EQ(watcher.faults(), std::vector<std::string>());
    EXPECT_EQ(watcher.linesSeen(), linesOf(steps));
    EXPECT_EQ(watcher.log().linesOfWriters(), (std::array{kLinesOfAWriter, kLinesOfAWriter}));
    EXPECT_EQ(watcher.log().otherLines(), 2 + 4 + kRounds * kLinesOfARound);
}

TEST_F(ConsoleThreads, AnEditIsNeverSeenInHalf)
{
    constexpr int kManyRounds = 3000; // a short log makes snapshots quick, so that many fall between two keys
    mDriver.type("say b\n");
    std::vector<Step> steps; // it erases as much as it inserts, as script() does
    append(steps, "", "one");
    steps.push_back(pressed(KeyHome, {"one", 0}));
    steps.push_back(typed(U's', {"sone", 1}));
    steps.push_back(typed(U'a', {"saone", 2}));
    steps.push_back(typed(U'y', {"sayone", 3}));
    steps.push_back(typed(U' ', {"say one", 4}));
    steps.push_back(pressed(KeyDelete, {"say ", 4}, kControl));
    steps.push_back(pressed(KeyBackspace, {"say", 3}));
    steps.push_back(pressed(KeyUp, {"say b", 5}));
    steps.push_back(pressed(KeyDown, {"", 0}));
    const std::vector<LogLine> log = logLines(mConsole, 0);

    Watcher first(mConsole, linesOf(steps), log);
    Watcher second(mConsole, linesOf(steps), log);
    for (int round = 0; round < kManyRounds && !HasFailure(); ++round) {
        play(steps);
        if (round % 50 == 0) {
            first.waitForSnapshots(1);
            second.waitForSnapshots(1);
        }
    }
    first.stop();
    second.stop();

    EXPECT_EQ(first.faults(), std::vector<std::string>());
    EXPECT_EQ(second.faults(), std::vector<std::string>());
}

TEST_F(ConsoleThreads, ALineLongerThanTheBufferIsNeverSeenInHalf)
{
    mDriver.type("say alphabet\nsay b\n");
    mDriver.type(std::string(2048 - 6, 'x'));
    mDriver.press(KeyBackspace, kControl);
    ASSERT_EQ(inputBuffer(mConsole).size(), 6U);
    const std::vector<Step> steps = {pressed(KeyUp, {"say b", 5}),
                                     pressed(KeyUp, {"say al", 12}),
                                     pressed(KeyLeft, {"say al", 11}),
                                     pressed(KeyTab, {"say al", 9}),
                                     pressed(KeyTab, {"say be", 8}),
                                     pressed(KeyLeft, {"say be", 4}, kControl),
                                     pressed(KeyDown, {"say b", 5}),
                                     pressed(KeyEnd, {"say b", 5}),
                                     pressed(KeyDown, {"", 0}),
                                     pressed(KeyTab, {"say al", 9}),
                                     pressed(KeyBackQuote, {"say al", 9}),
                                     pressed(KeyBackQuote, {"", 0}),
                                     pressed(KeyTab, {"say be", 8}),
                                     pressed(KeyHome, {"say be", 0}),
                                     pressed(KeyEnd, {"say be", 8})};
    const std::vector<LogLine> log = logLines(mConsole, 0);

    play(steps); // from here on each round begins with a list of completions in progress
    Watcher watcher(mConsole, linesOf(steps), log);
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        mConsole.open();
        play(steps);
        watcher.waitForSnapshots(1);
    }
    watcher.stop();

    EXPECT_EQ(watcher.faults(), std::vector<std::string>());
}

TEST_F(ConsoleThreads, ARefusedCodePointHoldsNobodyUp)
{
    const std::string full(2048, 'x');
    mDriver.type(full);

    Watcher watcher(mConsole, {SeenLine{full, 2048}}, {output("Zephyr Console:"), output("")});
    Writers writers(mConsole, watcher);
    for (int round = 0; round < kRounds; ++round) {
        EXPECT_FALSE(pressOrRefuse(mConsole, KeyA, 0, U"y").has_value());
        watcher.waitForSnapshots(1);
    }
    writers.join();
    watcher.stop();

    EXPECT_EQ(watcher.faults(), std::vector<std::string>());
    EXPECT_EQ(watcher.log().linesOfWriters(), (std::array{kLinesOfAWriter, kLinesOfAWriter}));
    EXPECT_EQ(watcher.log().otherLines(), 2U);
}

} // namespace
} // namespace zephyr::console
