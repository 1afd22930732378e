#include "sandbox/program/Screenshot.h"

#include "sandbox/Pipe.h"
#include "support/TemporaryDirectory.h"

#include <QImage>

#include <gtest/gtest.h>

namespace zephyr::sandbox {
namespace {

class Picture : public testing::Test
{
protected:
    static QImage redPicture()
    {
        QImage picture(3, 2, QImage::Format_RGB32);
        picture.fill(Qt::red);
        return picture;
    }

    test::TemporaryDirectory directory;
    test::WorkingDirectory inside{directory.path()};
};

TEST_F(Picture, IsWrittenAsPng)
{
    EXPECT_EQ("", savePicture(redPicture(), "red"));
    EXPECT_EQ(redPicture(), QImage("red", "PNG").convertToFormat(QImage::Format_RGB32));
}

TEST_F(Picture, IsReportedWhenThereIsNone)
{
    directory.write("old.png", "as it was");
    EXPECT_EQ("can't write 'old.png': there is no picture of the window.", savePicture(QImage(), "old.png"));
    EXPECT_EQ("as it was", directory.read("old.png"));
}

TEST_F(Picture, IsNotWrittenIntoAPipe)
{
    const test::Pipe pipe("pipe");
    EXPECT_EQ("can't write 'pipe': it is no regular file.", savePicture(redPicture(), "pipe"));
    EXPECT_TRUE(std::filesystem::is_fifo("pipe"));
}

} // namespace
} // namespace zephyr::sandbox
