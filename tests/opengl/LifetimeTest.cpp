#include "opengl/DrawnConsole.h"
#include "opengl/GlObjects.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QOpenGLWindow>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <string>

namespace zephyr::test {
namespace {

class OpenGLLifetime : public testing::TestWithParam<ContextKind>
{
protected:
    /// Draws the console in `target`, on any thread.
    void drawIn(GlContext& target)
    {
        target.makeCurrent();
        target.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
        drawn.console->paint();
        picture = target.picture();
        target.frame.reset();
        EXPECT_LE(3, countObjects(target));
    }

    /// Draws the console in `target`, and expects it to be seen.
    void showIn(GlContext& target)
    {
        drawn.console->setOpen(false); // the cursor's blinking begins anew
        drawn.console->setOpen(true);
        drawIn(target);
        EXPECT_TRUE(nearPixels(drawn.expected(), picture));
    }

    int objectsIn(GlContext& target)
    {
        target.makeCurrent();
        return countObjects(target);
    }

    GlContext context{GetParam()};
    DrawnConsole drawn;
    QImage picture;
};

TEST_P(OpenGLLifetime, EndsWithTheConsoleInTheCurrentContext)
{
    showIn(context);
    drawn.console.reset();
    EXPECT_EQ(context.context.get(), QOpenGLContext::currentContext());
    EXPECT_EQ(0, countObjects(context));
}

TEST_P(OpenGLLifetime, EndsWithTheConsoleWhileNoContextIsCurrent)
{
    showIn(context);
    context.context->doneCurrent();
    drawn.console.reset();
    EXPECT_EQ(nullptr, QOpenGLContext::currentContext());
    EXPECT_EQ(0, objectsIn(context));
}

TEST_P(OpenGLLifetime, EndsWithTheConsoleWhileAnotherContextIsCurrent)
{
    showIn(context);
    GlContext other(kCore);
    drawn.console.reset();
    EXPECT_EQ(other.context.get(), QOpenGLContext::currentContext());
    EXPECT_EQ(&other.surface, QOpenGLContext::currentContext()->surface());
    EXPECT_EQ(0, objectsIn(context));
}

TEST_P(OpenGLLifetime, EndsWithTheContextAndBeginsInTheNext)
{
    GlContext sharing(GetParam(), context.context.get());
    for (const bool isCurrent : {true, false}) {
        auto mortal = std::make_unique<GlContext>(GetParam(), context.context.get());
        showIn(*mortal);
        if (!isCurrent) {
            mortal->context->doneCurrent();
        }
        mortal.reset();
        EXPECT_EQ(0, objectsIn(sharing));
    }
    showIn(sharing);
    drawn.console.reset();
    EXPECT_EQ(0, objectsIn(sharing));
}

TEST_P(OpenGLLifetime, MovesFromContextToContext)
{
    GlContext other(kCore);
    for (int turn = 0; turn < 2; ++turn) {
        showIn(context);
        EXPECT_EQ(0, objectsIn(other));
        showIn(other);
        EXPECT_EQ(0, objectsIn(context));
    }
}

/// Runs functions on the thread that it lives in. They pass through an atomic, which the thread sanitizer follows, as it
/// doesn't follow the locks of Qt and of the standard library's own code.
class Worker : public QObject
{
public:
    /// Runs `act`, and returns when that has ended.
    void run(const std::function<void()>& act)
    {
        mAct = &act;
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        mAct.wait(&act);
    }

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        (*mAct.load())();
        mAct = nullptr;
        mAct.notify_one();
        return true;
    }

private:
    std::atomic<const std::function<void()>*> mAct{nullptr};
};

/// A context on a thread of its own, and what runs there.
class RenderThread
{
public:
    explicit RenderThread(GlContext& glContext) : context(glContext)
    {
        thread.start();
        worker.moveToThread(&thread);
        context.context->doneCurrent();
        context.context->moveToThread(&thread);
    }

    ~RenderThread() { end(); }
    RenderThread(const RenderThread&) = delete;
    RenderThread& operator=(const RenderThread&) = delete;

    void run(const std::function<void()>& act) { worker.run(act); }

