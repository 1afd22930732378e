#include "qt/HostedConsole.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>
#include <atomic>
#include <thread>

namespace zephyr::test {
namespace {

const std::size_t kPlaces = 2048;

using Lines = std::vector<std::string>;

/// An open console whose input line is typed into through the kit.
class InputPlaces : public HostedConsole
{
protected:
    InputPlaces() { open(); }

    void erase(std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            click(Qt::Key_Backspace, Qt::NoModifier, "\b");
        }
    }

    void fill() { commit(window, QString(static_cast<qsizetype>(kPlaces), 'x')); }

    /// Whether the line takes kPlaces code points and not one more.
    testing::AssertionResult hasAllPlaces()
    {
        fill();
        const std::size_t size = input().size();
        const std::size_t logged = log().size();
        type("y");
        const bool refused = input().size() == size && log().size() == logged + 1;
        return size == kPlaces && refused ? testing::AssertionSuccess()
                                          : testing::AssertionFailure() << size << " code points, then "
                                                                        << (refused ? "full" : "not full");
    }
};

TEST_F(InputPlaces, DoNotRunOutForWhoeverErases)
{
    for (std::size_t i = 0; i < 2 * kPlaces; ++i) {
        type("a");
        ASSERT_EQ("a", input()) << i;
        erase(1);
    }
    EXPECT_EQ(Lines(), log());
    EXPECT_EQ(0, exceptions.size());
    EXPECT_TRUE(hasAllPlaces());
}

TEST_F(InputPlaces, AreCountedAnewInALineThatIsFullWhereAnotherHostErased)
{
    fill();
    for (std::size_t i = 0; i < 1500; ++i) { // which this host sees nothing of
        console->keyPressed(Qt::Key_Backspace, Qt::NoModifier, {});
    }
    fill(); // and is refused
    EXPECT_LT(input().size(), kPlaces);
    click(Qt::Key_Home);
    click(Qt::Key_Delete, Qt::ControlModifier);
    click(Qt::Key_End);
    click(Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ("", input());
    EXPECT_TRUE(hasAllPlaces());
}

TEST_F(InputPlaces, ComeBackThoughTheObserverThrows)
{
    type("ab");
    erase(2);
    console->setObserver([] { throw 42; });
    EXPECT_NO_THROW(type("a"));
    console->setObserver({});
    click(Qt::Key_End);
    type("b");
    EXPECT_EQ('b', input().back());
}

TEST_F(InputPlaces, LeaveAConsoleClosedThatTheObserverCloses)
{
    fill();
    console->setObserver([this] { console->close(); });
    click(Qt::Key_Home);
    click(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_FALSE(console->isOpen());
    console->setObserver({});
    host.setOpen(true);
    type("a");
    EXPECT_EQ("a", input());
}

TEST_F(InputPlaces, AreBackInALineThatFollowsOneThatWasRun)
{
    type("abcdef");
    erase(3);
    type("\n");
    EXPECT_TRUE(hasAllPlaces());
}

TEST_F(InputPlaces, AreBackInALineThatFollowsOneThatWasClosed)
{
    type("abcdef");
    erase(3);
    host.setOpen(false);
    host.setOpen(true);
    EXPECT_TRUE(hasAllPlaces());
}

TEST_F(InputPlaces, AreNotLostWithAFullLine)
{
    for (int round = 0; round < 2; ++round) {
        fill();
        erase(kPlaces);
        ASSERT_EQ("", input());
    }
    EXPECT_TRUE(hasAllPlaces());
}

TEST_F(InputPlaces, AreNotLostWithAFullLineThatOneKeyErases)
{
    for (const auto& [end, eraser] :
         {std::pair(Qt::Key_End, Qt::Key_Backspace), {Qt::Key_Home, Qt::Key_Delete}}) {
        fill();
        click(end);
        click(eraser, Qt::ControlModifier);
        ASSERT_EQ("", input());
        EXPECT_EQ(0u, console->cursorPosition());
    }
    EXPECT_TRUE(hasAllPlaces());
}

TEST_F(InputPlaces, OfAFullLineAreErasedAsAnyOther)
{
    commit(window, QString(static_cast<qsizetype>(kPlaces - 4), 'x') + " abc");
    click(Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ(std::string(kPlaces - 4, 'x') + " ", input());
    EXPECT_EQ(kPlaces - 3, console->cursorPosition());
    click(Qt::Key_Backspace);
    click(Qt::Key_Home);
    click(Qt::Key_Delete);
    EXPECT_EQ(std::string(kPlaces - 5, 'x'), input());
    EXPECT_EQ(0u, console->cursorPosition());
    click(Qt::Key_Backspace);
    EXPECT_EQ(std::string(kPlaces - 5, 'x'), input());
}

TEST_F(InputPlaces, CountWhatIsInsertedInTheMiddle)
{
    type("ad");
    click(Qt::Key_Left);
    type("bc"); // two places more
    erase(1);   // and one less
    EXPECT_EQ("abd", input());
    host.setOpen(true);
    fill();
    type("y");
    EXPECT_EQ(kPlaces + 1, input().size()) << "places that were won are not taken away";
}

TEST_F(InputPlaces, AreThereForAPaste)
{
    type("abc");
    erase(3);
    QGuiApplication::clipboard()->setText(QString(static_cast<qsizetype>(kPlaces), 'p'));
    click(Qt::Key_V, Qt::ControlModifier, "\x16");
    EXPECT_EQ(kPlaces, input().size());
    EXPECT_EQ(Lines(), log());
    type("y");
    EXPECT_EQ((Lines{kInputFull}), log());
}

TEST_F(InputPlaces, AreThereForARecalledLine)
{
    const std::u32string longest(kPlaces, U'h');
    console->addToHistory(longest);
    type("abc");
    erase(3);
    click(Qt::Key_Up);
    EXPECT_EQ(longest, console->activeInput());
    erase(2);
    click(Qt::Key_Down);
    EXPECT_EQ("", input());
    EXPECT_TRUE(hasAllPlaces());
}

TEST_F(InputPlaces, LeaveACompletionThatOutlivedItsLineAlone)
{
    addCompletingCommand(*console, U"cmd", {U"alpha", U"beta"});
    console->addToHistory(U"old");
    type("cmd xx");
    erase(2);
    click(Qt::Key_Tab, Qt::NoModifier, "\t");
    host.setOpen(true);
    click(Qt::Key_Up);
    EXPECT_EQ("old", input());
    click(Qt::Key_Tab, Qt::NoModifier, "\t");
    EXPECT_EQ("cmd beta", input());
}

TEST_F(InputPlaces, ComeBackWithoutATraceOnOtherThreads)
{
    std::atomic<int> strange{0};
    {
        const std::jthread painter([&](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                const console::ConsoleSnapshot seen = console->snapshot();
                const std::u32string line = seen.activeInput();
                const bool isBlank = line.find_first_not_of(U' ') == std::u32string::npos;
                strange += (isBlank ? seen.cursorPosition() > 1 : line.front() != U'a') ? 1 : 0;
            }
        });
        for (int i = 0; i < 50; ++i) {
            type("abcdefgh");
            erase(8);
        }
        type("a");
    }
    EXPECT_EQ(0, strange);
    EXPECT_EQ(Lines(), log());
}

} // namespace
} // namespace zephyr::test
