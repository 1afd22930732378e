// What docs/remote-protocol.md shows is what a server says.

#include "ServerFixture.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace zephyr::console::remote {
namespace {

QString page()
{
    QFile file(ZEPHYR_PROTOCOL_PAGE);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

/// The blocks of a language on the page, "" for those without one.
QStringList blocksOf(const QString& language)
{
    static const QRegularExpression fence("^```(\\w*)\\n(.*?)^```$",
                                          QRegularExpression::MultilineOption |
                                              QRegularExpression::DotMatchesEverythingOption);
    QStringList blocks;
    auto matches = fence.globalMatch(page());
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.captured(1) == language) {
            blocks += match.captured(2);
        }
    }
    return blocks;
}

TEST(ProtocolPage, ShowsRequestsAndMessages)
{
    int lines = 0;
    for (const QString& block : blocksOf("json")) {
        for (const QString& line : block.split('\n', Qt::SkipEmptyParts)) {
            const bool isRequest = std::holds_alternative<Request>(readRequest(line.toUtf8()));
            const bool isMessage = std::holds_alternative<Message>(readMessage(line.toUtf8()));
            EXPECT_NE(isRequest, isMessage) << line.toStdString();
            ++lines;
        }
    }
    EXPECT_GT(lines, 8);
}

using ProtocolPageInAShell = ServerFixture;

TEST_F(ProtocolPageInAShell, ShowsWhatSocatSees)
{
    commands::addEcho(console);
    const ConsoleServer server(console, "sandbox");
    const QString block = blocksOf("").constFirst();
    ASSERT_TRUE(block.startsWith("$ "));
    const QStringList lines = block.mid(2).split('\n', Qt::SkipEmptyParts);
    const auto firstAnswer =
        std::find_if(lines.begin(), lines.end(), [](const QString& line) { return line.startsWith('{'); });
    const QString command = QStringList(lines.begin(), firstAnswer).join('\n');
    const QString answers = QStringList(firstAnswer, lines.end()).join('\n') + '\n';

    QProcess shell;
    shell.start("bash", {"-c", command});
    ASSERT_TRUE(waitUntil([&] { return shell.state() == QProcess::NotRunning; }));
    EXPECT_EQ("", shell.readAllStandardError().toStdString());
    QString printed = QString::fromUtf8(shell.readAllStandardOutput());
    printed.replace(QString("\"pid\":%1").arg(QCoreApplication::applicationPid()), "\"pid\":4711");
    EXPECT_EQ(answers.toStdString(), printed.toStdString());
}

} // namespace
} // namespace zephyr::console::remote
