#include "minimal/ConsolePicture.h"
#include "minimal/HostProgram.h"

#include <QDir>
#include <QFile>
#include <QFontMetrics>

#include <gtest/gtest.h>

#include <ostream>
#include <tuple>

namespace zephyr::test {
namespace {

using console::Console;

/// A minimal host, and what its window shows without the console.
struct Host
{
    const char* name;
    const char* program;
    QRgb color;
    double tolerance; // for showsTheSameText()
    bool usesOpenGL;
    bool isGreeting; // whether it has the command "greet"
};

void PrintTo(const Host& host, std::ostream* out) { *out << host.name; }

constexpr double kImageTolerance = 0.01;
constexpr double kOpenGLTolerance = 0.3;

constexpr Host kWidget{"Widget", WIDGET_PROGRAM, qRgb(40, 80, 120), kImageTolerance, false, true};
constexpr Host kOpenGLWindow{
    "OpenGLWindow", OPENGL_WINDOW_PROGRAM, qRgb(41, 79, 120), kOpenGLTolerance, true, true};
constexpr Host kQuickItem{"QuickItem", QUICK_ITEM_PROGRAM, qRgb(40, 80, 120), kImageTolerance, true, true};
constexpr Host kQml{"Qml", QML_PROGRAM, qRgb(40, 80, 120), kImageTolerance, true, true};
constexpr Host kReadmeWindow{"ReadmeWindow", README_WINDOW_PROGRAM, qRgb(0, 128, 128), kImageTolerance, false,
                             false};

/// The same command as in the hosts.
class GreetCommand : public console::ConsoleCommand
{
public:
    std::u32string name() const override { return U"greet"; }

    void execute(const console::ConsoleArgs& args, Console& output) override
    {
        output.writeIndented(U"Hello, " + args.arg(1) + U".", 4);
    }
};

class MinimalHosts : public testing::TestWithParam<std::tuple<Host, int>>
{
protected:
    MinimalHosts()
    {
        if (host.isGreeting) {
            console.registerCommand(std::make_unique<GreetCommand>());
        }
    }

    /// Whether `picture` shows the expected console with `input` as its input line.
    bool isOpen(const QImage& picture, const std::u32string& input)
    {
        const QImage expected = consolePicture(console, input, host.color, kSize * scale, scale);
        const int lineHeight = QFontMetrics(*console.snapshot().font()).height();
        return showsTheSameText(expected, picture, scale * lineHeight, host.tolerance);
    }

    /// Waits until the window shows the expected console. \return the picture, which is also saved for people to see.
    QImage waitUntilOpen(const std::u32string& input)
    {
        const QImage picture = program.pictureThat([&](const QImage& p) { return isOpen(p, input); });
        picture.save(QString("%1_%2.png").arg(host.name).arg(scale));
        EXPECT_TRUE(isOpen(picture, input)) << "see " << host.name << "_" << scale << ".png";
        return picture;
    }

    static constexpr QSize kSize{640, 400};
    static const int kKeyLeftOfOne = 49;

    const Host host = std::get<0>(GetParam());
    const int scale = std::get<1>(GetParam());
    HostProgram program{host.program, scale, host.usesOpenGL};
    Console console; // in the state that the program's console should be in
};

TEST_P(MinimalHosts, ShowWhatIsTypedAndTheirOwnPictureWhenClosed)
{
    const QPoint corner(kSize.width() * scale - 1, kSize.height() * scale - 1);
    const auto isHostsOwn = [&](const QImage& picture) { return picture.pixel(corner) == host.color; };
    const QImage closed = program.pictureThat(isHostsOwn);
    ASSERT_TRUE(isHostsOwn(closed));
    EXPECT_EQ(kSize * scale, closed.size());

    const QString toggle = QString::number(kKeyLeftOfOne);
    program.press({toggle});
    waitUntilOpen(U"");

    program.enter("help");
    console.execute(U"help");
    if (host.isGreeting) {
        program.enter("greet World");
        console.execute(U"greet World");
    }
    program.type("hel");
    const QImage open = waitUntilOpen(U"hel");
    EXPECT_NE(host.color, open.pixel(corner));

    program.press({toggle});
    EXPECT_EQ(closed, program.pictureThat([&](const QImage& picture) { return picture == closed; }));
    EXPECT_EQ(0, program.close()) << program.errors();
}

INSTANTIATE_TEST_SUITE_P(, MinimalHosts,
                         testing::Combine(testing::Values(kWidget, kOpenGLWindow, kQuickItem, kQml,
                                                          kReadmeWindow),
                                          testing::Values(1, 2)),
                         [](const auto& instance) {
                             return std::string(std::get<0>(instance.param).name) + "AtScale" +
                                    std::to_string(std::get<1>(instance.param));
                         });

TEST(MinimalQuickItem, IsDrawnByTheThreadedRenderLoop)
{
    HostProgram program(QUICK_ITEM_PROGRAM, 1, true);
    program.pictureThat([](const QImage& picture) { return picture.pixel(0, 0) == kQuickItem.color; });
    EXPECT_EQ(0, program.close());
    EXPECT_NE(std::string::npos, program.errors().find("threaded render loop"));
}

TEST(MinimalExamples, AreAtMostSixtyLinesLong)
{
    const QDir examples(MINIMAL_EXAMPLES);
    const QStringList files = examples.entryList({"*.cpp", "*.h", "*.qml"});
    EXPECT_EQ(10, files.size());
    for (const QString& name : files) {
        QFile file(examples.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_GE(60, file.readAll().count('\n')) << name.toStdString();
    }
}

} // namespace
} // namespace zephyr::test
