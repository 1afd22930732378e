#ifndef ZEPHYR_TESTS_HOSTS_TRIANGLE_H
#define ZEPHYR_TESTS_HOSTS_TRIANGLE_H

#include <QByteArray>
#include <QOpenGLBuffer>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QOpenGLVertexArrayObject>
#include <QSurfaceFormat>

namespace zephyr::test {

/// A red triangle on a blue ground, drawn with OpenGL by hand in any profile. Destroy it while its context is current.
class Triangle
{
public:
    /// Makes the triangle in the current context, and binds what draw() needs.
    void setUp()
    {
        const bool isCore =
            QOpenGLContext::currentContext()->format().profile() == QSurfaceFormat::CoreProfile;
        const QByteArray head = isCore ? "#version 150\n" : "#version 110\n";
        mProgram.addShaderFromSourceCode(
            QOpenGLShader::Vertex, head + (isCore ? "in" : "attribute") +
                                       " vec2 corner; void main() { gl_Position = vec4(corner, 0, 1); }");
        mProgram.addShaderFromSourceCode(
            QOpenGLShader::Fragment,
            head + (isCore ? "out vec4 color; void main() { color = vec4(0.8, 0, 0.2, 1); }"
                           : "void main() { gl_FragColor = vec4(0.8, 0, 0.2, 1); }"));
        mProgram.link();
        mProgram.bind();
        mArray.create();
        mArray.bind();
        constexpr GLfloat kCorners[] = {0.2F,  -0.9F, 0.6F,
                                        -0.1F, 0.95F, -0.9F}; // clockwise, at the lower right
        mCorners.create();
        mCorners.bind();
        mCorners.allocate(kCorners, sizeof kCorners);
        mProgram.enableAttributeArray("corner");
        mProgram.setAttributeBuffer("corner", GL_FLOAT, 0, 2);
    }

    /// Binds again what setUp() bound, for a host that shares its context.
    void bind()
    {
        bindProgram();
        mArray.bind();
    }

    /// Binds the program again, for a QOpenGLWidget: Qt 6.8 leaves none before each frame.
    void bindProgram() { mProgram.bind(); }

    /// Clears the framebuffer and draws, with whatever is bound.
    static void draw()
    {
        QOpenGLFunctions& gl = *QOpenGLContext::currentContext()->functions();
        gl.glClearColor(0.16F, 0.31F, 0.47F, 1.0F);
        gl.glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        gl.glDrawArrays(GL_TRIANGLES, 0, 3);
    }

private:
    QOpenGLShaderProgram mProgram;
    QOpenGLVertexArrayObject mArray;
    QOpenGLBuffer mCorners;
};

} // namespace zephyr::test

#endif
