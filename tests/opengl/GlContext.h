#ifndef ZEPHYR_TESTS_OPENGL_GLCONTEXT_H
#define ZEPHYR_TESTS_OPENGL_GLCONTEXT_H

#include <QColor>
#include <QImage>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QSurfaceFormat>

#include <memory>
#include <ostream>
#include <stdexcept>

namespace zephyr::test {

/// A kind of OpenGL context that a host may have.
struct ContextKind
{
    const char* name;
    QSurfaceFormat::RenderableType api;
    int majorVersion;
    int minorVersion;
    QSurfaceFormat::OpenGLContextProfile profile;

    QSurfaceFormat format() const
    {
        QSurfaceFormat format;
        format.setRenderableType(api);
        format.setVersion(majorVersion, minorVersion);
        format.setProfile(profile);
        return format;
    }
};

inline void PrintTo(const ContextKind& kind, std::ostream* out) { *out << kind.name; }

// A driver makes the newest version that has all of the one that is asked for.
constexpr ContextKind kCompatible{"Compatible", QSurfaceFormat::OpenGL, 2, 1, QSurfaceFormat::NoProfile};
constexpr ContextKind kCore{"Core", QSurfaceFormat::OpenGL, 3, 2, QSurfaceFormat::CoreProfile};
constexpr ContextKind kES{"ES", QSurfaceFormat::OpenGLES, 2, 0, QSurfaceFormat::NoProfile};

/// An OpenGL context without a window, with a framebuffer to draw on. It is current from its construction on.
class GlContext
{
public:
    explicit GlContext(const ContextKind& kind, QOpenGLContext* shared = nullptr)
    {
        surface.setFormat(kind.format());
        surface.create();
        context->setFormat(kind.format());
        context->setShareContext(shared);
        if (!context->create()) {
            throw std::runtime_error("no OpenGL context");
        }
        makeCurrent();
    }

    void makeCurrent()
    {
        if (!context->makeCurrent(&surface)) {
            throw std::runtime_error("the OpenGL context can't be made current");
        }
    }

    QOpenGLExtraFunctions& gl() { return *context->extraFunctions(); }

    /// A function that QOpenGLExtraFunctions lacks, or null.
    template <typename Function>
    Function* function(const char* name) const
    {
        return reinterpret_cast<Function*>(context->getProcAddress(name));
    }

    /// Binds a new framebuffer of one colour, with depth and stencil.
    void bindFrame(QSize size, const QColor& color)
    {
        frame =
            std::make_unique<QOpenGLFramebufferObject>(size, QOpenGLFramebufferObject::CombinedDepthStencil);
        frame->bind();
        gl().glViewport(0, 0, size.width(), size.height());
        fill(color);
    }

    void fill(const QColor& color)
    {
        gl().glClearColor(color.redF(), color.greenF(), color.blueF(), color.alphaF());
        gl().glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    }

    QImage picture() const { return frame->toImage().convertToFormat(QImage::Format_RGB32); }

    QOffscreenSurface surface;
    std::unique_ptr<QOpenGLContext> context = std::make_unique<QOpenGLContext>();
    std::unique_ptr<QOpenGLFramebufferObject> frame;
};

} // namespace zephyr::test

#endif
