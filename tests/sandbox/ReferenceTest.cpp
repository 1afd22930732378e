#include "sandbox/ProgramRun.h"
#include "sandbox/SandboxFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <sstream>

namespace zephyr::test {
namespace {

/// The argument handler by which a typed command describes itself as a whole.
constexpr char kWholeCommand[] = "Usage";

std::string textOf(const QJsonValue& object, const char* key)
{
    return object[QLatin1String(key)].toString().toStdString();
}

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

std::string printedReference(const char* format)
{
    Program program;
    const Ended ended = program.run({"--reference", format});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ("", ended.err);
    return ended.out;
}

QJsonArray commandsOf(const std::string& json)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(json)).object()["commands"].toArray();
}

class Reference : public SandboxFixture
{
protected:
    Lines commandNames()
    {
        Lines names;
        sandbox.console().forEachCommand([&](const console::ConsoleCommand& command) {
            names.push_back(StringUtil::toString(command.name()));
        });
        return names;
    }

    /// The sub-commands, as the console knows them.
    Lines subCommandsOf(const std::string& command)
    {
        Lines names;
        const auto add = [&](const std::u32string& name) { names.push_back(StringUtil::toString(name)); };
        sandbox.console().lookupCommand(StringUtil::toU32String(command))->forEachArg(add);
        std::erase(names, kWholeCommand);
        return names;
    }

    /// All that `help` says of a command and its sub-commands.
    std::string helpOf(const std::string& command)
    {
        Lines lines = answerTo("help " + command);
        for (const std::string& sub : subCommandsOf(command)) {
            const Lines more = answerTo("help " + command + " " + sub);
            lines.insert(lines.end(), more.begin(), more.end());
        }
        std::string text;
        for (const std::string& line : lines) {
            text += line + '\n';
        }
        return text;
    }
};

TEST_F(Reference, HasAHeadingForEachCommandInTheirOrder)
{
    Lines headings;
    std::istringstream markdown(printedReference("markdown"));
    for (std::string line; std::getline(markdown, line);) {
        if (line.starts_with("## ")) {
            std::erase(line, '\\'); // before an underscore
            headings.push_back(line.substr(3));
        }
    }
    EXPECT_EQ(commandNames(), headings);
}

TEST_F(Reference, ShowsTheUsageOfEachForm)
{
    const std::string markdown = printedReference("markdown");
    for (const char* const usage :
         {"wind set [SPEED] [HEADING]", "sim record /path=FILE [/steps=NUMBER]", "obstacle add X Y [RADIUS]",
          "particles count [COUNT]", "alias_save FILE", "clear", "echo [TEXT...]", "history [COUNT]",
          "vars reset [PREFIX]", "run list", "quit"}) {
        EXPECT_NE(std::string::npos, markdown.find("\n`" + std::string(usage) + "`\n")) << usage;
    }
}

TEST_F(Reference, SaysWhatHelpSays)
{
    Lines names;
    std::size_t parameterCount = 0;
    for (const QJsonValue& command : commandsOf(printedReference("json"))) {
        names.push_back(textOf(command, "name"));
        const std::string help = helpOf(names.back());
        for (const QJsonValue& form : command["forms"].toArray()) {
            if (command.toObject().contains("description")) { // of the command library
                EXPECT_TRUE(contains(help, textOf(form, "usage") + '\n')) << help;
            }
            EXPECT_TRUE(contains(help, textOf(form, "description"))) << help;
            for (const QJsonValue& parameter : form["parameters"].toArray()) {
                EXPECT_TRUE(contains(help, ": " + textOf(parameter, "expected"))) << help;
                EXPECT_TRUE(contains(help, textOf(parameter, "default"))) << help;
                EXPECT_TRUE(contains(help, textOf(parameter, "description") + '\n')) << help;
                ++parameterCount;
            }
        }
    }
    EXPECT_EQ(commandNames(), names);
    EXPECT_GT(parameterCount, 10U);
}

TEST_F(Reference, HasEverySubCommand)
{
    for (const QJsonValue& command : commandsOf(printedReference("json"))) {
        const std::string name = textOf(command, "name");
        std::string usages;
        for (const QJsonValue& form : command["forms"].toArray()) {
            usages += textOf(form, "usage") + " \n";
        }
        for (const std::string& sub : subCommandsOf(name)) {
            EXPECT_TRUE(contains(usages, name + ' ' + sub + ' ')) << usages;
        }
    }
}

} // namespace
} // namespace zephyr::test
