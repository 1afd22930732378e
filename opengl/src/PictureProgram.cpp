#include "PictureProgram.h"

#include <array>

namespace zephyr::console::opengl {

namespace {

constexpr const char* kVertexMain = R"(
CORNER vec2 corner;
PASSED vec2 place;
void main()
{
    place = vec2(corner.x, 1.0 - corner.y); // an image begins at its top
    gl_Position = vec4(2.0 * corner - 1.0, 0.0, 1.0);
}
)";

constexpr const char* kFragmentMain = R"(
PASSED vec2 place;
uniform sampler2D picture;
void main()
{
    COLOR = TEXEL(picture, place);
}
)";

/// What the two shaders begin with in one dialect of the language.
struct Dialect
{
    const char* version;
    const char* vertex;
    const char* fragment;
};

constexpr const char* kOldVertex = "#define CORNER attribute\n#define PASSED varying\n";
constexpr const char* kOldFragment =
    "#define PASSED varying\n#define TEXEL texture2D\n#define COLOR gl_FragColor\n";
constexpr const char* kNewVertex = "#define CORNER in\n#define PASSED out\n";
constexpr const char* kNewFragment = "#define PASSED in\n#define TEXEL texture\nout vec4 COLOR;\n";
// With fewer bits a place in a large picture would fall on the wrong pixel.
constexpr const char* kESFragment = "precision highp float;\n"
                                    "#define PASSED varying\n#define TEXEL texture2D\n"
                                    "#define COLOR gl_FragColor\n";

Dialect dialectOf(const GlFunctions& gl)
{
    if (gl.isES()) {
        return {"#version 100\n", kOldVertex, kESFragment};
    }
    if (gl.isAtLeast({3, 2}, kNever)) {
        return {"#version 150\n", kNewVertex, kNewFragment};
    }
    if (gl.isAtLeast({3, 0}, kNever)) {
        return {"#version 130\n", kNewVertex, kNewFragment};
    }
    return {"#version 110\n", kOldVertex, kOldFragment};
}

GLuint compile(GlFunctions& gl, GLenum kind, const std::array<const char*, 3>& source)
{
    const GLuint shader = gl.glCreateShader(kind);
    gl.glShaderSource(shader, static_cast<GLsizei>(source.size()), const_cast<const char**>(source.data()),
                      nullptr);
    gl.glCompileShader(shader);
    return shader;
}

/// What the compiler and the linker had to say.
QByteArray messagesOf(GlFunctions& gl, GLuint program, const std::array<GLuint, 2>& shaders)
{
    std::array<char, 1000> text{};
    QByteArray messages;
    for (const GLuint shader : shaders) {
        gl.glGetShaderInfoLog(shader, static_cast<GLsizei>(text.size()), nullptr, text.data());
        messages += text.data();
    }
    gl.glGetProgramInfoLog(program, static_cast<GLsizei>(text.size()), nullptr, text.data());
    return messages + text.data();
}

} // namespace

PictureProgram buildPictureProgram(GlFunctions& gl)
{
    const Dialect dialect = dialectOf(gl);
    const std::array<GLuint, 2> shaders{
        compile(gl, GL_VERTEX_SHADER, {dialect.version, dialect.vertex, kVertexMain}),
        compile(gl, GL_FRAGMENT_SHADER, {dialect.version, dialect.fragment, kFragmentMain})};
    PictureProgram program{gl.glCreateProgram(), {}};
    for (const GLuint shader : shaders) {
        gl.glAttachShader(program.id, shader);
    }
    gl.glBindAttribLocation(program.id, 0, "corner");
    gl.glLinkProgram(program.id);
    GLint isLinked = GL_FALSE;
    gl.glGetProgramiv(program.id, GL_LINK_STATUS, &isLinked);
    if (isLinked == GL_FALSE) {
        program.error = messagesOf(gl, program.id, shaders);
        gl.glDeleteProgram(program.id);
        program.id = 0;
    }
    for (const GLuint shader : shaders) {
        gl.glDeleteShader(shader); // the program keeps what it needs
    }
    return program;
}

} // namespace zephyr::console::opengl
