// The cost of a frame that a program draws with OpenGL, with the console open over it and closed, until all is drawn.

#include "support/Workload.h"
#include "zephyr/console/opengl/OpenGLConsole.h"

#include <QImage>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QWindow>

#include <memory>

namespace zephyr::bench {
namespace {

constexpr QSize kFullHd(1920, 1080);

/// A framebuffer in full HD on a current context.
class Frame
{
public:
    Frame()
    {
        mSurface.create();
        if (mContext.create() && mContext.makeCurrent(&mSurface)) {
            mBuffer = std::make_unique<QOpenGLFramebufferObject>(kFullHd);
            mBuffer->bind();
        }
    }

    bool isValid() const { return mBuffer != nullptr && mBuffer->isValid(); }

    /// A scene of bands, as cheap as one that covers all pixels can be.
    void drawScene()
    {
        QOpenGLFunctions& gl = *mContext.functions();
        constexpr int kBands = 8;
        gl.glEnable(GL_SCISSOR_TEST);
        for (int band = 0; band < kBands; ++band) {
            gl.glScissor(0, band * kFullHd.height() / kBands, kFullHd.width(), kFullHd.height() / kBands);
            gl.glClearColor(0.1F, 0.1F * static_cast<float>(band), 0.3F, 1.0F);
            gl.glClear(GL_COLOR_BUFFER_BIT);
        }
        gl.glDisable(GL_SCISSOR_TEST);
        gl.glViewport(0, 0, kFullHd.width(), kFullHd.height());
    }

    QImage image() const { return mBuffer->toImage(); }

    void finish() { mContext.functions()->glFinish(); }

private:
    QOffscreenSurface mSurface;
    QOpenGLContext mContext;
    std::unique_ptr<QOpenGLFramebufferObject> mBuffer;
};

void drawWithOpenGL(benchmark::State& state, bool isOpen)
{
    Frame frame;
    if (!frame.isValid()) {
        state.SkipWithError("no OpenGL here: run it on a display, such as Xvfb's");
        return;
    }
    const auto console = std::make_shared<console::Console>();
    fillLog(*console, logLength(state));
    QWindow window;
    console::opengl::OpenGLConsole host(console, &window);
    host.setOpen(isOpen);
    frame.drawScene();
    const QImage scene = frame.image();
    host.paint(kFullHd, 1.0);
    if ((frame.image() != scene) != isOpen) {
        state.SkipWithError("the console is not shown as it should be");
    }
    for (auto _ : state) {
        frame.drawScene();
        host.paint(kFullHd, 1.0);
        frame.finish();
    }
}

void openGlSettings(benchmark::internal::Benchmark* registered)
{
    registered->Arg(kSmallLog)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(drawWithOpenGL, closed, false)->Name("opengl/floor")->Apply(openGlSettings);
BENCHMARK_CAPTURE(drawWithOpenGL, open, true)->Name("opengl/console")->Apply(openGlSettings);

} // namespace
} // namespace zephyr::bench
