#include "qt/HostedConsole.h"
#include "support/SystemText.h"

#include <QClipboard>
#include <QGuiApplication>

#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace zephyr::test {
namespace {

const std::size_t kInputSize = 2048;

using Lines = std::vector<std::string>;

class ConsoleHostFailure : public HostedConsole
{
protected:
    ConsoleHostFailure() { open(); }

    /// Registers the command `fail`, which throws `exception`.
    template <typename Exception>
    void addFailing(const Exception& exception)
    {
        addCommand(*console, U"fail").onExecute = [exception](const console::ConsoleArgs&, Console&) {
            throw exception;
        };
    }

    void fillLine()
    {
        commit(window, QString(static_cast<qsizetype>(kInputSize), 'x'));
        ASSERT_EQ(kInputSize, input().size());
        ASSERT_EQ(Lines(), log());
    }

    Lines caught() const
    {
        Lines messages;
        for (const QList<QVariant>& signal : exceptions) {
            messages.push_back(signal[0].toString().toStdString());
        }
        return messages;
    }
};

TEST_F(ConsoleHostFailure, OfACommandIsOneLineAndOneSignal)
{
    addFailing(std::runtime_error("no such\nengine"));
    type("fail\n");
    const std::string line = "The console caught an exception: no such engine";
    EXPECT_EQ((Lines{"fail", line}), log());
    EXPECT_EQ((Lines{line}), caught());
}

TEST_F(ConsoleHostFailure, OfACommandMayBeOfAnyType)
{
    addFailing(42);
    type("fail\n");
    EXPECT_EQ((Lines{"The console caught an exception: unknown exception"}), caught());
}

TEST_F(ConsoleHostFailure, OfTheFileSystemIsOneLineAndOneSignal)
{
    const std::filesystem::filesystem_error error("exists", "/closed",
                                                  std::make_error_code(std::errc::permission_denied));
    addFailing(error);
    type("fail\n");
    EXPECT_EQ((Lines{"fail", std::string("The console caught an exception: ") + error.what()}), log());
    EXPECT_EQ(1u, caught().size());
}

TEST_F(ConsoleHostFailure, OfACompletionIsOneLineAndOneSignal)
{
    addCommand(*console, U"cmd").onComplete = [](const console::ConsoleArgs&) -> std::vector<std::u32string> {
        throw std::logic_error("no list");
    };
    type("cmd ");
    click(Qt::Key_Tab, Qt::NoModifier, "\t");
    EXPECT_EQ((Lines{"The console caught an exception: no list"}), log());
    EXPECT_EQ(log(), caught());
    EXPECT_TRUE(window.received.empty());
}

TEST_F(ConsoleHostFailure, ToRunALineTooDeepIsTheConsolesOwnLineAndOneSignal)
{
    console->execute(U"alias on \"on\"");
    host.setDepthLimit(2);
    const std::size_t before = log().size();
    type("on\n");
    const std::string line = "'on' was not run: lines are nested deeper than the limit of 2.";
    const Lines logged = log();
    EXPECT_EQ((Lines{"on", "on", "on", line}),
              Lines(logged.begin() + static_cast<std::ptrdiff_t>(before), logged.end()));
    EXPECT_EQ((Lines{line}), caught());
}

TEST_F(ConsoleHostFailure, OfAnAliasThatLeadsToItselfEndsWithinTheDefaultLimit)
{
    console->execute(U"alias on \"on\"");
    const std::size_t before = log().size();
    type("on\n");
    EXPECT_EQ(64u, ConsoleHost::kDefaultDepthLimit);
    EXPECT_EQ(before + ConsoleHost::kDefaultDepthLimit + 2, log().size()) << "the echoes and the refusal";
    EXPECT_EQ(1u, caught().size());
}

TEST_F(ConsoleHostFailure, ToRunALineTooDeepEndsWithTheLimitThatWasSetLast)
{
    int runs = 0;
    addCommand(*console, U"deeper").onExecute = [&](const console::ConsoleArgs&, Console& running) {
        if (++runs < 100) {
            running.execute(U"deeper");
        }
    };
    host.setDepthLimit(0);
    type("deeper\n");
    EXPECT_EQ(100, runs);
    host.setDepthLimit(3);
    console->setDepthLimit(10);
    runs = 0;
    type("deeper\n");
    EXPECT_EQ(11, runs);
    EXPECT_EQ(1u, caught().size());
}

TEST_F(ConsoleHostFailure, LeavesTheConsoleUsable)
{
    addFailing(std::runtime_error("once"));
    type("fail\n");
    type("x");
    EXPECT_EQ("failx", input());
    EXPECT_TRUE(host.isOpen());
}

TEST_F(ConsoleHostFailure, OfALockInACommandIsNotTakenForAFullLine)
{
    addFailing(std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur), "my lock"));
    type("fail\n");
    ASSERT_EQ(1u, caught().size());
    EXPECT_EQ("The console caught an exception: my lock: " +
                  systemText(std::errc::resource_deadlock_would_occur),
              caught()[0]);
}

