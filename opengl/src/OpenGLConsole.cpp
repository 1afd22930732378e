#include "zephyr/console/opengl/OpenGLConsole.h"

#include "ContextPicture.h"
#include "zephyr/console/Console.h"

#include <QImage>
#include <QLoggingCategory>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPaintDevice>
#include <QPainter>
#include <QPointer>
#include <QRect>
#include <QThread>
#include <QWindow>

#include <array>
#include <atomic>
#include <optional>

namespace zephyr::console::opengl {

namespace {

constexpr const char* kNoContext = "The console isn't shown: no QOpenGLContext is current";
constexpr const char* kNoSupport = "The console isn't shown in this OpenGL context: %s";

/// A part of the framebuffer, counted in its pixels from the lower left, and how many of these make one logical pixel.
struct Frame
{
    QRect viewport;
    qreal ratio;
};

/// The frame of a window or a widget.
std::optional<Frame> frameOf(const QObject* object)
{
    if (const auto* window = qobject_cast<const QWindow*>(object)) {
        return Frame{{QPoint(), window->size() * window->devicePixelRatio()}, window->devicePixelRatio()};
    }
    if (const auto* widget = dynamic_cast<const QPaintDevice*>(object)) {
        const qreal ratio = widget->devicePixelRatio();
        return Frame{{QPoint(), QSize(widget->width(), widget->height()) * ratio}, ratio};
    }
    return std::nullopt;
}

QRect currentViewport(QOpenGLContext& context)
{
    std::array<GLint, 4> viewport{};
    context.functions()->glGetIntegerv(GL_VIEWPORT, viewport.data());
    return {viewport[0], viewport[1], viewport[2], viewport[3]};
}

} // namespace

class OpenGLConsole::Private
{
public:
    Private(OpenGLConsole& console, QObject* object) : mConsole(console), mObject(object) { noteRatio(); }

    ~Private()
    {
        if (mPicture) {
            mPicture->free();
        }
    }

    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    /// Keeps the object's ratio for the thread that paints.
    void noteRatio()
    {
        if (const std::optional<Frame> frame = frameOf(mObject)) {
            mRatio = frame->ratio;
        }
    }

    /// Whether there is something to draw. Otherwise frees what only an open console needs.
    bool isShown()
    {
        if (mConsole.isOpen()) {
            return true;
        }
        QPainter none;
        mConsole.paint(none); // learns what the host did at the console itself
        mImage = QImage();
        return mConsole.isOpen();
    }

    /// The context that is current, or null after a warning.
    QOpenGLContext* context()
    {
        QOpenGLContext* const context = QOpenGLContext::currentContext();
        if (context == nullptr && !mHasWarned) {
            mHasWarned = true;
            qWarning(kNoContext);
        }
        return context;
    }

    Frame frameIn(QOpenGLContext& context) const
    {
        if (QThread::currentThread() == mConsole.thread()) {
            if (const std::optional<Frame> frame = frameOf(mObject)) {
                return *frame;
            }
        }
        return {currentViewport(context), mRatio};
    }

    void paint(QOpenGLContext& context, const Frame& frame)
    {
        ContextPicture& picture = pictureIn(context);
        if (!picture.error().isEmpty() || !paintImage(frame.viewport.size(), frame.ratio)) {
            return;
        }
        picture.draw(mImage, frame.viewport);
        if (!picture.error().isEmpty() && !mHasWarned) {
            mHasWarned = true;
            qWarning(kNoSupport, picture.error().constData());
        }
    }

private:
    ContextPicture& pictureIn(QOpenGLContext& context)
    {
        if (!mPicture || !mPicture->isIn(context)) {
            if (mPicture) {
                mPicture->free();
            }
            mPicture = ContextPicture::create(context);
        }
        return *mPicture;
    }

    /// \return whether there is an image.
    bool paintImage(const QSize& pixels, qreal ratio)
    {
        if (mImage.size() != pixels) {
            mImage = QImage(pixels, QImage::Format_RGBA8888_Premultiplied);
        }
        if (mImage.isNull()) {
            return false; // there are no pixels, or no memory for them
        }
        mImage.setDevicePixelRatio(ratio);
        mImage.fill(Qt::transparent);
        QPainter painter(&mImage);
        mConsole.paint(painter);
        return true;
    }

    OpenGLConsole& mConsole;
    const QPointer<QObject> mObject;
    std::atomic<qreal> mRatio{1.0};
    bool mHasWarned = false;
    QImage mImage;
    std::shared_ptr<ContextPicture> mPicture;
};

OpenGLConsole::OpenGLConsole(QObject* object)
    : ConsoleHost(object), mPrivate(std::make_unique<Private>(*this, object))
{
    followRatio();
}

OpenGLConsole::OpenGLConsole(const std::shared_ptr<Console>& console, QObject* object, QObject* parent)
    : ConsoleHost(console, object, parent), mPrivate(std::make_unique<Private>(*this, object))
{
    followRatio();
}

void OpenGLConsole::followRatio()
{
    connect(this, &ConsoleHost::repaintNeeded, this, [this] { mPrivate->noteRatio(); });
}

OpenGLConsole::~OpenGLConsole() = default;

void OpenGLConsole::paint()
{
    if (!mPrivate->isShown()) {
        return;
    }
    if (QOpenGLContext* const context = mPrivate->context()) {
        mPrivate->paint(*context, mPrivate->frameIn(*context));
    }
}

void OpenGLConsole::paint(const QSize& pixels, qreal devicePixelRatio)
{
    if (!mPrivate->isShown()) {
        return;
    }
    if (QOpenGLContext* const context = mPrivate->context()) {
        mPrivate->paint(*context, {{QPoint(), pixels}, devicePixelRatio});
    }
}

} // namespace zephyr::console::opengl
