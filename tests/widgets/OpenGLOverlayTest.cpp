#include "widgets/SeenWindow.h"
#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <optional>

namespace zephyr::test {
namespace {

using console::widgets::ConsoleOverlay;

/// A picture by OpenGL whose state is set once: a scissor rectangle leaves a part of each frame as it was first.
class OpenGLPicture : public QOpenGLWidget, protected QOpenGLFunctions
{
public:
    OpenGLPicture() { setMinimumSize(200, 150); }

    /// Changes the colour of the next frames.
    void setColor(float red)
    {
        mRed = red;
        update();
    }

    /// Whether the state is still as initializeGL() set it, or as Qt set it before the first frame.
    bool keepsState = true;

protected:
    void initializeGL() override
    {
        initializeOpenGLFunctions();
        glEnable(GL_SCISSOR_TEST);
        glEnable(GL_CULL_FACE);
        glBlendFunc(GL_ONE, GL_DST_ALPHA);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 2);
    }

    void paintGL() override
    {
        GLint source = 0;
        GLint alignment = 0;
        glGetIntegerv(GL_BLEND_SRC_RGB, &source);
        glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
        const bool blends = glIsEnabled(GL_BLEND) != 0; // as Qt 6.8 does
        keepsState = keepsState && glIsEnabled(GL_SCISSOR_TEST) != 0 && glIsEnabled(GL_CULL_FACE) != 0 &&
                     mBlends.value_or(blends) == blends && source == GL_ONE && alignment == 2;
        mBlends = blends;
        const auto ratio = static_cast<int>(devicePixelRatio());
        glScissor(0, 0, width() * ratio, height() * ratio);
        glClearColor(mRed, 0.4f, 0.6f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        glScissor(20, 20, 100, 50);
        glClearColor(0.8f, 0.8f, 0.2f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }

private:
    float mRed = 0.2f;
    std::optional<bool> mBlends;
};

/// Opens and closes the console over `over` while `picture` changes its frames.
void expectConsoleOver(QWidget& over, OpenGLPicture& picture)
{
    QWidget& window = *over.window();
    auto* overlay = new ConsoleOverlay(&over);
    overlay->host().setPlain(true);
    for (int i = 0; i < 60; ++i) {
        overlay->console()->write(U"a line of the log", console::Output);
    }
    picture.setColor(0.9f);
    const QImage red = showSettled(window);
    picture.setColor(0.0f);
    const QImage blue = showSettled(window);
    ASSERT_FALSE(looksLike(red, blue));

    overlay->host().setOpen(true);
    EXPECT_TRUE(showsConsole(over, *overlay->console(), blue));
    picture.setColor(0.9f);
    EXPECT_TRUE(showsConsole(over, *overlay->console(), red));
    overlay->host().setOpen(false);
    EXPECT_TRUE(shows(window, red));
    picture.setColor(0.0f);
    EXPECT_TRUE(shows(window, blue));
    EXPECT_TRUE(picture.keepsState);
    delete overlay;
}

TEST(OpenGLOverlay, LiesOverAnOpenGLWidgetThatIsTheWindow)
{
    OpenGLPicture picture;
    picture.resize(320, 240);
    expectConsoleOver(picture, picture);
}

TEST(OpenGLOverlay, LiesOverAnOpenGLWidgetInAForm)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* picture = new OpenGLPicture;
    layout->addWidget(new QLabel("above"));
    layout->addWidget(picture, 1);
    window.resize(320, 240);
    expectConsoleOver(*picture, *picture);
}

TEST(OpenGLOverlay, LiesOverAFormWithAnOpenGLWidget)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* picture = new OpenGLPicture;
    layout->addWidget(new QLabel("above"));
    layout->addWidget(picture, 1);
    window.resize(320, 240);
    expectConsoleOver(window, *picture);
}

TEST(OpenGLOverlay, LiesOverAnOpenGLWidgetInAnUndockedDockWidget)
{
    QMainWindow window;
    window.resize(480, 320);
    auto* dock = new QDockWidget("dock", &window);
    auto* picture = new OpenGLPicture;
    dock->setWidget(picture);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    window.setCentralWidget(new QLabel("centre"));
    showSettled(window);
    expectConsoleOver(*picture, *picture);
    dock->setFloating(true);
    expectConsoleOver(*picture, *picture);
    dock->setFloating(false);
    expectConsoleOver(*picture, *picture);
}

} // namespace
} // namespace zephyr::test
