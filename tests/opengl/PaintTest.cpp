#include "opengl/DrawnConsole.h"
#include "opengl/GlObjects.h"
#include "opengl/StateRecord.h"
#include "opengl/WarningLog.h"

#include <QOpenGLPaintDevice>
#include <QPainter>
#include <QThread>

#include <functional>
#include <memory>
#include <string>

namespace zephyr::test {
namespace {

class OpenGLPaint : public testing::TestWithParam<ContextKind>
{
protected:
    /// A picture of one colour in which `part`, counted from the lower left, shows `drawn`.
    static QImage withPart(const QImage& drawn, QPoint lowerLeft, QSize size)
    {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(DrawnConsole::kBehind);
        QImage part = drawn;
        part.setDevicePixelRatio(1.0);
        QPainter(&picture).drawImage(lowerLeft.x(), size.height() - lowerLeft.y() - drawn.height(), part);
        return picture;
    }

    GlContext context{GetParam()};
    DrawnConsole drawn;
};

TEST_P(OpenGLPaint, ShowsThePixelsThatAnImageGets)
{
    context.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
    drawn.console->paint();
    const QImage picture = context.picture();
    EXPECT_TRUE(nearPixels(drawn.expected(), picture));
    QImage empty = picture;
    empty.fill(DrawnConsole::kBehind);
    EXPECT_FALSE(nearPixels(empty, picture));
}

TEST_P(OpenGLPaint, PutsTwoPixelsOfTheFramebufferIntoOneWithARatioOfTwo)
{
    const QSize pixels = 2 * DrawnConsole::kSize;
    context.bindFrame(pixels, DrawnConsole::kBehind);
    drawn.console->paint(pixels, 2.0);
    EXPECT_TRUE(nearPixels(drawn.expected(pixels, 2.0), context.picture()));
}

TEST_P(OpenGLPaint, CoversThePixelsThatItIsGivenWhateverTheViewportIs)
{
    constexpr QSize kFrame(333, 217);
    constexpr QSize kPart(251, 101);
    context.bindFrame(kFrame, DrawnConsole::kBehind);
    context.gl().glViewport(5, 6, 7, 8);
    drawn.console->paint(kPart, 1.0);
    EXPECT_TRUE(nearPixels(withPart(drawn.expected(kPart), {0, 0}, kFrame), context.picture()));
}

TEST_P(OpenGLPaint, CoversTheViewportWhereTheObjectHasNoSizeOfItsOwn)
{
    QObject object;
    OpenGLConsole console(drawn.log, &object);
    constexpr QSize kFrame(333, 217);
    constexpr QSize kPart(151, 101);
    context.bindFrame(kFrame, DrawnConsole::kBehind);
    context.gl().glViewport(31, 43, kPart.width(), kPart.height());
    console.paint();
    EXPECT_TRUE(nearPixels(withPart(drawn.expected(kPart), {31, 43}, kFrame), context.picture()));
}

TEST_P(OpenGLPaint, FollowsEachNewSize)
{
    for (const QSize size : {QSize(320, 200), QSize(321, 199), QSize(320, 200), QSize(33, 17)}) {
        drawn.window.resize(size);
        context.bindFrame(size, DrawnConsole::kBehind);
        drawn.console->setOpen(false); // the cursor's blinking begins anew
        drawn.console->setOpen(true);
        drawn.console->paint();
        EXPECT_TRUE(nearPixels(drawn.expected(size), context.picture()));
    }
}

TEST_P(OpenGLPaint, DrawsNothingWithoutPixels)
{
    context.bindFrame({10, 10}, DrawnConsole::kBehind);
    drawn.console->paint(QSize(0, 10), 1.0);
    EXPECT_EQ(0, countObjects(context) - 1); // the frame's texture
}

TEST_P(OpenGLPaint, CostsNoOpenGLCallWhileClosed)
{
    context.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
    const QImage before = context.picture();
    drawn.console->setOpen(false);
    const StateRecord state = readState(context);
    const int objects = countObjects(context);
    drawn.console->paint();
    EXPECT_EQ(objects, countObjects(context));
    EXPECT_EQ(state, readState(context));
    EXPECT_EQ(before, context.picture());

    context.context->doneCurrent();
    const WarningLog log;
    drawn.console->paint();
    EXPECT_TRUE(log.warnings().isEmpty()); // it did not even look for a context
}

TEST_P(OpenGLPaint, ShowsAConsoleThatTheHostOpenedAtTheConsoleItself)
{
    drawn.console->setOpen(false);
    drawn.log->open();
    context.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
    drawn.console->paint();
    EXPECT_TRUE(nearPixels(drawn.expected(), context.picture()));
    drawn.log->close();
    context.fill(DrawnConsole::kBehind);
    drawn.console->paint();
    EXPECT_EQ(DrawnConsole::kBehind.rgb(), context.picture().pixel(0, 0));
}

TEST_P(OpenGLPaint, IsDrawnInThePlaceOfAPaintersNativePainting)
{
    const auto paintAround = [](QPaintDevice& device, const std::function<void(QPainter&)>& native) {
        QPainter painter(&device);
        painter.fillRect(0, 0, 100, 100, Qt::darkRed);
        native(painter);
        painter.fillRect(100, 100, 100, 100, Qt::darkYellow);
    };
    DrawnConsole plain;
    QImage expected(DrawnConsole::kSize, QImage::Format_RGB32);
    expected.fill(DrawnConsole::kBehind);
    paintAround(expected, [&](QPainter& painter) { plain.console->paint(painter); });

    context.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
    QOpenGLPaintDevice device(DrawnConsole::kSize);
    paintAround(device, [&](QPainter& painter) {
        painter.beginNativePainting();
        drawn.console->paint();
        painter.endNativePainting();
    });
    EXPECT_TRUE(nearPixels(expected, context.picture()));
}

/// Draws as a host that sets its state once: a triangle whose program, buffer, culling and depth test stay as they are.
class TriangleHost
{
public:
    explicit TriangleHost(GlContext& context) : gl(context.gl())
    {
        const bool isCore = context.context->format().profile() == QSurfaceFormat::CoreProfile;
        if (isCore) {
            GLuint array = 0;
            gl.glGenVertexArrays(1, &array);
            gl.glBindVertexArray(array);
        }
        const std::string version = context.context->isOpenGLES() ? "#version 100\nprecision mediump float;\n"
                                    : isCore                      ? "#version 150\n#define attribute in\n"
                                                                  : "#version 110\n";
        const GLuint program = gl.glCreateProgram();
        attach(program, GL_VERTEX_SHADER,
               version + "attribute vec2 place; void main() { gl_Position = vec4(place, 0.0, 1.0); }");
        attach(program, GL_FRAGMENT_SHADER,
               version + (isCore ? "out vec4 color; void main() { color = vec4(1.0, 0.5, 0.0, 1.0); }"
                                 : "void main() { gl_FragColor = vec4(1.0, 0.5, 0.0, 1.0); }"));
        gl.glBindAttribLocation(program, 0, "place");
        gl.glLinkProgram(program);
        gl.glUseProgram(program);
        constexpr GLfloat kCorners[] = {-0.9F, -0.9F, 0.0F, 0.9F, 0.9F, -0.9F}; // clockwise
        GLuint buffer = 0;
        gl.glGenBuffers(1, &buffer);
        gl.glBindBuffer(GL_ARRAY_BUFFER, buffer);
        gl.glBufferData(GL_ARRAY_BUFFER, sizeof kCorners, kCorners, GL_STATIC_DRAW);
        gl.glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
        gl.glEnableVertexAttribArray(0);
        gl.glEnable(GL_CULL_FACE);
        gl.glFrontFace(GL_CW);
        gl.glEnable(GL_DEPTH_TEST);
    }

