#include "GoCommand.h"
#include "KeepHistory.h"
#include "LampCommand.h"
#include "LinePrinter.h"
#include "Overlay.h"
#include "PlainWindow.h"
#include "RunLine.h"
#include "SetUpFiles.h"
#include "SetUpServices.h"
#include "Survey.h"
#include "Unload.h"
#include "WalkCommand.h"
#include "docs/Guide.h"
#include "support/ConsoleDriver.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "support/TemporaryDirectory.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace zephyr::test {
namespace {

using console::Console;

void press(PlainWindow& window, int key, const QString& text)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&window, &event);
}

void turnWheel(PlainWindow& window, int eighthsOfDegree)
{
    QWheelEvent event({}, {}, {}, QPoint(0, eighthsOfDegree), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&window, &event);
}

std::string contentsOf(const char* file)
{
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string inputOf(PlainWindow& window) { return StringUtil::toString(window.console().activeInput()); }

/// Loads the plugin and has it register its commands.
void registerCommandsOf(QLibrary& plugin, Console& console)
{
    const auto registerCommands = reinterpret_cast<void (*)(Console&)>(plugin.resolve("registerCommands"));
    ASSERT_NE(nullptr, registerCommands) << plugin.errorString().toStdString();
    registerCommands(console);
}

class CountedFrames : public PlainWindow
{
public:
    int count = 0;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        PlainWindow::paintEvent(event);
        ++count;
    }
};

TEST(EmbeddingGuide, ShowsAWindowThatTypes)
{
    PlainWindow window;
    press(window, Qt::Key_QuoteLeft, "`");
    press(window, Qt::Key_A, "a");
    press(window, Qt::Key_Escape, "\x1b");
    EXPECT_EQ("a", inputOf(window));
}

TEST(EmbeddingGuide, ShowsAWindowThatScrolls)
{
    PlainWindow window;
    window.console().open();
    turnWheel(window, 120);
    EXPECT_EQ(2U, window.console().snapshot().scrollOffset());
}

TEST(EmbeddingGuide, ShowsAWindowThatWritesWhatACommandThrows)
{
    PlainWindow window;
    addCommand(window.console(), U"fail").onExecute = [](const console::ConsoleArgs&, Console&) {
        throw std::runtime_error("no wind");
    };
    window.console().open();
    ConsoleDriver(window.console()).type("fail");
    press(window, Qt::Key_Return, "\r");
    EXPECT_EQ(Lines({"fail", "no wind"}), ConsoleDriver(window.console()).log());
}

TEST(EmbeddingGuide, ShowsAWindowThatPaintsOnWhileItsConsoleIsOpen)
{
    CountedFrames window;
    window.console().open();
    window.resize(320, 200);
    window.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.count >= 3; }, 60000));
}

TEST(EmbeddingGuide, SetsUpTheServicesOfTheKit)
{
    const TemporaryDirectory directory;
    const auto console = std::make_shared<Console>();
    addCommand(*console, U"say").onExecute = [](const console::ConsoleArgs&, Console& running) {
        running.write(U"said", console::Output);
    };
    QWindow window;
    ConsoleHost host(console, &window);
    QAction copy;
    setUpServices(host, QString::fromStdString((directory.path() / "log").string()), copy);
    QTest::keyClick(&window, Qt::Key_F1);
    EXPECT_TRUE(host.isOpen());
    for (const char key : std::string("say\r")) {
        QTest::keyClick(&window, key);
    }
    copy.trigger();
    EXPECT_EQ("said\n", QGuiApplication::clipboard()->text());
    EXPECT_EQ("Zephyr Console:\n\nQt info: opened\n>> say\nsaid\n\n", directory.read("log"));
}

TEST(EmbeddingGuide, KeepsTheHistoryInAFile)
{
    const TemporaryDirectory directory;
    const QString folder = QString::fromStdString((directory.path() / "new").string());
    const auto console = std::make_shared<Console>();
    QWindow window;
    {
        ConsoleHost host(console, &window);
        keepHistory(host, folder);
        host.setOpen(true);
        for (const char key : std::string("say\r")) {
            QTest::keyClick(&window, key);
        }
    }
    EXPECT_EQ("say\n", directory.read("new/console-history"));
}

TEST(EmbeddingGuide, ShowsWhatItsCommandsAnswer)
{
    Console console;
    console.registerCommand(std::make_unique<LampCommand>());
    console.registerCommand(std::make_unique<WalkCommand>());
    const std::vector<Lines> blocks = textBlocks(EMBEDDING_GUIDE);
    EXPECT_EQ(2U, blocks.size());
    for (const Lines& block : blocks) {
        expectSession(console, block);
    }
}

TEST(EmbeddingGuide, CompletesAsItSays)
{
    Console console;
    console.registerCommand(std::make_unique<GoCommand>());
    console.open();
    ConsoleDriver driver(console);
    driver.type("go har");
    for (const char* line : {"go harbour", "go harvest", "go harbour"}) {
        driver.press(Qt::Key_Tab);
        EXPECT_EQ(line, driver.input());
    }
}

