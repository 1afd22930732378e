#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/InputLineModel.h"
#include "support/KeyTable.h"
#include "support/ScriptedCommand.h"
#include "support/SeenLine.h"
#include "zephyr/console/Console.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using namespace test;

constexpr std::size_t kBufferSize = 2048;
const std::u32string kClipboard = U"p q";

void copyToClipboard() { QGuiApplication::clipboard()->setText(QString::fromStdU32String(kClipboard)); }

/// A console whose buffer has been erased down to a few code points, so that lines of its history and
/// completions are longer.
class ConsoleLongLine : public testing::Test
{
protected:
    ConsoleLongLine()
    {
        addCompletingCommand(mConsole, U"cmd", {U"alphabet", U"be"});
        mConsole.open();
    }

    /// Records `line` and erases until the buffer holds `size`.
    void recallInBufferOf(std::size_t size, const std::string& line)
    {
        mDriver.type(line + "\n");
        shrinkBufferTo(size);
        ASSERT_TRUE(mDriver.press(KeyUp));
    }

    void shrinkBufferTo(std::size_t size)
    {
        mDriver.type(std::string(kBufferSize - size, 'x'));
        mDriver.press(KeyBackspace, kControl);
        ASSERT_EQ(bufferSize(), size);
    }

    SeenLine after(int key, int modifiers = 0)
    {
        EXPECT_TRUE(mDriver.press(key, modifiers));
        return inputLine(mConsole);
    }

    std::size_t bufferSize() const { return inputBuffer(mConsole).size(); }

    bool refuses(char32_t c) { return !pressOrRefuse(mConsole, KeyA, 0, std::u32string(1, c)).has_value(); }

    Console mConsole;
    ConsoleDriver mDriver{mConsole};
};

TEST_F(ConsoleLongLine, ARecalledLineShowsWhatTheBufferHolds)
{
    recallInBufferOf(4, "nosuch abc");
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"nosu", 10}));
    EXPECT_EQ(inputLine(mConsole.snapshot()), (SeenLine{"nosu", 10}));
    EXPECT_EQ(bufferSize(), 4U);
}

TEST_F(ConsoleLongLine, ACompletedLineShowsWhatTheBufferHolds)
{
    shrinkBufferTo(6);
    mDriver.type("cmd a");
    EXPECT_FALSE(mDriver.press(KeyTab));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"cmd al", 12}));
    EXPECT_TRUE(mDriver.press(KeyTab));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"cmd be", 6}));
    EXPECT_TRUE(mDriver.press(KeyBacktab));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"cmd al", 12}));
    EXPECT_EQ(bufferSize(), 6U);
}

TEST_F(ConsoleLongLine, NothingIsSeenOfALineInABufferOfNothing)
{
    recallInBufferOf(0, "nosuch");
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"", 6}));
    EXPECT_EQ(after(KeyLeft), (SeenLine{"", 5}));
    EXPECT_EQ(after(KeyBackspace), (SeenLine{"", 4}));
    EXPECT_EQ(after(KeyDelete), (SeenLine{"", 4}));
    EXPECT_EQ(after(KeyEnd), (SeenLine{"", 4}));
    EXPECT_EQ(after(KeyLeft, kControl), (SeenLine{"", 0}));
    EXPECT_EQ(after(KeyReturn), (SeenLine{"", 0}));
}

TEST_F(ConsoleLongLine, TypingAtItsEndIsRefused)
{
    recallInBufferOf(4, "nosuch");
    EXPECT_TRUE(refuses(U'x'));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"nosu", 6}));
    mDriver.press(KeyLeft);
    EXPECT_TRUE(refuses(U'x'));
    mDriver.press(KeyLeft);
    EXPECT_TRUE(refuses(U'x'));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"nosu", 4}));
    EXPECT_EQ(bufferSize(), 4U);
}

TEST_F(ConsoleLongLine, ARefusedCodePointKeepsTheCompletionInProgress)
{
    shrinkBufferTo(6);
    mDriver.type("cmd a");
    mDriver.press(KeyTab);
    EXPECT_TRUE(refuses(U'x'));
    EXPECT_TRUE(mDriver.press(KeyTab));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"cmd be", 6}));
}

