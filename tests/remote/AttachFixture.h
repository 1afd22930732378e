#ifndef ZEPHYR_TESTS_REMOTE_ATTACHFIXTURE_H
#define ZEPHYR_TESTS_REMOTE_ATTACHFIXTURE_H

#include "remote/ServerFixture.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/commands/Command.h"
#include "zephyr/console/commands/Failure.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>

namespace zephyr::console::remote {

/// How zephyr-attach ended and what it wrote.
struct AttachEnded
{
    int exitCode = -1;
    std::string out;
    std::string err;

    bool operator==(const AttachEnded&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const AttachEnded& ended)
{
    return stream << ended.exitCode << "\n--- out\n" << ended.out << "--- err\n" << ended.err;
}

/// A console that is served as "sandbox" by this process, and zephyr-attach as another one.
class AttachFixture : public ServerFixture
{
protected:
    AttachFixture()
    {
        commands::addEcho(console);
        commands::add(console, U"brake", U"Brakes.", [] { commands::fail(U"No brakes."); });
        server.emplace(console, "sandbox");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_STATE_HOME", pathOf("state"));
        environment.insert("LC_ALL", "C"); // of which Qt would complain
        attach.setProcessEnvironment(environment);
        attach.setWorkingDirectory(pathOf(""));
    }

    /// The path of a file in the test's folder.
    QString pathOf(const char* name) const { return QString::fromStdString((folder.path() / name).string()); }

    void start(const QStringList& arguments) { attach.start(ZEPHYR_ATTACH_PROGRAM, arguments); }

    /// Waits for zephyr-attach to end, while the console is served.
    AttachEnded end()
    {
        if (!waitUntil([this] { return attach.state() == QProcess::NotRunning; })) {
            throw std::runtime_error("zephyr-attach hangs");
        }
        if (attach.exitStatus() != QProcess::NormalExit) {
            throw std::runtime_error("zephyr-attach crashed: " + attach.readAllStandardError().toStdString());
        }
        return {attach.exitCode(), attach.readAllStandardOutput().toStdString(),
                attach.readAllStandardError().toStdString()};
    }

    AttachEnded run(const QStringList& arguments, const QByteArray& input = {})
    {
        start(arguments);
        attach.write(input);
        attach.closeWriteChannel();
        return end();
    }

    /// Waits until zephyr-attach has written `text` to standard output since the last call.
    void waitForOutput(const QByteArray& text)
    {
        if (!waitUntil([&] { return attach.peek(1 << 20).contains(text); })) {
            throw std::runtime_error("zephyr-attach doesn't write what the test waits for, but: " +
                                     attach.readAllStandardOutput().toStdString());
        }
        attach.readAllStandardOutput();
    }

    std::optional<ConsoleServer> server;
    QProcess attach;
};

} // namespace zephyr::console::remote

#endif