TEST_F(ConsoleHostFailure, OfALockInACompletionIsNotTakenForAFullLine)
{
    addCommand(*console, U"lock").onComplete =
        [](const console::ConsoleArgs&) -> std::vector<std::u32string> {
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur), "my lock");
    };
    open();
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        type("lock");
        click(key);
        ASSERT_FALSE(caught().empty());
        EXPECT_EQ("The console caught an exception: my lock: " +
                      systemText(std::errc::resource_deadlock_would_occur),
                  caught().back());
        host.setOpen(false);
        host.setOpen(true);
    }
}

TEST_F(ConsoleHostFailure, ToInsertIsReportedOnceAndNotForEachKey)
{
    fillLine();
    type("abc");
    EXPECT_EQ((Lines{kInputFull}), log());
    EXPECT_EQ((Lines{kInputFull}), caught());
    EXPECT_EQ(kInputSize, input().size());
}

TEST_F(ConsoleHostFailure, ToInsertIsReportedOnceWhateverOtherKeysArePressed)
{
    fillLine();
    type("a");
    click(Qt::Key_Shift, Qt::ShiftModifier);
    click(Qt::Key_Left);
    click(Qt::Key_End);
    type("b");
    click(Qt::Key_Backspace);
    type("c"); // refused too: the erasure has shrunk the buffer
    EXPECT_EQ((Lines{kInputFull}), log());
}

TEST_F(ConsoleHostFailure, ToInsertOneOfManyCodePointsIsReportedOnce)
{
    commit(window, QString(static_cast<qsizetype>(kInputSize + 10), 'x'));
    EXPECT_EQ((Lines{kInputFull}), log());
    EXPECT_EQ(kInputSize, input().size());
}

TEST_F(ConsoleHostFailure, ToInsertIsReportedAgainAfterALineThatHadRoom)
{
    fillLine();
    type("a\n");
    type("short\n");
    const std::size_t before = log().size();
    commit(window, QString(static_cast<qsizetype>(kInputSize + 1), 'y'));
    EXPECT_EQ(before + 1, log().size());
    EXPECT_EQ(kInputFull, log().back());
}

TEST_F(ConsoleHostFailure, ToPasteIsReportedAgainInAnotherLine)
{
    QGuiApplication::clipboard()->setText(QString(static_cast<qsizetype>(kInputSize + 5), 'p'));
    click(Qt::Key_V, Qt::ControlModifier, "\x16");
    type("\n");
    const std::size_t before = log().size();
    click(Qt::Key_V, Qt::ControlModifier, "\x16");
    EXPECT_EQ(before + 1, log().size());
    EXPECT_EQ(kInputFull, log().back());
    host.setOpen(false);
    host.setOpen(true);
    click(Qt::Key_V, Qt::ControlModifier, "\x16");
    EXPECT_EQ(before + 2, log().size());
}

TEST_F(ConsoleHostFailure, ToPasteIsReportedOnce)
{
    QGuiApplication::clipboard()->setText(QString(static_cast<qsizetype>(kInputSize + 5), 'p'));
    click(Qt::Key_V, Qt::ControlModifier, "\x16");
    click(Qt::Key_V, Qt::ControlModifier, "\x16");
    EXPECT_EQ((Lines{kInputFull}), log());
    EXPECT_EQ(kInputSize, input().size());
}

} // namespace
} // namespace zephyr::test
