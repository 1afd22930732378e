#include "zephyr/console/commands/Reference.h"
#include "commands/Wind.h"
#include "zephyr/console/commands/Variable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace zephyr::test {
namespace {

using namespace console::commands;

class Reference : public WindFixture
{
protected:
    Reference() { mConsole.execute(U"alias calm \"wind set 0; wind show\""); }

    Variable<double> mLimit{mConsole, U"wind.limit", 30.0, U"The *strongest* wind.",
                            between(0, 60).unit(U"m/s")};
    Variable<int> mSecret{mConsole, U"secret", 1, U"", hidden()};
};

TEST_F(Reference, IsMarkdown)
{
    EXPECT_EQ("# Commands\n"
              "\n## alias\n"
              "\n`alias`\n"
              "\n## help\n"
              "\n`help`\n"
              "\n## wind\n"
              "\nThe wind over the field.\n"
              "\n`wind set SPEED [/heading=NUMBER]`\n"
              "\nSets speed and heading.\n"
              "\n- `SPEED`: a number from 0 to 60 m/s.\n"
              "- `[/heading=NUMBER]`: a number from 0 to 360.\n"
              "\n`wind mode MODE [/loud] [/steps=1|10|100]`\n"
              "\nSets how the wind blows.\n"
              "\n- `MODE`: steady, gusty or still.\n"
              "- `[/loud]`: a flag. Whether it howls.\n"
              "- `[/steps=1|10|100]`: 1, 10 or 100, by default 10.\n"
              "\n`wind show`\n"
              "\nShows the wind.\n"
              "\n# Variables\n"
              "\n- `wind.limit`: a number from 0 to 60 m/s, by default 30 m/s. The \\*strongest\\* wind.\n"
              "\n# Aliases\n"
              "\n- `calm` runs `wind set 0; wind show`\n",
              reference(mConsole));
}

TEST_F(Reference, IsJson)
{
    const QJsonObject all =
        QJsonDocument::fromJson(QByteArray::fromStdString(reference(mConsole, ReferenceFormat::Json)))
            .object();
    const QJsonArray commands = all["commands"].toArray();
    ASSERT_EQ(3, commands.size());
    const QJsonObject wind = commands[2].toObject();
    EXPECT_EQ("wind", wind["name"].toString());
    const QJsonObject set = wind["forms"].toArray()[0].toObject();
    EXPECT_EQ("wind set SPEED [/heading=NUMBER]", set["usage"].toString());
    EXPECT_EQ("a number from 0 to 60 m/s", set["parameters"].toArray()[0].toObject()["expected"].toString());
    const QJsonArray variables = all["variables"].toArray();
    ASSERT_EQ(1, variables.size());
    EXPECT_EQ("30 m/s", variables[0].toObject()["default"].toString());
    EXPECT_FALSE(variables[0].toObject()["readOnly"].toBool(true));
    EXPECT_EQ((QJsonArray{"wind set 0", "wind show"}),
              all["aliases"].toArray()[0].toObject()["lines"].toArray());
}

TEST_F(Reference, ShowsHowAnArgumentIsTypedByName)
{
    add(mConsole, U"aim", U"Aims.", [](double) {}, argument(U"angle").orByName());
    EXPECT_NE(std::string::npos,
              reference(mConsole).find("\n`aim ANGLE`\n\n- `ANGLE` or `/angle=NUMBER`: a number.\n"));
    const QJsonObject all =
        QJsonDocument::fromJson(QByteArray::fromStdString(reference(mConsole, ReferenceFormat::Json)))
            .object();
    const QJsonObject aim = all["commands"].toArray()[0].toObject()["forms"].toArray()[0].toObject();
    EXPECT_EQ("/angle=NUMBER", aim["parameters"].toArray()[0].toObject()["byName"].toString());
}

class OldCommand : public console::ConsoleCommand
{
public:
    OldCommand() { registerArgHandler(U"go", {}, U"Goes.", U"Usage: old go"); }
    std::u32string name() const override { return U"old"; }
};

TEST_F(Reference, HasTheArgumentsOfAnyCommand)
{
    mConsole.registerCommand(std::make_unique<OldCommand>());
    EXPECT_NE(std::string::npos,
              reference(mConsole).find("\n## old\n\n`old go`\n\nGoes.\n\nUsage: old go\n"));
}

TEST_F(Reference, WritesNothingToTheConsole)
{
    const std::size_t before = mConsole.logSize();
    reference(mConsole);
    EXPECT_EQ(before, mConsole.logSize());
}

} // namespace
} // namespace zephyr::test
