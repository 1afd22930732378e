#include "ServerFixture.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <QFile>

#include <optional>

#include <sys/stat.h>

namespace zephyr::console::remote {
namespace {

using ServerName = ServerFixture;

TEST_F(ServerName, IsNumberedWhereAnotherProgramHasIt)
{
    const ConsoleServer first(console, "sandbox");
    std::optional<ConsoleServer> second;
    second.emplace(console, "sandbox");
    EXPECT_EQ("sandbox-2", second->name());
    const ConsoleServer third(console, "sandbox");
    EXPECT_EQ("sandbox-3", third.name());
    second.reset();
    second.emplace(console, "sandbox");
    EXPECT_EQ("sandbox-2", second->name()) << "free again";
}

TEST_F(ServerName, IsRefusedWhereItMustBeExactAndAnotherProgramHasIt)
{
    const ConsoleServer first(console, "sandbox");
    const ConsoleServer second(console, "sandbox", ConsoleServer::Naming::Exact);
    EXPECT_FALSE(second.isListening());
    EXPECT_EQ("", second.name());
    EXPECT_EQ("Another program that is running is called 'sandbox'.", second.error());
    EXPECT_EQ(U"The console can't be served. Another program that is running is called 'sandbox'.",
              lastLine());
}

TEST_F(ServerName, IsTakenOverFromAProgramThatHasCrashed)
{
    const SocketPlace place = SocketPlace::ofUser();
    ASSERT_FALSE(place.make());
    QFile(place.lockOf("sandbox")).open(QIODevice::WriteOnly);
    ASSERT_EQ(0, mknod(QFile::encodeName(place.socketOf("sandbox")).constData(), S_IFSOCK | 0600, 0));
    const ConsoleServer server(console, "sandbox");
    EXPECT_EQ("sandbox", server.name());
    PlainClient client("sandbox");
    EXPECT_TRUE(std::holds_alternative<HelloMessage>(client.next()));
}

TEST_F(ServerName, LeavesNothingBehind)
{
    {
        const ConsoleServer server(console, "sandbox");
        ASSERT_TRUE(server.isListening());
        EXPECT_EQ(2, filesOfServers());
    }
    EXPECT_EQ(0, filesOfServers());
}

TEST_F(ServerName, IsASocketForTheUserAlone)
{
    const ConsoleServer server(console, "sandbox");
    struct stat seen = {};
    ASSERT_EQ(0, stat(QFile::encodeName(SocketPlace::ofUser().socketOf("sandbox")).constData(), &seen));
    EXPECT_EQ(0u, seen.st_mode & 0077u);
    ASSERT_EQ(0, stat(QFile::encodeName(SocketPlace::ofUser().folder()).constData(), &seen));
    EXPECT_EQ(0700u, seen.st_mode & 0777u);
}

TEST_F(ServerName, IsRefusedIfItCanBeNone)
{
    for (const char* const name : {"", "a b", "../a", ".a", "a/b", "\xc3\xa4"}) {
        const ConsoleServer server(console, name);
        EXPECT_FALSE(server.isListening()) << name;
        EXPECT_NE("", server.error()) << name;
    }
}

TEST_F(ServerName, MayHaveTheGreatestLength)
{
    const QString name(SocketPlace::ofUser().maxNameLength(), 'a');
    const ConsoleServer server(console, name);
    EXPECT_EQ(name, server.name()) << server.error().toStdString();
    PlainClient client(name);
    EXPECT_TRUE(std::holds_alternative<HelloMessage>(client.next()));
    const ConsoleServer longer(console, name + 'a');
    EXPECT_FALSE(longer.isListening());
}

TEST_F(ServerName, IsFreeAgainWhereItCantBeListenedAt)
{
    const SocketPlace place = SocketPlace::ofUser();
    ASSERT_FALSE(place.make());
    ASSERT_TRUE(QDir().mkdir(place.socketOf("sandbox")));
    const ConsoleServer server(console, "sandbox");
    EXPECT_FALSE(server.isListening());
    EXPECT_EQ("", server.name());
    EXPECT_NE("", server.error());
    EXPECT_FALSE(QFile::exists(place.lockOf("sandbox")));
}

TEST_F(ServerName, IsRefusedInAFolderThatOthersMayEnter)
{
    const SocketPlace place = SocketPlace::ofUser();
    ASSERT_FALSE(place.make());
    ASSERT_EQ(0, chmod(QFile::encodeName(place.folder()).constData(), 0755));
    const ConsoleServer server(console, "sandbox");
    EXPECT_FALSE(server.isListening());
    EXPECT_NE("", server.error());
}

} // namespace
} // namespace zephyr::console::remote
