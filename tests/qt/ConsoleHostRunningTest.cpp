// Keys that arrive while a line runs whose command processes events.

#include "qt/HostedConsole.h"

namespace zephyr::test {
namespace {

class ConsoleHostRunning : public HostedConsole
{
protected:
    ConsoleHostRunning()
    {
        addCommand(*console, U"pump").onExecute = [this](const console::ConsoleArgs&, Console&) {
            ++runs;
            if (meanwhile) {
                meanwhile();
            }
            ++ends;
        };
        host.setOpen(true);
    }

    void press(Qt::Key key, const QString& text = {}, bool isRepeat = false)
    {
        sendKey(window, QEvent::KeyPress, key, {}, text, 0, 0, isRepeat);
    }

    std::function<void()> meanwhile;
    int runs = 0;
    int ends = 0;
};

TEST_F(ConsoleHostRunning, DropsTheRepeatsOfEnter)
{
    meanwhile = [this] {
        for (int i = 0; i < 40; ++i) {
            press(Qt::Key_Return, "\r", true);
        }
    };
    type("pump");
    press(Qt::Key_Return, "\r");
    EXPECT_EQ(1, runs);
    EXPECT_EQ((std::vector<std::string>{"pump", ""}), log());
}

TEST_F(ConsoleHostRunning, DropsTheRepeatsOfEnterInADialogThatItsCommandOpened)
{
    RecordingWindow dialog;
    meanwhile = [&] {
        sendKey(dialog, QEvent::KeyPress, Qt::Key_Return, {}, "\r", 0, 0, true);
        sendKey(dialog, QEvent::KeyPress, Qt::Key_Return, {}, "\r");
    };
    type("pump");
    press(Qt::Key_Return, "\r");
    EXPECT_EQ((std::vector<std::string>{"press Return"}), dialog.received);
}

TEST_F(ConsoleHostRunning, KeepsPressesInTheirOrderUntilTheLineHasRun)
{
    std::vector<int> endsAtRun;
    addCommand(*console, U"next").onExecute = [&](const console::ConsoleArgs&, Console&) {
        endsAtRun.push_back(ends);
    };
    meanwhile = [this] {
        type("next");
        commit(window, "x");
        click(Qt::Key_Backspace, {}, "\b");
        type("\nrest");
        EXPECT_EQ("pump", input()) << "the line that runs";
    };
    type("pump\n");
    EXPECT_EQ((std::vector<int>{1}), endsAtRun);
    EXPECT_EQ("rest", input());
    EXPECT_TRUE(window.received.empty());
}

TEST_F(ConsoleHostRunning, KeepsWhatWasTypedBeforeTheFindBarForTheLine)
{
    meanwhile = [this] {
        type("go");
        click(Qt::Key_F, Qt::ControlModifier);
        type("find");
    };
    type("pump\n");
    EXPECT_EQ("go", input());
}

TEST_F(ConsoleHostRunning, TogglesAtOnce)
{
    bool isOpenMeanwhile = true;
    meanwhile = [&] {
        type("lost");
        click(Qt::Key_QuoteLeft, {}, "`");
        isOpenMeanwhile = host.isOpen();
        click(Qt::Key_A, {}, "a");
    };
    type("pump\n");
    EXPECT_FALSE(isOpenMeanwhile);
    EXPECT_FALSE(host.isOpen());
    EXPECT_EQ((std::vector<std::string>{"press A", "release A"}), window.received);
    open();
    EXPECT_EQ("", input());
}

TEST_F(ConsoleHostRunning, ScrollsAtOnce)
{
    host.setPlain(true);
    for (int i = 0; i < 100; ++i) {
        console->newline();
    }
    unsigned scrolled = 0;
    meanwhile = [&] {
        turnWheel(window, {0, 120});
        scrolled = console->snapshot().scrollOffset();
    };
    type("pump\n");
    EXPECT_EQ(2u, scrolled);
}

TEST_F(ConsoleHostRunning, GoesOnAfterALineThatThrew)
{
    meanwhile = [this] {
        type("after");
        throw std::runtime_error("no");
    };
    type("pump\n");
    EXPECT_EQ(1, exceptions.size());
    EXPECT_EQ("pumpafter", input()) << "a line that throws stays";
}

TEST_F(ConsoleHostRunning, WaitsForALineThatTheProgramRuns)
{
    meanwhile = [this] {
        type("abc");
        EXPECT_EQ("", input());
    };
    console->execute(U"pump");
    ASSERT_TRUE(QTest::qWaitFor([this] { return input() == "abc"; }, 60000));
}

TEST_F(ConsoleHostRunning, WaitsForALineOfAnotherHost)
{
    RecordingWindow otherWindow;
    ConsoleHost other(console, &otherWindow);
    meanwhile = [&] {
        sendKey(otherWindow, QEvent::KeyPress, Qt::Key_A, {}, "a");
        EXPECT_EQ("pump", input());
    };
    type("pump\n");
    ASSERT_TRUE(QTest::qWaitFor([this] { return input() == "a"; }, 60000));
}

TEST_F(ConsoleHostRunning, EndsWithAHostThatItsCommandDestroys)
{
    auto doomed = std::make_unique<ConsoleHost>(&window);
    const std::shared_ptr<Console> own = doomed->console();
    addCommand(*own, U"end").onExecute = [&](const console::ConsoleArgs&, Console&) {
        sendKey(window, QEvent::KeyPress, Qt::Key_A, {}, "a");
        doomed.reset();
    };
    host.setOpen(false);
    doomed->setOpen(true);
    type("end\n");
    EXPECT_EQ(nullptr, doomed);
    EXPECT_EQ(U"", own->activeInput()) << "nothing is typed without a host";
}

} // namespace
} // namespace zephyr::test
