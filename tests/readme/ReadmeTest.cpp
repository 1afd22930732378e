#include "ReadmeCommand.h"
#include "support/ConsoleDriver.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace zephyr::test {
namespace {

QString contentsOf(const char* name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error(std::string("can't read ") + name);
    }
    return QString::fromUtf8(file.readAll());
}

TEST(Readme, CountsTheLinesThatTheConsoleTakes)
{
    const QStringList numbers{"no", "one", "two", "three", "four", "five", "six", "seven", "eight", "nine"};
    const QStringList lines = contentsOf(README_WINDOW).split('\n');
    const QStringList ofTheConsole =
        lines.filter(QRegularExpression("zephyr|console|host", QRegularExpression::CaseInsensitiveOption));
    const QString sentence = "takes " + numbers.value(ofTheConsole.size()) + " lines of it";
    EXPECT_TRUE(contentsOf(README_FILE).contains(sentence)) << sentence.toStdString();
}

TEST(Readme, ShowsACommandThatRuns)
{
    console::Console console;
    console.registerCommand(std::make_unique<GreetCommand>());
    console.execute(U"greet World");
    EXPECT_EQ(std::vector<std::string>({"greet World", "    Hello, World.", ""}),
              ConsoleDriver(console).log());
}

} // namespace
} // namespace zephyr::test