TEST_F(ConsoleLongLine, TypingWithinTheBufferInserts)
{
    recallInBufferOf(4, "nosuch");
    mDriver.press(KeyHome);
    EXPECT_FALSE(refuses(U'x'));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"xnosu", 1}));
    EXPECT_EQ(bufferSize(), 5U);
    EXPECT_EQ(after(KeyEnd), (SeenLine{"xnosu", 7}));
}

TEST_F(ConsoleLongLine, BackspaceBeyondTheBufferShortensTheLineOnly)
{
    recallInBufferOf(4, "nosuch");
    EXPECT_EQ(after(KeyBackspace), (SeenLine{"nosu", 5}));
    EXPECT_EQ(after(KeyBackspace), (SeenLine{"nosu", 4}));
    EXPECT_EQ(bufferSize(), 4U);
    EXPECT_EQ(after(KeyBackspace), (SeenLine{"nos", 3}));
    EXPECT_EQ(bufferSize(), 3U);
    EXPECT_EQ(after(KeyEnd), (SeenLine{"nos", 3}));
}

TEST_F(ConsoleLongLine, DeleteBeyondTheBufferShortensTheLineOnly)
{
    recallInBufferOf(4, "nosuch");
    mDriver.press(KeyLeft);
    mDriver.press(KeyLeft);
    EXPECT_EQ(after(KeyDelete), (SeenLine{"nosu", 4}));
    EXPECT_EQ(bufferSize(), 4U);
    EXPECT_EQ(after(KeyEnd), (SeenLine{"nosu", 5}));
}

TEST_F(ConsoleLongLine, DeleteWithinTheBufferErasesWhatIsSeen)
{
    recallInBufferOf(4, "nosuch");
    mDriver.press(KeyHome);
    EXPECT_EQ(after(KeyDelete), (SeenLine{"osu", 0}));
    EXPECT_EQ(bufferSize(), 3U);
    EXPECT_EQ(after(KeyEnd), (SeenLine{"osu", 5}));
}

TEST_F(ConsoleLongLine, CtrlBackspaceErasesBackToAWordThatIsSeen)
{
    recallInBufferOf(5, "no such");
    EXPECT_EQ(after(KeyBackspace, kControl), (SeenLine{"no ", 3}));
    EXPECT_EQ(bufferSize(), 3U);
    EXPECT_EQ(after(KeyEnd), (SeenLine{"no ", 3}));
}

TEST_F(ConsoleLongLine, CtrlDeleteAtTheBuffersEndErasesNothing)
{
    recallInBufferOf(4, "nosuch");
    mDriver.press(KeyLeft);
    EXPECT_EQ(after(KeyDelete, kControl), (SeenLine{"nosu", 5}));
    mDriver.press(KeyLeft);
    EXPECT_EQ(after(KeyDelete, kControl), (SeenLine{"nosu", 4}));
    EXPECT_EQ(bufferSize(), 4U);
    EXPECT_EQ(after(KeyEnd), (SeenLine{"nosu", 6}));
}

TEST_F(ConsoleLongLine, CtrlDeleteErasesToTheBuffersEnd)
{
    recallInBufferOf(5, "no such");
    mDriver.press(KeyHome);
    mDriver.press(KeyRight, kControl);
    EXPECT_EQ(after(KeyDelete, kControl), (SeenLine{"no ", 3}));
    EXPECT_EQ(bufferSize(), 3U);
    EXPECT_EQ(after(KeyEnd), (SeenLine{"no ", 5}));
}

TEST_F(ConsoleLongLine, CtrlMovesLookAtWhatIsSeen)
{
    recallInBufferOf(5, "no such");
    EXPECT_EQ(after(KeyLeft, kControl), (SeenLine{"no su", 3}));
    EXPECT_EQ(after(KeyRight, kControl), (SeenLine{"no su", 5}));
    EXPECT_EQ(after(KeyEnd), (SeenLine{"no su", 7}));
    EXPECT_EQ(after(KeyRight, kControl), (SeenLine{"no su", 5}));
}

TEST_F(ConsoleLongLine, RightStopsAtTheLinesOwnEnd)
{
    recallInBufferOf(2, "four");
    mDriver.press(KeyHome);
    for (const unsigned cursor : {1U, 2U, 3U, 4U, 4U}) {
        EXPECT_EQ(after(KeyRight), (SeenLine{"fo", cursor}));
    }
}

