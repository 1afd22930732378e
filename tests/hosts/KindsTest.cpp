// A person's use of the console in each kind of window that there is, under a window manager, seen by pictures.

#include "minimal/HostProgram.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace zephyr::test {
namespace {

/// A kind of window, and a program that has one.
struct Kind
{
    const char* name;
    const char* program;
    const char* source;
    int lines; // of the source that name the console
    bool usesOpenGL = false;
    const char* title = ""; // if the program has several windows
    bool hasField = false;  // a text field that has the focus
};

void PrintTo(const Kind& kind, std::ostream* stream) { *stream << kind.name; }

/// The number of pixels that differ.
int differences(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < std::min(a.height(), b.height()); ++y) {
        for (int x = 0; x < std::min(a.width(), b.width()); ++x) {
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        }
    }
    return count;
}

/// The number of pixels in the console's green.
int ink(const QImage& picture)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            count += qGreen(pixel) > 150 && qRed(pixel) < 90 && qBlue(pixel) < 110 ? 1 : 0;
        }
    }
    return count;
}

/// Whether the host has drawn its window, which shows the display's black ground until then. All hosts draw on brighter
/// ones.
bool isDrawn(const QImage& picture)
{
    constexpr int kDarkest = 50;
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            count += qGray(picture.pixel(x, y)) > kDarkest ? 1 : 0;
        }
    }
    return count > picture.width() * picture.height() / 2;
}

/// The upper half, where no cursor blinks once the log is long.
QImage upperHalf(const QImage& picture) { return picture.copy(0, 0, picture.width(), picture.height() / 2); }

class AKindOfWindow : public testing::TestWithParam<Kind>
{
protected:
    /// Waits for a picture, and fails if it doesn't come.
    QImage await(const char* what, const std::function<bool(const QImage&)>& isRight)
    {
        const QImage picture = program.pictureThat(isRight);
        if (!isRight(picture)) {
            picture.save(QString("%1.png").arg(GetParam().name));
            ADD_FAILURE() << what << ": see " << GetParam().name << ".png";
        }
        return picture;
    }

    /// Waits until the window is drawn and looks the same twice.
    QImage awaitRest()
    {
        QImage before;
        const QImage picture =
            program.pictureThat([&](const QImage& p) { return std::exchange(before, p) == p && isDrawn(p); });
        EXPECT_TRUE(isDrawn(picture));
        return picture;
    }

    HostProgram program{GetParam().program, 1, GetParam().usesOpenGL, GetParam().title, OPENBOX_PROGRAM};
};

const char* const kToggle = "49"; // the key left of 1
constexpr int kCursorInk = 200;   // more than a cursor has
constexpr int kCaretPixels = 40;  // more than the caret of a text field has

TEST_P(AKindOfWindow, TakesAConsole)
{
    const QImage closed = awaitRest();
    const int hostsInk = ink(closed);
    const QPoint middle = closed.rect().center();

    program.press({kToggle});
    await("opens by key", [&](const QImage& p) { return ink(p) > hostsInk + kCursorInk; });
    for (int i = 0; i < 6; ++i) {
        program.enter("help");
    }
    program.type("mmmmmmmmmmmmmmmmmmmm");
    QImage end;
    await("takes lines", [&](const QImage& p) {
        const bool isAtRest = upperHalf(p) == upperHalf(end);
        end = p;
        return isAtRest && ink(upperHalf(p)) > kCursorInk;
    });

    program.click(middle, 4);
    const QImage turned = await("scrolls by wheel", [&](const QImage& p) {
        return differences(upperHalf(p), upperHalf(end)) > kCursorInk;
    });
    program.press({"Prior"});
    await("scrolls by key",
          [&](const QImage& p) { return differences(upperHalf(p), upperHalf(turned)) > kCursorInk; });
    program.press({"End"});
    await("scrolls back", [&](const QImage& p) { return upperHalf(p) == upperHalf(end); });

    for (const int button : {1, 3}) { // below the title bar that a dock widget draws
        for (int y = 40; y < closed.height(); y += 90) {
            for (int x = 10; x < closed.width(); x += 150) {
                program.click({x, y}, button);
            }
        }
    }
    const int before = ink(await("stays", [&](const QImage& p) { return upperHalf(p) == upperHalf(end); }));
    program.type("mmmmmmmmmmmmmmmmmmmm");
    const QImage open =
        await("survives clicks", [&](const QImage& p) { return ink(p) > before + kCursorInk; });
    open.save(QString("%1-open.png").arg(GetParam().name));

    program.press({kToggle});
    await("leaves the host's picture as it was", [&](const QImage& p) { return p == closed; });
    if (GetParam().hasField) {
        program.type("mmmmm");
        await("gives the focus back", [&](const QImage& p) {
            return differences(p, closed) > kCaretPixels && ink(p) < hostsInk + kCursorInk;
        });
    }
    if (*GetParam().title == '\0') { // a dock widget that is closed ends no program
        EXPECT_EQ(0, program.close()) << program.errors();
    }
}

/// Counts the lines that a host wrote for its console.
TEST_P(AKindOfWindow, TakesAConsoleWithFewLines)
{
    QFile file(GetParam().source);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QRegularExpression names("console|overlay", QRegularExpression::CaseInsensitiveOption);
    const QRegularExpression others("^ *//|^#include|^import|Command|using namespace|writeIndented|execute");
    int lines = 0;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        lines += line.contains(names) && !line.contains(others) ? 1 : 0;
    }
    EXPECT_EQ(GetParam().lines, lines);
}

INSTANTIATE_TEST_SUITE_P(
    , AKindOfWindow,
    testing::Values(Kind{"PlainWindow", PLAIN_WINDOW_PROGRAM, HOSTS "PlainWindow.cpp", 2},
                    Kind{"RasterWindow", README_WINDOW_PROGRAM, README_WINDOW, 2},
                    Kind{"OpenGLWindow", OPENGL_WINDOW_PROGRAM, EXAMPLES "OpenGLWindow.cpp", 2, true},
                    Kind{"OpenGLWidget", OPENGL_WIDGET_PROGRAM, HOSTS "OpenGLWidget.cpp", 2, true},
                    Kind{"CullingOpenGLWidget", CULLING_PROGRAM, HOSTS "CullingOpenGLWidget.cpp", 2, true},
                    Kind{"OpenGLUnderQuick", UNDER_QUICK_PROGRAM, HOSTS "OpenGLUnderQuick.cpp", 2, true},
                    Kind{"OpenGLRenderThread", RENDER_THREAD_PROGRAM, HOSTS "OpenGLRenderThread.cpp", 2,
                         true},
                    Kind{"Widget", WIDGET_PROGRAM, EXAMPLES "Widget.cpp", 1},
                    Kind{"MainWindow", MAIN_WINDOW_PROGRAM, EXAMPLES "MainWindow.cpp", 1, false, "", true},
                    Kind{"Form", FORM_PROGRAM, EXAMPLES "Form.cpp", 1, false, "", true},
                    Kind{"GraphicsView", GRAPHICS_VIEW_PROGRAM, EXAMPLES "GraphicsView.cpp", 1},
                    Kind{"UndockedDock", DOCK_PROGRAM, EXAMPLES "Dock.cpp", 1, false, "Picture"},
                    Kind{"Qml", QML_PROGRAM, EXAMPLES "Qml.qml", 1, true, "", true}),
    [](const testing::TestParamInfo<Kind>& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace zephyr::test