    void end()
    {
        thread.quit();
        thread.wait();
    }

private:
    GlContext& context;
    QThread thread;
    Worker worker;
};

TEST_P(OpenGLLifetime, EndsWithTheContextOfAnotherThreadThatOutlivesTheConsole)
{
    GlContext sharing(GetParam(), context.context.get());
    RenderThread thread(context);
    thread.run([&] { drawIn(context); });
    drawn.console.reset(); // while the context is current on its thread
    EXPECT_LE(3, objectsIn(sharing));
    thread.run([&] { context.context.reset(); });
    EXPECT_EQ(0, objectsIn(sharing));
}

TEST_P(OpenGLLifetime, OutlivesAContextWhoseThreadIsOver)
{
    RenderThread thread(context);
    thread.run([&] {
        drawIn(context);
        context.context->doneCurrent();
    });
    thread.end();
    context.context.reset(); // here, where it can't be made current
    drawn.console->setOpen(false);
    drawn.console->paint(); // frees what the closed console does not need, of the thread that is over, too
    GlContext next(GetParam());
    showIn(next);
}

TEST_P(OpenGLLifetime, EndsOnThisThreadWhereTheContextBelongsToOneThatIsOver)
{
    RenderThread thread(context);
    thread.run([&] {
        drawIn(context);
        context.context->doneCurrent();
    });
    thread.end();
    drawn.console.reset();
    context.context.reset();
}

INSTANTIATE_TEST_SUITE_P(, OpenGLLifetime, testing::Values(kCompatible, kCore, kES),
                         [](const auto& instance) { return std::string(instance.param.name); });

/// A widget or window of one colour with a console on it, and nothing else than a host needs.
template <typename Base>
class Host : public Base
{
public:
    using Base::Base;

    void openAnew()
    {
        console.setOpen(false);
        console.setOpen(true);
    }

    QImage expected()
    {
        QImage image(this->size(), QImage::Format_RGB32);
        image.fill(DrawnConsole::kBehind);
        OpenGLConsole plain(log, this);
        QPainter painter(&image);
        plain.paint(painter);
        return image;
    }

protected:
    void paintGL() override
    {
        const QColor color = DrawnConsole::kBehind;
        QOpenGLFunctions& gl = *this->context()->functions();
        gl.glClearColor(color.redF(), color.greenF(), color.blueF(), 1.0F);
        gl.glClear(GL_COLOR_BUFFER_BIT);
        console.paint();
    }

private:
    std::shared_ptr<console::Console> log = std::make_shared<console::Console>();
    OpenGLConsole console{log, this};
};

bool exposed(QWindow& window) { return QTest::qWaitForWindowExposed(&window); }
bool exposed(QWidget& widget) { return QTest::qWaitForWindowExposed(&widget); }

template <typename AnyHost>
testing::AssertionResult showsItsConsole(AnyHost& host)
{
    EXPECT_TRUE(exposed(host));
    QSignalSpy frames(&host, &AnyHost::frameSwapped);
    host.openAnew();
    const QImage expected = host.expected();
    host.update();
    EXPECT_TRUE(frames.wait());
    testing::AssertionResult result = testing::AssertionFailure();
    const auto isShown = [&] {
        result = nearPixels(expected, host.grabFramebuffer().convertToFormat(QImage::Format_RGB32));
        return static_cast<bool>(result);
    };
    EXPECT_TRUE(QTest::qWaitFor(isShown, 60000)); // the cursor blinks meanwhile
    return result;
}

TEST(OpenGLWidget, ShowsTheConsoleInEachWindowThatItIsMovedTo)
{
    QWidget first;
    QWidget second;
    auto* const host = new Host<QOpenGLWidget>;
    QPointer<QOpenGLContext> before; // another may have its address
    for (QWidget* const window : {&first, &second, &first}) {
        host->setParent(window);
        host->setGeometry(10, 10, 320, 200);
        host->show();
        window->resize(400, 300);
        window->show();
        EXPECT_TRUE(showsItsConsole(*host));
        EXPECT_NE(before.data(), host->context());
        before = host->context();
    }
}

TEST(OpenGLWindow, ShowsTheConsole)
{
    Host<QOpenGLWindow> host(QOpenGLWindow::PartialUpdateBlit); // keeps its frame, so that it can be grabbed
    host.resize(320, 200);
    host.show();
    EXPECT_TRUE(showsItsConsole(host));
    host.destroy();
    host.show();
    EXPECT_TRUE(showsItsConsole(host));
}

} // namespace
} // namespace zephyr::test