TEST_F(ConsoleLongLine, EnterSubmitsWhatIsSeen)
{
    recallInBufferOf(4, "nosuch");
    const std::size_t before = mDriver.log().size();
    EXPECT_EQ(after(KeyReturn), (SeenLine{"", 0}));
    EXPECT_EQ(mDriver.log().at(before), "nosu");
    EXPECT_EQ(after(KeyUp), (SeenLine{"nosu", 4}));
    EXPECT_EQ(after(KeyUp), (SeenLine{"nosu", 6}));
}

TEST_F(ConsoleLongLine, TabCompletesWhatIsSeen)
{
    recallInBufferOf(6, "cmd x a");
    EXPECT_FALSE(mDriver.press(KeyTab));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"cmd x ", 14}));
}

TEST_F(ConsoleLongLine, PastingAtItsEndIsRefused)
{
    copyToClipboard();
    recallInBufferOf(4, "nosuch");
    EXPECT_FALSE(pressOrRefuse(mConsole, KeyV, kControl, {}).has_value());
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"nosu", 6}));
}

TEST_F(ConsoleLongLine, OpeningEmptiesTheLineAndKeepsTheBuffer)
{
    recallInBufferOf(4, "nosuch");
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"nosu", 6}));
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"", 0}));
    EXPECT_EQ(inputBuffer(mConsole), std::u32string(4, U'\0'));
}

/// A console and its model, to which the same keys are pressed.
class Twins
{
public:
    Twins() : mModel(candidates(), kClipboard)
    {
        addCompletingCommand(mConsole, U"cmd", candidates());
        mConsole.open();
    }

    /// Presses a key on both. False when they differ in the line, the cursor, the buffer's size or the
    /// answer.
    bool press(int key, int modifiers = 0, const std::u32string& text = {})
    {
        if (key == KeyBackQuote) {
            mConsole.keyPressed(KeyBackQuote, 0, U"`");
            mConsole.keyPressed(KeyBackQuote, 0, U"`");
            mModel.reopen();
            return same();
        }
        const std::optional<bool> expected = mModel.press(key, modifiers, text);
        EXPECT_EQ(pressOrRefuse(mConsole, key, modifiers, text), expected);
        return same();
    }

    bool type(const std::u32string& text)
    {
        return std::all_of(text.begin(), text.end(), [this](char32_t c) {
            return c == U'\n' ? press(KeyReturn) : press(KeyA, 0, std::u32string(1, c));
        });
    }

    /// Completes a word so long that the buffer is left with `size` when it is erased. For a fresh pair.
    bool shrinkBufferTo(std::size_t size)
    {
        addCompletingCommand(mConsole, U"shrink", {std::u32string(kBufferSize - size - 1, U'x')});
        ConsoleDriver driver(mConsole);
        driver.type("shrink");
        driver.press(KeyTab);
        driver.press(KeyBackspace, kControl);
        driver.press(KeyBackspace); // the space before the completed word
        mModel.shrinkBufferTo(size);
        return same();
    }

    void expectSameLog() const
    {
        const ConsoleSnapshot snapshot = mConsole.snapshot();
        std::vector<std::u32string> log;
        for (std::size_t i = 2; i < snapshot.lines().size(); ++i) {
            log.push_back(snapshot.lines()[i].text);
        }
        EXPECT_EQ(log, mModel.log());
    }

private:
    static std::vector<std::u32string> candidates() { return {U"alpha beta", U"", U"g"}; }

    bool same() const
    {
        EXPECT_EQ(mConsole.activeInput(), mModel.text());
        EXPECT_EQ(mConsole.cursorPosition(), mModel.cursor());
        EXPECT_EQ(inputBuffer(mConsole).size(), mModel.bufferSize());
        return !testing::Test::HasFailure();
    }

    Console mConsole;
    InputLineModel mModel;
};

/// How a line comes to be longer than the buffer.
struct LongLine
{
    std::string way;
    std::u32string history;
    std::vector<int> keys;
    unsigned length;
};

void PrintTo(const LongLine& line, std::ostream* out) { *out << line.way; }

