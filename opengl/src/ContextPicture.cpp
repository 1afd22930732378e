#include "ContextPicture.h"

#include "HostState.h"
#include "PictureProgram.h"

#include <QGuiApplication>
#include <QImage>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QRect>
#include <QThread>

#include <iterator>
#include <optional>

namespace zephyr::console::opengl {

namespace {

constexpr const char* kTooOld = "it is older than OpenGL 2.0";

/// Makes a context current until the end of the scope, if this thread may do that.
class CurrentContext
{
public:
    explicit CurrentContext(QOpenGLContext& context)
        : mContext(context),
          mPrevious(QOpenGLContext::currentContext()),
          mPreviousSurface(mPrevious != nullptr ? mPrevious->surface() : nullptr)
    {
        if (isCurrent() || !mayMakeCurrent()) {
            return;
        }
        mSurface.emplace();
        mSurface->setFormat(context.format());
        mSurface->create();
        context.makeCurrent(&*mSurface);
    }

    ~CurrentContext()
    {
        if (mPrevious == &mContext || !isCurrent()) {
            return;
        }
        mContext.doneCurrent();
        if (mPrevious != nullptr) {
            mPrevious->makeCurrent(mPreviousSurface);
        }
    }

    CurrentContext(const CurrentContext&) = delete;
    CurrentContext& operator=(const CurrentContext&) = delete;

    bool isCurrent() const { return QOpenGLContext::currentContext() == &mContext; }

private:
    /// Qt ends the program if a thread takes another's context, and not all platforms have surfaces for other threads
    /// than the application's.
    bool mayMakeCurrent() const
    {
        const QThread* const thread = QThread::currentThread();
        return mContext.thread() == thread && qGuiApp != nullptr && qGuiApp->thread() == thread;
    }

    QOpenGLContext& mContext;
    QOpenGLContext* const mPrevious;
    QSurface* const mPreviousSurface;
    std::optional<QOffscreenSurface> mSurface;
};

} // namespace

std::shared_ptr<ContextPicture> ContextPicture::create(QOpenGLContext& context)
{
    auto picture = std::make_shared<ContextPicture>(context);
    picture->mContextEnds = QObject::connect(&context, &QOpenGLContext::aboutToBeDestroyed,
                                             [picture] { picture->freeWithContext(); });
    return picture;
}

ContextPicture::ContextPicture(QOpenGLContext& context) : mContext(&context), mGl(context) {}

bool ContextPicture::isIn(const QOpenGLContext& context) const
{
    const std::lock_guard lock(mMutex);
    return mContext == &context;
}

void ContextPicture::draw(const QImage& image, const QRect& viewport)
{
    if (!mGl.isAtLeast({2, 0}, {2, 0})) {
        mError = kTooOld;
    }
    if (!mError.isEmpty()) {
        return;
    }
    const HostState state(mGl, viewport);
    if (mProgram == 0) {
        makeObjects();
    }
    if (!mError.isEmpty()) {
        return;
    }
    upload(image);
    mGl.glUseProgram(mProgram);
    useCorners();
    mGl.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}

void ContextPicture::makeObjects()
{
    const PictureProgram program = buildPictureProgram(mGl);
    mProgram = program.id;
    mError = program.error;
    if (mProgram == 0) {
        return;
    }
    mGl.glGenTextures(1, &mTexture);
    mGl.glGenBuffers(1, &mCorners);
    mGl.glBindBuffer(GL_ARRAY_BUFFER, mCorners);
    constexpr GLfloat kCorners[] = {0, 0, 1, 0, 0, 1, 1, 1};
    mGl.glBufferData(GL_ARRAY_BUFFER, sizeof(kCorners), std::data(kCorners), GL_STATIC_DRAW);
    if (hasVertexArrays(mGl)) {
        mGl.glGenVertexArrays(1, &mVertexArray);
    }
}

void ContextPicture::useCorners()
{
    if (mVertexArray != 0) {
        mGl.glBindVertexArray(mVertexArray);
    }
    mGl.glBindBuffer(GL_ARRAY_BUFFER, mCorners);
    mGl.glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    mGl.glEnableVertexAttribArray(0);
}

void ContextPicture::upload(const QImage& image)
{
    mGl.glBindTexture(GL_TEXTURE_2D, mTexture);
    if (image.size() == mTextureSize) {
        mGl.glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, image.width(), image.height(), GL_RGBA, GL_UNSIGNED_BYTE,
                            image.constBits());
        return;
    }
    mTextureSize = image.size();
    mGl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    mGl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    mGl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S,
                        GL_CLAMP_TO_EDGE); // the only one for any size in ES 2.0
    mGl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    mGl.glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image.width(), image.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                     image.constBits());
}

void ContextPicture::free()
{
    const std::lock_guard lock(mMutex);
    if (mContext != nullptr && deleteObjects()) {
        mContext = nullptr;
        QObject::disconnect(mContextEnds);
    }
}

/// Where the context can't be made current, its objects go with it, or with the last of the contexts that share them.
void ContextPicture::freeWithContext()
{
    const std::lock_guard lock(mMutex);
    if (mContext != nullptr) {
        deleteObjects();
        mContext = nullptr;
    }
}

bool ContextPicture::deleteObjects()
{
    const CurrentContext context(*mContext);
    if (!context.isCurrent()) {
        return false;
    }
    if (mProgram != 0) {
        mGl.glDeleteProgram(mProgram);
        mGl.glDeleteTextures(1, &mTexture);
        mGl.glDeleteBuffers(1, &mCorners);
    }
    if (mVertexArray != 0) {
        mGl.glDeleteVertexArrays(1, &mVertexArray);
    }
    return true;
}

} // namespace zephyr::console::opengl
