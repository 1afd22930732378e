#include "batch/Script.h"

#include "support/SystemText.h"
#include "support/TemporaryDirectory.h"

#include <QFile>

#include <gtest/gtest.h>

#include <vector>

namespace zephyr::console::remote {
namespace {

std::vector<ScriptLine> linesOf(const QByteArray& text)
{
    Script script;
    script.add(text);
    script.end();
    std::vector<ScriptLine> lines;
    while (const auto line = script.next()) {
        lines.push_back(*line);
    }
    return lines;
}

using Lines = std::vector<ScriptLine>;

TEST(Script, HasALineForEachLineFeedAndTheRest)
{
    EXPECT_EQ((Lines{{1, "wind set 4"}, {2, "help"}}), linesOf("wind set 4\nhelp\n"));
    EXPECT_EQ((Lines{{1, "wind set 4"}, {2, "help"}}), linesOf("wind set 4\nhelp"));
    EXPECT_EQ(Lines{}, linesOf(""));
}

TEST(Script, SkipsEmptyLinesAndCommentsAndStillCountsThem)
{
    EXPECT_EQ((Lines{{4, "help"}, {7, "/ // x"}}),
              linesOf("\n  \t\n// first\nhelp\n   //second\n//\n/ // x"));
}

TEST(Script, TakesWhiteSpaceAndByteOrderMarksOffBothEnds)
{
    EXPECT_EQ((Lines{{1, "a  b"}, {2, "c"}}), linesOf("\xEF\xBB\xBF \t\v\f\xC2\xA0\xE3\x80\x80"
                                                      "a  b \xE2\x80\xA8\xEF\xBB\xBF\r\nc\r\n"));
    EXPECT_EQ((Lines{{2, "a"}}), linesOf("\xEF\xBB\xBF// comment\na"));
}

TEST(Script, ReadsIllFormedTextAsReplacementCharacters)
{
    EXPECT_EQ((Lines{{1, QString("a") + QChar(0xFFFD) + "b"}}), linesOf("a\xFF"
                                                                        "b"));
}

TEST(Script, ComesInPiecesOfAnySize)
{
    const QByteArray text = QString::fromUtf8("say \u00e9\u4e16\n\n//x\nhelp").toUtf8();
    Script script;
    Lines lines;
    for (const char byte : text) {
        script.add(QByteArray(1, byte));
        while (const auto line = script.next()) {
            lines.push_back(*line);
        }
    }
    EXPECT_EQ((Lines{{1, QString::fromUtf8("say \u00e9\u4e16")}}), lines);
    script.end();
    EXPECT_EQ((ScriptLine{4, "help"}), script.next());
    EXPECT_EQ(4, script.lineCount());
}

TEST(Script, StopsBeforeALineThatIsTooLong)
{
    Script script;
    script.add("help\n//\n" + QByteArray(kMaxScriptLineBytes, 'a') + "\n" +
               QByteArray(kMaxScriptLineBytes + 1, 'b'));
    EXPECT_EQ((ScriptLine{1, "help"}), script.next());
    EXPECT_EQ(kMaxScriptLineBytes, script.next()->text.size());
    EXPECT_EQ(std::nullopt, script.next());
    EXPECT_TRUE(script.isOverLimit());
    EXPECT_EQ(3, script.lineCount());
}

TEST(ScriptFile, OpensWhatCanBeRead)
{
    const test::TemporaryDirectory directory;
    QFile file(QString::fromStdString(directory.write("a.console", "help\n").string()));
    EXPECT_EQ(std::nullopt, openScript(file));
    EXPECT_EQ("help\n", file.readAll());
}

TEST(ScriptFile, SaysWhyItCantBeOpened)
{
    const test::TemporaryDirectory directory;
    const QString folder = QString::fromStdString(directory.path().string());
    QFile missing(folder + "/missing");
    EXPECT_EQ("Can't read '" + folder + "/missing': " +
                  QString::fromStdString(test::systemText(std::errc::no_such_file_or_directory)) + ".",
              openScript(missing));
    QFile noFile(folder);
    EXPECT_EQ("Can't read '" + folder + "': it is a folder.", openScript(noFile));
}

} // namespace
} // namespace zephyr::console::remote
