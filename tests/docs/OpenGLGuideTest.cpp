#include "DrawLabel.h"
#include "SceneWindow.h"
#include "opengl/GlContext.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <string>

namespace zephyr::test {
namespace {

TEST(OpenGLGuide, ShowsAWindowWithAConsole)
{
    SceneWindow window;
    window.resize(320, 200);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QSignalSpy frames(&window, &QOpenGLWindow::frameSwapped);
    QTest::keyClick(&window, Qt::Key_Escape, Qt::ShiftModifier); // opens the console
    ASSERT_TRUE(frames.wait());
    QImage picture = window.grabFramebuffer();
    QImage empty = picture;
    empty.fill(picture.pixel(picture.width() - 1, picture.height() - 1));
    EXPECT_NE(empty, picture); // there are letters
}

class OpenGLGuideLabel : public testing::TestWithParam<ContextKind>
{};

TEST_P(OpenGLGuideLabel, IsDrawnWhateverTheHostLeft)
{
    constexpr QSize kSize(200, 40);
    GlContext context(GetParam());
    QOpenGLExtraFunctions& gl = context.gl();
    context.bindFrame(kSize, Qt::black);
    drawLabel(kSize, "label");
    const QImage expected = context.picture();
    QImage black = expected;
    black.fill(Qt::black);
    ASSERT_NE(black, expected);

    context.fill(Qt::black);
    GLuint array = 0;
    GLuint buffers[2] = {};
    gl.glGenVertexArrays(1, &array);
    gl.glBindVertexArray(array);
    gl.glGenBuffers(2, buffers);
    gl.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers[0]);
    gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, buffers[1]);
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, 77);
    gl.glEnable(GL_CULL_FACE);
    gl.glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    drawLabel(kSize, "label");
    EXPECT_EQ(expected, context.picture());

    gl.glBindVertexArray(array);
    GLint isEnabled = GL_TRUE;
    gl.glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &isEnabled);
    EXPECT_EQ(GL_FALSE, isEnabled); // the painter left the host's vertices alone
}

INSTANTIATE_TEST_SUITE_P(, OpenGLGuideLabel, testing::Values(kCompatible, kCore, kES),
                         [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace zephyr::test