TEST(EmbeddingGuide, RunsTheStartupFile)
{
    const TemporaryDirectory directory;
    directory.write("startup.console", "help run list\n");
    Console console;
    setUpFiles(console, directory.path());
    EXPECT_EQ("    Usage: run list", ConsoleDriver(console).log().at(2));
}

TEST(EmbeddingGuide, PrintsEachLineAsItIsWritten)
{
    Console console;
    std::ostringstream printed;
    std::string printedMeanwhile;
    addCommand(console, U"say").onExecute = [&](const console::ConsoleArgs&, Console& running) {
        running.write(U"said", console::Output);
        printedMeanwhile = printed.str();
    };
    {
        const LinePrinter printer(console, printed);
        console.execute(U"say");
    }
    console.write(U"said later", console::Output);
    EXPECT_EQ(">> say\nsaid\n", printedMeanwhile);
    EXPECT_EQ(">> say\nsaid\n\n", printed.str());
}

TEST(EmbeddingGuide, PrintsWhatSeveralThreadsWrite)
{
    Console console;
    std::ostringstream printed;
    {
        const LinePrinter printer(console, printed);
        const Survey first(console);
        const Survey second(console);
    }
    std::string expected;
    for (const std::string& line : ConsoleDriver(console).log()) {
        expected += line + '\n';
    }
    EXPECT_EQ(6, std::count(expected.begin(), expected.end(), '\n'));
    EXPECT_EQ(expected, printed.str());
}

TEST(EmbeddingGuide, QuotesTheLineThatEndsAnAliasThatRunsItself)
{
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    console->execute(U"alias x \"x\"");
    host.setOpen(true);
    QTest::keyClick(&window, 'x');
    QTest::keyClick(&window, Qt::Key_Return);
    const std::string quote = "`" + ConsoleDriver(*console).log().back() + "`";
    EXPECT_NE(std::string::npos, contentsOf(EMBEDDING_GUIDE).find(quote)) << quote;
    EXPECT_NE(std::string::npos, contentsOf(USING_GUIDE).find(quote)) << quote;
    EXPECT_EQ(U"x", console->activeInput());
}

TEST(EmbeddingGuide, WritesFromAnotherThread)
{
    Console console;
    {
        const Survey survey(console);
    }
    EXPECT_EQ(Lines({"    Tree 1 is measured.", "    Tree 2 is measured.", "    Tree 3 is measured."}),
              ConsoleDriver(console).log());
}

TEST(EmbeddingGuide, DrawsAWholeFrameFromARefreshedSnapshot)
{
    Console console;
    Overlay overlay(console);
    console.write(U"written later", console::Output);
    QImage drawn(320, 200, QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QImage expected = drawn;
    QPainter painter(&drawn);
    overlay.paint(painter, 0.0);
    QPainter plain(&expected);
    console::ConsoleRenderer().render(ElapsedSimTime(Time(0.0)), console.snapshot(), plain);
    EXPECT_EQ(expected, drawn);
}

TEST(EmbeddingGuide, AnswersAnExceptionInTheLog)
{
    Console console;
    addCommand(console, U"fail").onExecute = [](const console::ConsoleArgs&, Console&) {
        throw std::runtime_error("no wind");
    };
    EXPECT_FALSE(runLine(console, U"fail"));
    EXPECT_TRUE(runLine(console, U""));
    EXPECT_EQ(Lines({"fail", "    Failed: no wind", ""}), ConsoleDriver(console).log());
}

TEST(EmbeddingGuide, UnloadsAPlugin)
{
    Console console;
    QLibrary plugin(PLUGIN);
    registerCommandsOf(plugin, console);
    ASSERT_TRUE(plugin.isLoaded());
    console.execute(U"lamp on");
    EXPECT_TRUE(unload(plugin, console));
    console.execute(U"lamp on");
    EXPECT_EQ(Lines({"lamp on", "    The lamp is lit.", "", "lamp on", notRecognized("lamp"), ""}),
              ConsoleDriver(console).log());
}

TEST(EmbeddingGuide, UnloadsAPluginFromInsideAnotherCommand)
{
    Console console;
    QLibrary plugin(PLUGIN);
    registerCommandsOf(plugin, console);
    ASSERT_TRUE(plugin.isLoaded());
    bool isUnloaded = false;
    addCommand(console, U"unload").onExecute = [&](const console::ConsoleArgs&, Console& running) {
        isUnloaded = unload(plugin, running);
    };
    console.execute(U"unload");
    EXPECT_TRUE(isUnloaded);
    console.execute(U"lamp on");
    EXPECT_EQ(Lines({"unload", "", "lamp on", notRecognized("lamp"), ""}), ConsoleDriver(console).log());
}

} // namespace
} // namespace zephyr::test
