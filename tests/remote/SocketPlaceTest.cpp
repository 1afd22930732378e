#include "protocol/SocketPlace.h"

#include "support/SystemText.h"
#include "support/TemporaryDirectory.h"
#include "support/Unprivileged.h"

#include <QLocalServer>

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace zephyr::console::remote {
namespace {

using test::TemporaryDirectory;

class SocketPlaceTest : public testing::Test
{
protected:
    QString inside(const char* name) const
    {
        return QString::fromStdString((mDirectory.path() / name).string());
    }

    TemporaryDirectory mDirectory;
};

/// Sets a variable of the environment while it lives.
class Variable
{
public:
    Variable(const char* name, const QString& value) : mName(name), mBefore(qgetenv(name))
    {
        qputenv(name, value.toUtf8());
    }
    ~Variable() { qputenv(mName, mBefore); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* mName;
    QByteArray mBefore;
};

void changeMode(const QString& folder, mode_t mode)
{
    ASSERT_EQ(0, chmod(folder.toUtf8().constData(), mode));
}

QString inTmp() { return QString("/tmp/zephyr-console-%1").arg(geteuid()); }

TEST_F(SocketPlaceTest, IsInTheRuntimeFolderOfTheUser)
{
    const Variable runtime("XDG_RUNTIME_DIR", inside(""));
    EXPECT_EQ(inside("zephyr-console"), SocketPlace::ofUser().folder());
}

TEST_F(SocketPlaceTest, IsInTmpWithoutARuntimeFolderOfTheUsersOwn)
{
    const QString open = inside("open");
    ASSERT_TRUE(QDir().mkpath(open));
    changeMode(open, 0755);
    for (const QString& folder : {QString(), QString("."), inside("missing"), open, QString("/dev/null")}) {
        const Variable runtime("XDG_RUNTIME_DIR", folder);
        EXPECT_EQ(inTmp(), SocketPlace::ofUser().folder()) << folder.toStdString();
    }
}

TEST_F(SocketPlaceTest, MakesItsFolderForTheUserAlone)
{
    const SocketPlace place(inside("sockets"));
    EXPECT_EQ(std::nullopt, place.error()); // nothing is there yet, and nothing is wrong
    EXPECT_EQ(std::nullopt, place.make());
    EXPECT_EQ(std::filesystem::perms(0700),
              std::filesystem::status(mDirectory.path() / "sockets").permissions());
    EXPECT_EQ(std::nullopt, place.make());
    EXPECT_EQ(std::nullopt, place.error());
}

TEST_F(SocketPlaceTest, RefusesAFolderThatOthersMayEnter)
{
    const SocketPlace place(inside("sockets"));
    ASSERT_EQ(std::nullopt, place.make());
    for (const mode_t mode : {0710U, 0701U, 0740U, 0777U}) {
        changeMode(place.folder(), mode);
        const QString refusal = "The folder of the sockets, '" + place.folder() +
                                "', is open to other users: its mode must be 700.";
        EXPECT_EQ(refusal, place.make());
        EXPECT_EQ(refusal, place.error());
    }
}

TEST_F(SocketPlaceTest, RefusesALinkAndAFile)
{
    ASSERT_EQ(std::nullopt, SocketPlace(inside("sockets")).make());
    std::filesystem::create_directory_symlink(mDirectory.path() / "sockets", mDirectory.path() / "link");
    mDirectory.write("file", "");
    for (const char* const name : {"link", "file"}) {
        EXPECT_EQ("The folder of the sockets, '" + inside(name) + "', is no folder.",
                  SocketPlace(inside(name)).make());
    }
}

TEST_F(SocketPlaceTest, RefusesAFolderOfAnotherUser)
{
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can give a folder away";
    }
    const SocketPlace place(inside("sockets"));
    ASSERT_EQ(std::nullopt, place.make());
    ASSERT_EQ(0, chown(place.folder().toUtf8().constData(), 65534, 65534));
    EXPECT_EQ("The folder of the sockets, '" + place.folder() + "', belongs to another user.", place.error());
}

TEST_F(SocketPlaceTest, SaysWhyItCantMakeItsFolder)
{
    EXPECT_EQ("Can't make the folder of the sockets, '/proc/sockets': " +
                  QString::fromStdString(test::systemText(std::errc::no_such_file_or_directory)) + ".",
              SocketPlace("/proc/sockets").make());
}

TEST_F(SocketPlaceTest, TakesPlainNames)
{
    const SocketPlace place(inside("sockets"));
    for (const char* const name : {"sandbox", "sandbox-2", "a", "7", "A_b.c-D9", "a..b"}) {
        EXPECT_EQ(std::nullopt, place.errorInName(name)) << name;
    }
}

TEST_F(SocketPlaceTest, RefusesNamesThatMeanSomethingElseToAShellOrTheFileSystem)
{
    const SocketPlace place(inside("sockets"));
    for (const char* const name :
         {"", ".", "..", ".hidden", "-c", "_a", "a/b", "../a", "a b", "a\n", "\u00e9", "a*"}) {
        EXPECT_EQ(
            QString("'%1' can't be a program's name: it may have letters, digits, '-', '_' and '.', and "
                    "begins with a letter or digit.")
                .arg(name),
            place.errorInName(name));
    }
}

TEST_F(SocketPlaceTest, TakesNamesThatTheSystemTakesAndNoneThatIsLonger)
{
    const SocketPlace place(inside("sockets"));
    ASSERT_EQ(std::nullopt, place.make());
    const QString longest(place.maxNameLength(), 'a');
    EXPECT_EQ(std::nullopt, place.errorInName(longest));
    QLocalServer server;
    EXPECT_TRUE(server.listen(place.socketOf(longest))) << server.errorString().toStdString();
    QLocalServer other;
    EXPECT_FALSE(other.listen(place.socketOf(longest + 'a')));
    EXPECT_EQ(QString("The name '%1a' is too long: up to %2 characters fit into a socket's path.")
                  .arg(longest)
                  .arg(longest.size()),
              place.errorInName(longest + 'a'));
}

TEST_F(SocketPlaceTest, SaysThatItsOwnPathIsTooLong)
{
    const QString folder = "/" + QString(97, 'a');
    EXPECT_EQ("The folder of the sockets, '" + folder + "', has too long a path for a socket.",
              SocketPlace(folder).errorInName("a"));
    EXPECT_EQ(std::nullopt, SocketPlace(folder.chopped(1)).errorInName("a"));
}

TEST_F(SocketPlaceTest, NamesWhatHasASocketSorted)
{
    const SocketPlace place(inside("sockets"));
    EXPECT_EQ(QStringList(), place.names());
    ASSERT_EQ(std::nullopt, place.make());
    QLocalServer second;
    QLocalServer first;
    ASSERT_TRUE(second.listen(place.socketOf("b")));
    ASSERT_TRUE(first.listen(place.socketOf("a")));
    QLocalServer odd;
    ASSERT_TRUE(odd.listen(place.folder() + "/-x.socket"));
    mDirectory.write("sockets/file.socket", "");
    mDirectory.write("sockets/other", "");
    EXPECT_EQ((QStringList{"a", "b"}), place.names());
}

} // namespace
} // namespace zephyr::console::remote
