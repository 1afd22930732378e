#ifndef ZEPHYR_TESTS_OPENGL_GLOBJECTS_H
#define ZEPHYR_TESTS_OPENGL_GLOBJECTS_H

#include "opengl/GlContext.h"

namespace zephyr::test {

/// How many textures, buffers, programs and vertex arrays the current context has. A driver counts names from 1 on.
inline int countObjects(GlContext& context)
{
    constexpr GLuint kLastName = 100;
    QOpenGLExtraFunctions& gl = context.gl();
    const bool hasVertexArrays = context.context->format().majorVersion() >= 3;
    int count = 0;
    for (GLuint name = 1; name <= kLastName; ++name) {
        count += gl.glIsTexture(name) + gl.glIsBuffer(name) + gl.glIsProgram(name);
        count += hasVertexArrays ? gl.glIsVertexArray(name) : 0;
    }
    return count;
}

} // namespace zephyr::test

#endif
