#include "attach/Options.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace zephyr::attach {
namespace {

Options parsed(const QStringList& arguments)
{
    const ParsedOptions options = parseOptions(QStringList{"zephyr-attach"} + arguments);
    if (const auto* const error = std::get_if<OptionsError>(&options)) {
        ADD_FAILURE() << error->text.toStdString();
        return {};
    }
    return std::get<Options>(options);
}

std::string errorOf(const QStringList& arguments)
{
    const ParsedOptions options = parseOptions(QStringList{"zephyr-attach"} + arguments);
    const auto* const error = std::get_if<OptionsError>(&options);
    return error != nullptr ? error->text.toStdString() : "no error";
}

TEST(AttachOptions, AreASessionWithTheOnlyProgramIfThereAreNone)
{
    const Options options = parsed({});
    EXPECT_FALSE(options.wantsHelp || options.wantsVersion || options.lists || options.keepsGoing ||
                 options.follows || options.isJson);
    EXPECT_FALSE(options.name || options.line || options.file);
    EXPECT_EQ(10, options.last);
}

TEST(AttachOptions, HaveLongAndShortNames)
{
    EXPECT_TRUE(parsed({"--help"}).wantsHelp && parsed({"-h"}).wantsHelp);
    EXPECT_TRUE(parsed({"--version"}).wantsVersion && parsed({"-v"}).wantsVersion);
    EXPECT_TRUE(parsed({"--list"}).lists && parsed({"-l"}).lists);
    EXPECT_EQ("wind set 4", parsed({"--command", "wind set 4"}).line);
    EXPECT_EQ("wind set 4", parsed({"-c", "wind set 4"}).line);
    EXPECT_EQ("a.console", parsed({"--file", "a.console"}).file);
    EXPECT_EQ("a.console", parsed({"-f", "a.console"}).file);
    EXPECT_TRUE(parsed({"--keep-going"}).keepsGoing && parsed({"-k"}).keepsGoing);
    EXPECT_EQ(0, parsed({"--last", "0"}).last);
    EXPECT_EQ(200, parsed({"-n", "200"}).last);
    EXPECT_TRUE(parsed({"--follow"}).follows);
    EXPECT_TRUE(parsed({"--json"}).isJson);
}

TEST(AttachOptions, TakeTheProgramsNameAnywhere)
{
    EXPECT_EQ("sandbox", parsed({"sandbox", "-c", "help"}).name);
    EXPECT_EQ("sandbox", parsed({"-c", "help", "sandbox"}).name);
}

TEST(AttachOptions, TakeLinesAndFilesThatBeginWithADash)
{
    EXPECT_EQ("-x", parsed({"sandbox", "-c", "-x"}).line);
    EXPECT_EQ("", parsed({"sandbox", "-c", ""}).line);
    EXPECT_EQ("-", parsed({"sandbox", "-f", "-"}).file);
}

TEST(AttachOptions, RefuseWhatMakesNoSense)
{
    const std::vector<std::pair<QStringList, std::string>> wrong{
        {{"--colour"}, "Unknown option 'colour'."},
        {{"-c"}, "Missing value after '-c'."},
        {{"sandbox", "help"}, "Unexpected argument 'help'."},
        {{"--list", "sandbox"}, "'--list' takes no name of a program."},
        {{"-f", ""}, "'--file' needs the name of a file."},
        {{"-n", "-1"}, "'--last' takes a number from 0 on, not '-1'."},
        {{"-n", "ten"}, "'--last' takes a number from 0 on, not 'ten'."},
        {{"-c", "a", "-f", "b"}, "'--command' and '--file' exclude each other."},
        {{"-l", "-c", "a"}, "'--list' and '--command' exclude each other."},
        {{"--follow", "-f", "a"}, "'--file' and '--follow' exclude each other."},
        {{"--follow", "-k"}, "'--follow' and '--keep-going' exclude each other."},
        {{"--list", "-k"}, "'--list' and '--keep-going' exclude each other."},
        {{"-c", "a", "-n", "1"}, "'--command' and '--last' exclude each other."},
    };
    for (const auto& [arguments, error] : wrong) {
        EXPECT_EQ(error, errorOf(arguments)) << arguments.join(' ').toStdString();
    }
}

/// The long options in the help, without their dashes.
QStringList optionsInHelp()
{
    static const QRegularExpression pattern("^  .*--([a-z-]+)", QRegularExpression::MultilineOption);
    QStringList options;
    for (auto found = pattern.globalMatch(helpText()); found.hasNext();) {
        options += found.next().captured(1);
    }
    return options;
}

QByteArray source(const char* name)
{
    QFile file(QString(ZEPHYR_ATTACH_SOURCES "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

TEST(AttachOptions, AreAllInTheHelpTheManualAndTheCompletions)
{
    const QStringList options = optionsInHelp();
    EXPECT_EQ(
        (QStringList{"help", "version", "list", "command", "file", "keep-going", "follow", "last", "json"}),
        options);
    for (const QString& option : options) {
        EXPECT_TRUE(source("zephyr-attach.1").contains("\n.It Fl -" + option.toUtf8()) ||
                    source("zephyr-attach.1").contains(", Fl -" + option.toUtf8()))
            << option.toStdString();
        EXPECT_TRUE(source("zephyr-attach.bash").contains("--" + option.toUtf8())) << option.toStdString();
        EXPECT_TRUE(source("_zephyr-attach").contains("--" + option.toUtf8())) << option.toStdString();
    }
}

} // namespace
} // namespace zephyr::attach
