#ifndef ZEPHYR_CONSOLE_OPENGL_OPENGLCONSOLE_H
#define ZEPHYR_CONSOLE_OPENGL_OPENGLCONSOLE_H

#include "zephyr/console/opengl/detail/Export.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <memory>

class QSize;

namespace zephyr::console::opengl {

/// A ConsoleHost that paints with OpenGL: one call draws the console over what the host has drawn by hand.
///
///     OpenGLConsole console(&window);
///     // at the end of the window's paintGL()
///     console.paint();
///
/// - It is: for hosts that call OpenGL themselves, such as a QOpenGLWindow, a QOpenGLWidget, a QWindow with a context
///   of its own, or a render thread. It is not: for hosts that paint with a QPainter; those need a ConsoleHost only.
/// - State: both functions called paint() leave all OpenGL state as they found it, and need none to be set before. They
///   draw into the framebuffer that is bound. Two things they can't put back: end transform feedback and end a QPainter
///   (or call its beginNativePainting()) before you call them.
/// - Contexts: desktop OpenGL 2.0 or newer in any profile, OpenGL ES 2.0 or newer. The context must be current as a
///   QOpenGLContext. The OpenGL objects are made at the first frame that shows the console, again in each other context
///   that is current then, and freed with the context or with this object, whichever goes first.
/// - Threads: paint() may be called on any thread, by one thread at a time; see ConsoleHost for all else.
/// - Failure: without a current context, or with one that can't show the console, paint() draws nothing and writes one
///   warning to Qt's log.
class ZEPHYR_CONSOLE_OPENGL_EXPORT OpenGLConsole : public qt::ConsoleHost
{
    Q_OBJECT

public:
    /// Puts a console of its own on `object`, the QWindow, QWidget or QQuickItem that gets the key events. The console
    /// is destroyed with this object.
    explicit OpenGLConsole(QObject* object);

    /// Puts `console` on `object`, the QWindow, QWidget or QQuickItem that gets the key events. Neither may be null.
    OpenGLConsole(const std::shared_ptr<Console>& console, QObject* object, QObject* parent = nullptr);

    /// Frees the OpenGL objects if their context can be made current on this thread. Otherwise they are freed when the
    /// context is destroyed.
    ~OpenGLConsole() override;

    using ConsoleHost::paint;

    /// Draws the console over the frame if it is open; makes no OpenGL call while it is closed. Call it at the end of
    /// each frame.
    ///
    /// On the thread of a window or a widget the console covers that, whatever the viewport is. On another thread, and
    /// for an object of another kind, it covers the viewport.
    void paint();

    /// As paint(), but covers the lower left corner of the framebuffer up to `pixels`, and makes `devicePixelRatio` of
    /// the framebuffer's pixels one logical pixel. For framebuffers that are not as large as the window.
    void paint(const QSize& pixels, qreal devicePixelRatio);

private:
    class ZEPHYR_CONSOLE_OPENGL_NO_EXPORT Private;

    ZEPHYR_CONSOLE_OPENGL_NO_EXPORT void followRatio();

    std::unique_ptr<Private> mPrivate;
};

} // namespace zephyr::console::opengl

#endif
