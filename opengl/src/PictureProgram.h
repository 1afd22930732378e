#ifndef ZEPHYR_CONSOLE_OPENGL_PICTUREPROGRAM_H
#define ZEPHYR_CONSOLE_OPENGL_PICTUREPROGRAM_H

#include "GlFunctions.h"

#include <QByteArray>

namespace zephyr::console::opengl {

/// A program that covers the viewport with the texture of the first unit. Its only attribute, 0, is a corner of the
/// picture as two numbers from 0 to 1, counted from the lower left.
struct PictureProgram
{
    GLuint id = 0;    // 0 if it could not be built
    QByteArray error; // of the compiler or linker
};

/// Builds the program in the language of the context.
PictureProgram buildPictureProgram(GlFunctions& gl);

} // namespace zephyr::console::opengl

#endif
