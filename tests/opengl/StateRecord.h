#ifndef ZEPHYR_TESTS_OPENGL_STATERECORD_H
#define ZEPHYR_TESTS_OPENGL_STATERECORD_H

#include "opengl/GlContext.h"

#include <map>
#include <string>

namespace zephyr::test {

/// All that can be asked about the state of a context, by name. What the context doesn't know is left out.
using StateRecord = std::map<std::string, std::string>;

/// Reads the state of the current context. No OpenGL error may be pending.
StateRecord readState(GlContext& context);

} // namespace zephyr::test

#endif
