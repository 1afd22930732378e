#include "sandbox/ConsoleInput.h"
#include "sandbox/SandboxFixture.h"
#include "support/TemporaryDirectory.h"

#include <QPoint>
#include <QString>

#include <stdexcept>
#include <system_error>

namespace zephyr::test {
namespace {

/// Throws what it is told to by its second word.
class FailingCommand : public console::ConsoleCommand
{
public:
    std::u32string name() const override { return U"fail"; }

    void execute(const console::ConsoleArgs& args, console::Console&) override
    {
        if (args.isAnyArg(U"deadlock")) {
            throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        }
        if (args.isAnyArg(U"number")) {
            throw 7;
        }
        throw std::runtime_error("two\nlines");
    }

    std::vector<std::u32string> getAutoCompleteResults(const console::ConsoleArgs&) override
    {
        throw std::runtime_error("no completion");
    }
};

class ConsoleInput : public SandboxFixture
{
protected:
    ConsoleInput()
    {
        sandbox.console().registerCommand(std::make_unique<FailingCommand>());
        sandbox.console().open();
    }

    /// Presses the key that types `text`.
    bool type(const QString& text) { return input.keyPressed(Qt::Key_unknown, Qt::NoModifier, text); }

    bool enter(const QString& line)
    {
        for (const QChar c : line) {
            type(c);
        }
        return input.keyPressed(Qt::Key_Return, Qt::NoModifier, "\r");
    }

