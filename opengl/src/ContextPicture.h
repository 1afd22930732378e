#ifndef ZEPHYR_CONSOLE_OPENGL_CONTEXTPICTURE_H
#define ZEPHYR_CONSOLE_OPENGL_CONTEXTPICTURE_H

#include "GlFunctions.h"

#include <QByteArray>
#include <QMetaObject>
#include <QSize>

#include <memory>
#include <mutex>

class QImage;
class QOpenGLContext;
class QRect;

namespace zephyr::console::opengl {

/// A picture in one OpenGL context, and the OpenGL objects that draw it. The context keeps it until the objects are
/// freed, so that they can be freed with the context if not before.
class ContextPicture
{
public:
    /// For the current context, which may be on any thread.
    static std::shared_ptr<ContextPicture> create(QOpenGLContext& context);

    /// Use create().
    explicit ContextPicture(QOpenGLContext& context);

    bool isIn(const QOpenGLContext& context) const;

    /// Draws an image with the colour format RGBA8888_Premultiplied over a part of the bound framebuffer that is as
    /// large, and leaves all OpenGL state as it was. The context must be current. Draws nothing if there is an error().
    void draw(const QImage& image, const QRect& viewport);

    /// Why the context can't show the picture; empty if it can, or if nothing was drawn yet.
    const QByteArray& error() const { return mError; }

    /// Frees the objects now if the context can be made current on this thread, or else when it is destroyed. From any
    /// thread, while no other draws.
    void free();

private:
    void freeWithContext();
    void makeObjects();
    void useCorners();
    void upload(const QImage& image);
    bool deleteObjects();

    mutable std::mutex mMutex;
    QOpenGLContext* mContext; // null once the objects are freed
    QMetaObject::Connection mContextEnds;
    GlFunctions mGl;
    QByteArray mError;
    QSize mTextureSize;
    GLuint mProgram = 0;
    GLuint mCorners = 0;
    GLuint mVertexArray = 0; // stays 0 in contexts without vertex arrays
    GLuint mTexture = 0;
};

} // namespace zephyr::console::opengl

#endif