    void draw()
    {
        gl.glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        gl.glDrawArrays(GL_TRIANGLES, 0, 3);
    }

private:
    void attach(GLuint program, GLenum kind, const std::string& text)
    {
        const GLuint shader = gl.glCreateShader(kind);
        const char* source = text.c_str();
        gl.glShaderSource(shader, 1, &source, nullptr);
        gl.glCompileShader(shader);
        gl.glAttachShader(program, shader);
    }

    QOpenGLExtraFunctions& gl;
};

TEST_P(OpenGLPaint, LeavesTheNextFrameOfAHostThatSetItsStateOnce)
{
    context.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
    TriangleHost host(context);
    host.draw();
    const QImage before = context.picture();
    ASSERT_EQ(qRgb(255, 128, 0), before.pixel(160, 100));
    ASSERT_EQ(DrawnConsole::kBehind.rgb(), before.pixel(1, 1));
    for (int frame = 0; frame < 3; ++frame) {
        drawn.console->paint();
        EXPECT_NE(before, context.picture());
        host.draw();
        EXPECT_EQ(before, context.picture());
    }
}

/// Runs `act` on a thread of its own, to which `context` belongs meanwhile.
void runOnRenderThread(GlContext& context, const std::function<void()>& act)
{
    QThread* const owner = QThread::currentThread();
    context.context->doneCurrent();
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        context.makeCurrent();
        act();
        context.context->doneCurrent();
        context.context->moveToThread(owner);
    }));
    context.context->moveToThread(thread.get());
    thread->start();
    thread->wait();
    context.makeCurrent();
}

TEST_P(OpenGLPaint, CoversTheViewportOnARenderThread)
{
    context.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
    runOnRenderThread(context, [&] {
        context.frame->bind();
        context.gl().glViewport(0, 0, DrawnConsole::kSize.width(), DrawnConsole::kSize.height());
        drawn.console->paint();
    });
    context.frame->bind();
    EXPECT_TRUE(nearPixels(drawn.expected(), context.picture()));
}

INSTANTIATE_TEST_SUITE_P(, OpenGLPaint, testing::Values(kCompatible, kCore, kES),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(OpenGLPaintWithoutContext, WarnsOnce)
{
    DrawnConsole drawn;
    const WarningLog log;
    drawn.console->paint();
    drawn.console->paint(DrawnConsole::kSize, 1.0);
    EXPECT_EQ(QStringList("The console isn't shown: no QOpenGLContext is current"), log.warnings());
}

} // namespace
} // namespace zephyr::test
