#include "qt/HostedConsole.h"

#include <QClipboard>
#include <QGuiApplication>

namespace zephyr::test {
namespace {

class ConsoleHostClipboard : public HostedConsole
{
protected:
    ConsoleHostClipboard()
    {
        addCommand(*console, U"say").onExecute = [](const console::ConsoleArgs& args, Console& running) {
            for (unsigned i = 1; i < args.argCount(); ++i) {
                running.writeIndented(args.arg(i), 4);
            }
        };
        QGuiApplication::clipboard()->setText("before");
        open();
    }

    static std::string clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
};

TEST_F(ConsoleHostClipboard, IsLeftAloneUntilAskedFor)
{
    type("say hello\n");
    EXPECT_EQ("before", clipboard());
}

TEST_F(ConsoleHostClipboard, TakesTheWholeLog)
{
    type("say one \u6f22\U0001F600\n");
    console->write(U"two\nlines", console::Output);
    host.copyLog();
    EXPECT_EQ("Zephyr Console:\n\n>> say one \u6f22\U0001F600\n    one\n    \u6f22\U0001F600\n\ntwo\nlines\n",
              clipboard());
}

TEST_F(ConsoleHostClipboard, TakesTheLogOfAClosedConsole)
{
    host.setOpen(false);
    host.copyLog();
    EXPECT_EQ("Zephyr Console:\n\n", clipboard());
}

TEST_F(ConsoleHostClipboard, TakesTheAnswerToTheLastLine)
{
    type("say one\nsay two three\n");
    console->write(U"later", console::Output);
    host.copyLastAnswer();
    EXPECT_EQ("    two\n    three\n", clipboard());
}

TEST_F(ConsoleHostClipboard, TakesTheAnswersToTheLinesOfAnAlias)
{
    type("alias both \"say one;say two\"\n");
    type("both\n");
    host.copyLastAnswer();
    EXPECT_EQ(">> say one\n    one\n\n>> say two\n    two\n", clipboard());
}

TEST_F(ConsoleHostClipboard, TakesTheAnswerOfACommandThatThrew)
{
    addCommand(*console, U"fail").onExecute = [](const console::ConsoleArgs&, Console& running) {
        running.write(U"so far", console::Output);
        throw std::runtime_error("no further");
    };
    type("fail\n");
    host.copyLastAnswer();
    EXPECT_EQ("so far\nThe console caught an exception: no further\n", clipboard());
}

TEST_F(ConsoleHostClipboard, TakesTheAnswerAndNotWhatWasWrittenBeforeTheEcho)
{
    type("say one");
    console->write(U"from elsewhere", console::Output);
    type("\n");
    host.copyLastAnswer();
    EXPECT_EQ("    one\n", clipboard());
}

TEST_F(ConsoleHostClipboard, TakesTheLastAnswerOfAClosedConsole)
{
    type("say one\n");
    host.setOpen(false);
    host.copyLastAnswer();
    EXPECT_EQ("    one\n", clipboard());
}

TEST_F(ConsoleHostClipboard, IsLeftAloneWhereThereIsNoAnswer)
{
    host.copyLastAnswer();
    EXPECT_EQ("before", clipboard());
    type("say one\nsay\n");
    host.copyLastAnswer();
    EXPECT_EQ("before", clipboard());
}

} // namespace
} // namespace zephyr::test
