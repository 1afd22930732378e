#include "zephyr/common/ExternalProcess.h"

#include "TemporaryWorkingDirectory.h"

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

using zephyr::ExternalProcess;
using zephyr::test::TemporaryWorkingDirectory;

/// Stands in for the default application: collects every file URL that is opened during its lifetime.
class FileUrlHandler : public QObject
{
    Q_OBJECT

public:
    FileUrlHandler() { QDesktopServices::setUrlHandler("file", this, "keep"); }
    ~FileUrlHandler() override { QDesktopServices::unsetUrlHandler("file"); }

    QList<QUrl> opened;

public slots:
    void keep(const QUrl& url) { opened.append(url); }
};

class ExternalProcessTest : public testing::Test
{
protected:
    /// The encoded URLs that opening `path` hands to the default application.
    QList<QByteArray> urlsOf(const std::string& path)
    {
        mHandler.opened.clear();
        mAnswer = ExternalProcess::openFileInDefaultApplication(path);
        QList<QByteArray> urls;
        for (const QUrl& url : mHandler.opened) {
            urls.append(url.toEncoded());
        }
        return urls;
    }

    FileUrlHandler mHandler;
    bool mAnswer = false;
};

TEST_F(ExternalProcessTest, OpensAFileByItsUrl)
{
    EXPECT_EQ(urlsOf("/tmp/log.txt"), QList<QByteArray>{"file:///tmp/log.txt"});
    EXPECT_TRUE(mAnswer);
    EXPECT_EQ(mHandler.opened.value(0).toLocalFile(), "/tmp/log.txt");
}

TEST_F(ExternalProcessTest, KeepsSpacesHashesAndLettersBeyondAscii)
{
    const std::string path = "/tmp/my log #1 caf\u00E9 100%20?.txt";
    EXPECT_EQ(urlsOf(path), QList<QByteArray>{"file:///tmp/my%20log%20%231%20caf%C3%A9%20100%2520%3F.txt"});
    EXPECT_TRUE(mAnswer);
    EXPECT_EQ(mHandler.opened.value(0).toLocalFile().toStdString(), path);
}

TEST_F(ExternalProcessTest, NeverTakesLeadingSlashesForAHost)
{
    EXPECT_EQ(urlsOf("//log.txt"), QList<QByteArray>{"file:///log.txt"});
    EXPECT_EQ(urlsOf("///tmp/log.txt"), QList<QByteArray>{"file:///tmp/log.txt"});
}

TEST_F(ExternalProcessTest, KeepsDotSegmentsThatALinkMayGiveAMeaning)
{
    EXPECT_EQ(urlsOf("/tmp/link/../log.txt"), QList<QByteArray>{"file:///tmp/link/../log.txt"});
}

TEST_F(ExternalProcessTest, ResolvesARelativePathAgainstTheCurrentDirectory)
{
    const TemporaryWorkingDirectory directory;
    EXPECT_EQ(urlsOf("log.txt").size(), 1);
    EXPECT_EQ(mHandler.opened.value(0).toLocalFile().toStdString(), (directory.path() / "log.txt").string());
    EXPECT_TRUE(mAnswer);
}

TEST_F(ExternalProcessTest, OpensNothingForARelativePathInARemovedDirectory)
{
    const TemporaryWorkingDirectory directory;
    std::filesystem::remove(directory.path());
    EXPECT_EQ(urlsOf("log.txt"), QList<QByteArray>{});
    EXPECT_FALSE(mAnswer);
}

TEST_F(ExternalProcessTest, OpensNothingForAnEmptyPath)
{
    EXPECT_EQ(urlsOf(""), QList<QByteArray>{});
    EXPECT_FALSE(mAnswer);
}

TEST_F(ExternalProcessTest, ReplacesBytesThatAreNoText)
{
    EXPECT_EQ(urlsOf("/tmp/\xFFx"), QList<QByteArray>{"file:///tmp/%EF%BF%BDx"});
}

} // namespace

#include "ExternalProcessTest.moc"