class ConsoleEveryLongLine : public testing::TestWithParam<LongLine>
{
protected:
    /// Puts the cursor into the long line, presses a key, and then those that show what it left behind.
    static void expectKeyWorks(std::size_t bufferSize, unsigned cursor, int key, int modifiers)
    {
        SCOPED_TRACE("buffer " + std::to_string(bufferSize) + ", cursor " + std::to_string(cursor) +
                     ", key " + std::to_string(key) + ", modifiers " + std::to_string(modifiers));
        Twins twins;
        ASSERT_TRUE(twins.type(GetParam().history) && twins.shrinkBufferTo(bufferSize));
        for (const int recall : GetParam().keys) {
            ASSERT_TRUE(twins.press(recall));
        }
        ASSERT_TRUE(twins.press(KeyHome));
        for (unsigned i = 0; i < cursor; ++i) {
            ASSERT_TRUE(twins.press(KeyRight));
        }
        ASSERT_TRUE(twins.press(key, modifiers, U"z"));
        ASSERT_TRUE(twins.type(U"y") && twins.press(KeyEnd) && twins.press(KeyBackspace));
        ASSERT_TRUE(twins.press(KeyTab) && twins.press(KeyReturn));
        twins.expectSameLog();
    }
};

TEST_P(ConsoleEveryLongLine, EveryKeyWorksAtEveryPosition)
{
    copyToClipboard();
    for (const std::size_t size : {0U, 1U, 2U, 3U, 4U, 6U}) {
        for (unsigned cursor = 0; cursor <= GetParam().length; ++cursor) {
            for (const int key : kKeys) {
                expectKeyWorks(size, cursor, key, 0);
                expectKeyWorks(size, cursor, key, kControl);
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ConsoleEveryLongLine,
    testing::Values(LongLine{"Recalled", U"ab_cd ef\n", {KeyUp}, 8},
                    LongLine{"RecalledAfterALongerOne", U"cmd a b\nlonger one\n", {KeyUp, KeyUp}, 7},
                    LongLine{"Completed", U"cmd a b\n", {KeyUp, KeyTab}, 14}),
    [](const auto& line) { return line.param.way; });

/// A key with its modifiers and text.
struct Key
{
    int key;
    int modifiers;
    std::u32string text;
};

/// Any key, drawn so that lines are typed, inserted into and submitted more often than erased.
Key anyKey(std::mt19937& random)
{
    static const std::u32string typed = U"abcmd  _1\"\u00E9\U0001F680";
    static constexpr std::array moves = {KeyLeft, KeyRight, KeyHome, KeyEnd, KeyLeft};
    static constexpr std::array recalls = {KeyUp, KeyDown, KeyTab, KeyBacktab, KeyTab, KeyUp};
    static constexpr std::array others = {KeyReturn, KeyEnter,    KeyV,         KeyPageUp,
                                          KeyA,      KeyPageDown, KeyBackQuote, KeyReturn};
    const auto below = [&random](std::size_t end) { return std::size_t(random() % end); };
    const int modifiers = below(3) == 0 ? kControl : 0;
    const std::size_t kind = below(100);
    if (kind < 45) {
        return {KeyEscape, 0, typed.substr(below(typed.size()), 1 + below(2))};
    }
    if (kind < 67) {
        return {moves[below(moves.size())], modifiers, {}};
    }
    if (kind < 75) {
        return {below(2) == 0 ? KeyBackspace : KeyDelete, below(3) == 0 ? kControl : 0, {}};
    }
    if (kind < 92) {
        return {recalls[below(recalls.size())], modifiers, {}};
    }
    return {others[below(others.size())], modifiers, {}};
}

class ConsoleRandomWalk : public testing::TestWithParam<unsigned>
{};

TEST_P(ConsoleRandomWalk, FollowsAPlainModelKeyForKey)
{
    constexpr std::array<std::size_t, 8> kSizes = {kBufferSize, 0, 3, 5, 8, 13, 21, 40};
    constexpr int kKeysOfAWalk = 400;
    copyToClipboard();
    std::mt19937 random(GetParam());
    for (const std::size_t size : kSizes) {
        Twins twins;
        ASSERT_TRUE(twins.type(U"cmd \"a b\" c\na line that is quite long\ncmd al\n"));
        ASSERT_TRUE(size == kBufferSize || twins.shrinkBufferTo(size));
        for (int i = 0; i < kKeysOfAWalk; ++i) {
            const Key key = anyKey(random);
            ASSERT_TRUE(twins.press(key.key, key.modifiers, key.text))
                << "buffer " << size << ", step " << i << ", key " << key.key << ", modifiers "
                << key.modifiers;
        }
        twins.expectSameLog();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ConsoleRandomWalk, testing::Range(1U, 26U));

} // namespace
} // namespace zephyr::console