    int quits = 0;
    sandbox::ConsoleInput input{sandbox.console(), [this] { ++quits; }};
};

TEST_F(ConsoleInput, LeavesTheKeysOfAClosedConsoleToOthersButForTheBackQuote)
{
    sandbox.console().close();
    EXPECT_FALSE(input.keyPressed(Qt::Key_A, Qt::NoModifier, "a"));
    EXPECT_FALSE(input.keyPressed(Qt::Key_Return, Qt::NoModifier, "\r"));
    EXPECT_FALSE(input.keyReleased(Qt::Key_A, Qt::NoModifier, "a"));
    EXPECT_FALSE(input.wheelTurned(QPoint(0, 120)));

    EXPECT_TRUE(input.keyPressed(Qt::Key_QuoteLeft, Qt::NoModifier, "`"));
    EXPECT_TRUE(sandbox.console().isOpen());
    EXPECT_EQ("", driver.input());
}

TEST_F(ConsoleInput, TypesNothingOfAKeyThatOpensTheConsole)
{
    sandbox.console().close();
    EXPECT_TRUE(input.keyPressed(Qt::Key_QuoteLeft, Qt::NoModifier, "`ab"));
    EXPECT_EQ("", driver.input());
}

TEST_F(ConsoleInput, ConsumesTheKeysOfAnOpenConsole)
{
    EXPECT_TRUE(input.keyPressed(Qt::Key_A, Qt::NoModifier, "a"));
    EXPECT_TRUE(input.keyReleased(Qt::Key_A, Qt::NoModifier, "a"));
    EXPECT_TRUE(input.wheelTurned(QPoint(0, 120)));
    EXPECT_FALSE(input.keyPressed(Qt::Key_Tab, Qt::NoModifier, "\t"));
    EXPECT_EQ("a", driver.input());
}

TEST_F(ConsoleInput, JoinsSurrogatesToOneCodePoint)
{
    type(QString::fromUtf8("\U0001F600"));

    EXPECT_EQ(U"\U0001F600", sandbox.console().activeInput());
    EXPECT_EQ(1U, sandbox.console().cursorPosition());
}

TEST_F(ConsoleInput, TakesASurrogateWithoutItsPairForAReplacementCharacter)
{
    type(QString(QChar(0xD83D)));
    EXPECT_EQ(U"\uFFFD", sandbox.console().activeInput());
}

TEST_F(ConsoleInput, TypesEachCodePointOfAPress)
{
    type(QString::fromUtf8("a\u00e9\U0001F600b"));
    EXPECT_EQ(U"a\u00e9\U0001F600b", sandbox.console().activeInput());
}

TEST_F(ConsoleInput, TypesNoControlCharacters)
{
    for (char16_t c = 0; c < 0x20; ++c) {
        type(QString(QChar(c)));
    }
    for (char16_t c = 0x7F; c < 0xA0; ++c) {
        type(QString(QChar(c)));
    }
    EXPECT_EQ("", driver.input());

    type(QString::fromUtf8("\u00a0")); // the first that is none
    EXPECT_EQ(1U, sandbox.console().cursorPosition());
}

TEST_F(ConsoleInput, TypesNothingOfKeysThatCarryControlCharacters)
{
    input.keyPressed(Qt::Key_Escape, Qt::NoModifier, "\x1b");
    input.keyPressed(Qt::Key_A, Qt::ControlModifier, "\x01");
    input.keyPressed(Qt::Key_F5, Qt::NoModifier, "\x1b[15~");
    input.keyPressed(Qt::Key_Delete, Qt::NoModifier, "\x7f");
    input.keyPressed(Qt::Key_Backspace, Qt::NoModifier, "\b");

    EXPECT_EQ("", driver.input());
    EXPECT_EQ(Lines(), driver.log());
}

TEST_F(ConsoleInput, TypesNothingOfAnEscapeSequence)
{
    type("\x1b[A");
    type("x\x1b[31my");
    type(QString("z") + QChar(0x9B) + "31m");
    EXPECT_EQ("xz", driver.input());
}

TEST_F(ConsoleInput, LeavesControlCharactersOutOfAPressAndTypesTheRest)
{
    type("a\tb\nc");
    EXPECT_EQ("abc", driver.input());
}

TEST_F(ConsoleInput, SubmitsWithReturnAndEnter)
{
    EXPECT_TRUE(enter("wind show"));
    type("wind show");
    EXPECT_TRUE(input.keyPressed(Qt::Key_Enter, Qt::KeypadModifier, "\r"));

    EXPECT_EQ(Lines({"wind show", "    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.", "", "wind show",
                     "    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.", ""}),
              driver.log());
}

TEST_F(ConsoleInput, TurnsAnExceptionOfACommandIntoOneLine)
{
    EXPECT_TRUE(enter("fail"));
    EXPECT_EQ(Lines({"fail", "    Error: two lines"}), driver.log());

    EXPECT_TRUE(enter("fail number"));
    EXPECT_EQ("    Error: an exception of an unknown kind", driver.log().back());

    EXPECT_TRUE(enter("fail deadlock"));
    EXPECT_EQ("    Error: Resource deadlock avoided", driver.log().back());
}

TEST_F(ConsoleInput, TurnsAnExceptionOfACompletionIntoOneLine)
{
    type("fail ");
    EXPECT_TRUE(input.keyPressed(Qt::Key_Tab, Qt::NoModifier, "\t"));
    EXPECT_EQ(Lines({"    Error: no completion"}), driver.log());
}

TEST_F(ConsoleInput, SaysOnceForAPressThatTheInputLineIsFull)
{
    type(QString(2048, 'x'));
    EXPECT_EQ(Lines(), driver.log());

    EXPECT_TRUE(type("yyy"));
    EXPECT_EQ(Lines({"    Error: the input line is full"}), driver.log());
    EXPECT_EQ(std::string(2048, 'x'), driver.input());
}

TEST_F(ConsoleInput, TakesALineAwayWhoseCommandThrew)
{
    enter("fail");
    EXPECT_TRUE(sandbox.console().isOpen());
    EXPECT_EQ("", driver.input());
    driver.press(Qt::Key_Up);
    EXPECT_EQ("fail", driver.input());
}

TEST_F(ConsoleInput, LeavesTheLineWhoseCompletionThrew)
{
    type("fail ");
    input.keyPressed(Qt::Key_Tab, Qt::NoModifier, "\t");
    EXPECT_EQ("fail ", driver.input());
}

TEST_F(ConsoleInput, RunsLinesAndTurnsTheirExceptionsIntoOneLine)
{
    input.execute("wind show");
    input.execute("fail");
    EXPECT_EQ(Lines({"wind show", "    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.", "", "fail",
                     "    Error: two lines"}),
              driver.log());
}

TEST_F(ConsoleInput, RunsAFileFromTheRunpathIfThereIsOne)
{
    const TemporaryDirectory directory;
    directory.write("mine.console", "wind set 5\n");
    input.runFile(U"mine.console");
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(Lines(), driver.log());

    sandbox.console().appendRunpath(directory.path());
    input.runFile(U"mine.console");
    EXPECT_EQ(5.0, sandbox.simulation().wind().speed);
}

TEST_F(ConsoleInput, TurnsAPathThatCantBeTestedIntoOneLine)
{
    input.runFile(std::u32string(300, U'x'));
    ASSERT_EQ(1U, driver.log().size());
    EXPECT_EQ(0U, driver.log()[0].find("    Error: filesystem error: exists: File name too long"));
}

TEST_F(ConsoleInput, QuitsOnceAndPassesNothingOnAfterIt)
{
    EXPECT_FALSE(input.hasQuit());
    EXPECT_TRUE(enter("quit"));
    EXPECT_TRUE(input.hasQuit());
    EXPECT_EQ(1, quits);

    EXPECT_TRUE(type("x"));
    input.execute("wind show");
    enter("quit");
    EXPECT_EQ(1, quits);
    EXPECT_EQ(Lines({"quit"}), driver.log());
}

TEST_F(ConsoleInput, TurnsEighthsOfADegreeIntoDegrees)
{
    for (int i = 0; i < 20; ++i) {
        sandbox.console().newline();
    }
    input.wheelTurned(QPoint(0, 120)); // 15 degrees
    EXPECT_EQ(2U, sandbox.console().snapshot().scrollOffset());
    input.wheelTurned(QPoint(120, 0));
    EXPECT_EQ(2U, sandbox.console().snapshot().scrollOffset());
    input.wheelTurned(QPoint(0, -60)); // 7.5 degrees back
    EXPECT_EQ(1U, sandbox.console().snapshot().scrollOffset());
}

} // namespace
} // namespace zephyr::test
