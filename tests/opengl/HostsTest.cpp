#include "minimal/ConsolePicture.h"
#include "minimal/HostProgram.h"

#include <QFontMetrics>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <tuple>

namespace zephyr::test {
namespace {

/// A program that draws with OpenGL by hand.
struct Host
{
    const char* name;
    const char* program;
};

void PrintTo(const Host& host, std::ostream* out) { *out << host.name; }

constexpr Host kHosts[] = {{"Widget", WIDGET_PROGRAM},
                           {"CullingWidget", CULLING_WIDGET_PROGRAM},
                           {"UnderQuick", UNDER_QUICK_PROGRAM},
                           {"RenderThread", RENDER_THREAD_PROGRAM}};

class OpenGLHosts : public testing::TestWithParam<std::tuple<Host, int>>
{
protected:
    /// Whether `picture` shows a console with `input` as its input line. The host's triangle has no green in it.
    bool isOpen(const QImage& picture, const std::u32string& input)
    {
        console::Console console;
        const QImage expected = consolePicture(console, input, kGround, kSize * scale, scale);
        const int lineHeight = QFontMetrics(*console.snapshot().font()).height();
        constexpr double kTolerance = 0.01;
        return showsTheSameText(expected, picture, scale * lineHeight, kTolerance);
    }

    /// Whether `picture` shows the host's own ground and triangle.
    bool isHostsOwn(const QImage& picture) const
    {
        return picture.pixel(0, 0) == kGround && picture.pixel(kInTriangle * scale) == kTriangle;
    }

    static constexpr QSize kSize{640, 400};
    static constexpr QPoint kInTriangle{510, 330};
    static constexpr QRgb kGround = qRgb(41, 79, 120);
    static constexpr QRgb kTriangle = qRgb(204, 0, 51);

    const int scale = std::get<1>(GetParam());
    HostProgram program{std::get<0>(GetParam()).program, scale, true};
};

TEST_P(OpenGLHosts, ShowTheConsoleOverTheirPictureAndTheirPictureAsBeforeWhenItIsClosed)
{
    const QImage closed = program.pictureThat([&](const QImage& picture) { return isHostsOwn(picture); });
    ASSERT_TRUE(isHostsOwn(closed));
    EXPECT_EQ(kSize * scale, closed.size());

    const QString keyLeftOfOne = "49";
    program.press({keyLeftOfOne});
    program.type("hel");
    const QImage open = program.pictureThat([&](const QImage& picture) { return isOpen(picture, U"hel"); });
    EXPECT_TRUE(isOpen(open, U"hel"));
    const QRgb dimmed = open.pixel(kInTriangle * scale);
    EXPECT_GT(qRed(kTriangle), qRed(dimmed));
    EXPECT_LT(qGreen(dimmed), qRed(dimmed)); // the triangle shines through

    program.press({keyLeftOfOne});
    EXPECT_EQ(closed, program.pictureThat([&](const QImage& picture) { return picture == closed; }));
    EXPECT_EQ(0, program.close()) << program.errors();
}

INSTANTIATE_TEST_SUITE_P(, OpenGLHosts, testing::Combine(testing::ValuesIn(kHosts), testing::Values(1, 2)),
                         [](const auto& instance) {
                             return std::string(std::get<0>(instance.param).name) + "AtScale" +
                                    std::to_string(std::get<1>(instance.param));
                         });

} // namespace
} // namespace zephyr::test
