#include "sandbox/program/Screenshot.h"

#include "sandbox/Pipe.h"
#include "support/TemporaryDirectory.h"

#include <QImage>

#include <gtest/gtest.h>

namespace zephyr::sandbox {
namespace {

class Screenshot : public testing::Test
{
protected:
    static QImage redImage()
    {
        QImage picture(3, 2, QImage::Format_RGB32);
        picture.fill(Qt::red);
        return picture;
    }

    test::TemporaryDirectory directory;
    test::WorkingDirectory inside{directory.path()};
};

TEST_F(Screenshot, IsWrittenAsPng)
{
    EXPECT_EQ(std::nullopt, saveScreenshot(redImage(), "red"));
    EXPECT_EQ(redImage(), QImage("red", "PNG").convertToFormat(QImage::Format_RGB32));
}

TEST_F(Screenshot, IsReportedWhenThereIsNone)
{
    directory.write("old.png", "as it was");
    EXPECT_EQ("can't write 'old.png': there is no picture of the window.",
              saveScreenshot(QImage(), "old.png"));
    EXPECT_EQ("as it was", directory.read("old.png"));
}

TEST_F(Screenshot, IsNotWrittenIntoAPipe)
{
    const test::Pipe pipe("pipe");
    EXPECT_EQ("can't write 'pipe': it is no regular file.", saveScreenshot(redImage(), "pipe"));
    EXPECT_TRUE(std::filesystem::is_fifo("pipe"));
}

} // namespace
} // namespace zephyr::sandbox
