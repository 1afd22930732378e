#include "opengl/DrawnConsole.h"
#include "opengl/StateRecord.h"

#include <functional>
#include <utility>
#include <vector>

namespace zephyr::test {
namespace {

/// Something that a host may do to the state of OpenGL before the console is drawn.
struct HostsDoing
{
    const char* name;
    std::function<void(GlContext&)> act; // may cause OpenGL errors where the context lacks something
};

HostsDoing enable(const char* name, GLenum capability)
{
    return {name, [capability](GlContext& context) { context.gl().glEnable(capability); }};
}

GLuint newBuffer(QOpenGLExtraFunctions& gl, GLenum target)
{
    constexpr GLubyte bytes[256] = {};
    GLuint buffer = 0;
    gl.glGenBuffers(1, &buffer);
    gl.glBindBuffer(target, buffer);
    gl.glBufferData(target, sizeof bytes, bytes, GL_STATIC_DRAW);
    return buffer;
}

bool isAtLeast(const GlContext& context, std::pair<int, int> desktop, std::pair<int, int> es)
{
    return context.context->format().version() >= (context.context->isOpenGLES() ? es : desktop);
}

void setAttributes(GlContext& context)
{
    QOpenGLExtraFunctions& gl = context.gl();
    newBuffer(gl, GL_ARRAY_BUFFER);
    gl.glEnableVertexAttribArray(0);
    gl.glVertexAttribPointer(0, 3, GL_SHORT, GL_TRUE, 10, reinterpret_cast<void*>(4));
    gl.glEnableVertexAttribArray(1);
    gl.glVertexAttribPointer(1, 4, GL_UNSIGNED_BYTE, GL_TRUE, 8, reinterpret_cast<void*>(8));
    gl.glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void bindVertexArray(GlContext& context)
{
    if (!isAtLeast(context, {3, 0}, {3, 0})) {
        return;
    }
    GLuint array = 0;
    context.gl().glGenVertexArrays(1, &array);
    context.gl().glBindVertexArray(array);
    newBuffer(context.gl(), GL_ELEMENT_ARRAY_BUFFER);
    setAttributes(context);
    if (isAtLeast(context, {3, 3}, {3, 0})) {
        context.gl().glVertexAttribDivisor(0, 3);
    }
}

/// A program that draws nothing that could be seen.
void useProgram(GlContext& context)
{
    QOpenGLExtraFunctions& gl = context.gl();
    const GLuint program = gl.glCreateProgram();
    const bool isCore = context.context->format().profile() == QSurfaceFormat::CoreProfile;
    const std::string version = isCore ? "#version 150\n" : "#version 100\n";
    const std::string vertex = version + "void main() { gl_Position = vec4(2.0); }";
    const std::string fragment = version + "void main() { discard; }";
    for (const auto& [kind, text] :
         {std::pair(GL_VERTEX_SHADER, vertex), std::pair(GL_FRAGMENT_SHADER, fragment)}) {
        const GLuint shader = gl.glCreateShader(static_cast<GLenum>(kind));
        const char* source = text.c_str();
        gl.glShaderSource(shader, 1, &source, nullptr);
        gl.glCompileShader(shader);
        gl.glAttachShader(program, shader);
    }
    gl.glLinkProgram(program);
    gl.glUseProgram(program);
}

void bindTextures(GlContext& context)
{
    QOpenGLExtraFunctions& gl = context.gl();
    for (GLuint unit = 0; unit < 4; ++unit) {
        GLuint texture = 0;
        gl.glGenTextures(1, &texture);
        gl.glActiveTexture(GL_TEXTURE0 + unit);
        gl.glBindTexture(GL_TEXTURE_2D, texture);
    }
    gl.glActiveTexture(GL_TEXTURE0 + 2);
}

void bindSampler(GlContext& context)
{
    if (!isAtLeast(context, {3, 3}, {3, 0}) && !context.context->hasExtension("GL_ARB_sampler_objects")) {
        return;
    }
    GLuint sampler = 0;
    context.gl().glGenSamplers(1, &sampler);
    context.gl().glSamplerParameteri(sampler, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    context.gl().glBindSampler(0, sampler);
}

void unpackOddly(GlContext& context)
{
    QOpenGLExtraFunctions& gl = context.gl();
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, 77);
    gl.glPixelStorei(GL_UNPACK_SKIP_ROWS, 3);
    gl.glPixelStorei(GL_UNPACK_SKIP_PIXELS, 5);
    gl.glPixelStorei(GL_UNPACK_SWAP_BYTES, GL_TRUE);
}

void bindUnpackBuffer(GlContext& context)
{
    if (isAtLeast(context, {2, 1}, {3, 0})) {
        newBuffer(context.gl(), GL_PIXEL_UNPACK_BUFFER);
    }
}

void scissor(GlContext& context)
{
    context.gl().glEnable(GL_SCISSOR_TEST);
    context.gl().glScissor(3, 5, 20, 10);
}

void blendOddly(GlContext& context)
{
    QOpenGLExtraFunctions& gl = context.gl();
    gl.glEnable(GL_BLEND);
    gl.glBlendColor(0.1F, 0.2F, 0.3F, 0.4F);
    gl.glBlendFuncSeparate(GL_ZERO, GL_CONSTANT_COLOR, GL_DST_ALPHA, GL_ONE_MINUS_DST_COLOR);
    gl.glBlendEquationSeparate(GL_FUNC_SUBTRACT, GL_FUNC_REVERSE_SUBTRACT);
}

void blendBuffersDifferently(GlContext& context)
{
    if (!isAtLeast(context, {4, 1}, {3, 2})) {
        return;
    }
    QOpenGLExtraFunctions& gl = context.gl();
    gl.glEnablei(GL_BLEND, 1);
    gl.glBlendFuncSeparatei(2, GL_SRC_COLOR, GL_ZERO, GL_ZERO, GL_DST_COLOR);
    gl.glBlendEquationSeparatei(3, GL_MAX, GL_MIN);
    gl.glColorMaski(1, GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
}

void useSeveralViewports(GlContext& context)
{
    auto* const viewport =
        context.function<void(GLuint, GLfloat, GLfloat, GLfloat, GLfloat)>("glViewportIndexedf");
    if (viewport == nullptr || context.context->isOpenGLES() || !isAtLeast(context, {4, 1}, {4, 1})) {
        return;
    }
    viewport(0, 0.5F, 1.25F, 30.5F, 20.75F);
    viewport(2, 7.5F, 6.25F, 5.0F, 4.0F);
    context.gl().glEnablei(GL_SCISSOR_TEST, 3);
}

void setPolygonMode(GlContext& context)
{
    auto* const polygonMode = context.function<void(GLenum, GLenum)>("glPolygonMode");
    if (polygonMode != nullptr && !context.context->isOpenGLES()) {
        polygonMode(GL_FRONT_AND_BACK, GL_LINE);
        polygonMode(GL_BACK, GL_POINT); // an error in a core profile
    }
}

void turnClipSpaceOver(GlContext& context)
{
    auto* const clipControl = context.function<void(GLenum, GLenum)>("glClipControl");
    if (clipControl != nullptr && !context.context->isOpenGLES()) {
        clipControl(GL_UPPER_LEFT, GL_ZERO_TO_ONE);
    }
}

void cull(GlContext& context)
{
    context.gl().glEnable(GL_CULL_FACE);
    context.gl().glCullFace(GL_FRONT_AND_BACK);
    context.gl().glFrontFace(GL_CW);
}

void failDepthTest(GlContext& context)
{
    context.gl().glEnable(GL_DEPTH_TEST);
    context.gl().glDepthFunc(GL_NEVER);
    context.gl().glDepthMask(GL_FALSE);
}

void failStencilTest(GlContext& context)
{
    context.gl().glEnable(GL_STENCIL_TEST);
    context.gl().glStencilFunc(GL_NEVER, 3, 0x55);
    context.gl().glStencilOp(GL_INCR, GL_DECR, GL_INVERT);
}

void failAlphaTest(GlContext& context)
{
    auto* const alphaFunc = context.function<void(GLenum, GLfloat)>("glAlphaFunc");
    if (alphaFunc != nullptr && context.context->format().profile() != QSurfaceFormat::CoreProfile &&
        !context.context->isOpenGLES()) {
        alphaFunc(GL_NEVER, 0.5F);
        context.gl().glEnable(0x0BC0);
    }
}

void maskSamples(GlContext& context)
{
    context.gl().glEnable(GL_SAMPLE_COVERAGE);
    context.gl().glSampleCoverage(0.0F, GL_FALSE);
    context.gl().glEnable(GL_SAMPLE_ALPHA_TO_COVERAGE);
    context.gl().glEnable(GL_SAMPLE_ALPHA_TO_ONE);
    context.gl().glEnable(GL_SAMPLE_MASK);
}

void operateOnLogic(GlContext& context)
{
    auto* const logicOp = context.function<void(GLenum)>("glLogicOp");
    if (logicOp != nullptr && !context.context->isOpenGLES()) {
        logicOp(GL_INVERT);
        context.gl().glEnable(GL_COLOR_LOGIC_OP);
    }
}

void restartPrimitives(GlContext& context)
{
    auto* const restartAt = context.function<void(GLuint)>("glPrimitiveRestartIndex");
    if (restartAt != nullptr && !context.context->isOpenGLES() && isAtLeast(context, {3, 1}, {9, 9})) {
        context.gl().glEnable(GL_PRIMITIVE_RESTART);
        restartAt(1);
    }
}

const std::vector<HostsDoing>& hostsDoings()
{
    static const std::vector<HostsDoing> doings{
        {"nothing", [](GlContext&) {}},
        {"culling", cull},
        {"depth test", failDepthTest},
        {"stencil test", failStencilTest},
        {"alpha test", failAlphaTest},
        {"scissor", scissor},
        {"viewport", [](GlContext& context) { context.gl().glViewport(7, 9, 33, 11); }},
        {"several viewports", useSeveralViewports},
        {"color mask",
         [](GlContext& context) { context.gl().glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_FALSE); }},
        {"blending", blendOddly},
        {"blending of several buffers", blendBuffersDifferently},
        {"program", useProgram},
        {"vertex attributes",
         [](GlContext& context) {
             if (!isAtLeast(context, {3, 0}, {3, 0}) ||
                 context.context->format().profile() == QSurfaceFormat::CompatibilityProfile) {
                 setAttributes(context); // without a vertex array
             }
         }},
        {"vertex array", bindVertexArray},
        {"array buffer", [](GlContext& context) { newBuffer(context.gl(), GL_ARRAY_BUFFER); }},
        {"unpack buffer", bindUnpackBuffer},
        {"unpacking", unpackOddly},
        {"textures", bindTextures},
        {"sampler", bindSampler},
        {"polygon mode", setPolygonMode},
        {"clip space", turnClipSpaceOver},
        {"samples", maskSamples},
        {"logic operation", operateOnLogic},
        {"primitive restart", restartPrimitives},
        enable("rasterizer discard", GL_RASTERIZER_DISCARD),
        enable("sRGB", GL_FRAMEBUFFER_SRGB),
        enable("polygon smooth", GL_POLYGON_SMOOTH),
        enable("polygon stipple", 0x0B42),
        enable("clip distance", GL_CLIP_DISTANCE0 + 3),
    };
    return doings;
}

class HostStateTest : public testing::TestWithParam<ContextKind>
{
protected:
    /// Forgets the errors of what a context lacks.
    static void forgetErrors(GlContext& context)
    {
        while (context.gl().glGetError() != GL_NO_ERROR) {
        }
    }
};

TEST_P(HostStateTest, IsLeftAsItWasAndDoesNotChangeThePicture)
{
    for (const HostsDoing& doing : hostsDoings()) {
        SCOPED_TRACE(doing.name);
        GlContext context(GetParam());
        DrawnConsole drawn;
        const QImage expected = drawn.expected();
        context.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
        doing.act(context);
        forgetErrors(context);
        const StateRecord before = readState(context);
        drawn.console->paint();
        EXPECT_EQ(GLenum(GL_NO_ERROR), context.gl().glGetError());
        EXPECT_EQ(before, readState(context));
        EXPECT_TRUE(nearPixels(expected, context.picture()));
    }
}

TEST_P(HostStateTest, IsLeftAsItWasInEachFrameOfAHostThatDidEverything)
{
    GlContext context(GetParam());
    DrawnConsole drawn;
    const QImage expected = drawn.expected();
    context.bindFrame(DrawnConsole::kSize, DrawnConsole::kBehind);
    for (const HostsDoing& doing : hostsDoings()) {
        doing.act(context);
    }
    forgetErrors(context);
    const StateRecord before = readState(context);
    for (int frame = 0; frame < 3; ++frame) {
        drawn.console->paint();
        EXPECT_EQ(before, readState(context));
    }
    EXPECT_EQ(GLenum(GL_NO_ERROR), context.gl().glGetError());
}

TEST_P(HostStateTest, IsReadWithTheValuesThatTheHostSet)
{
    GlContext context(GetParam());
    const StateRecord before = readState(context);
    cull(context);
    context.gl().glViewport(1, 2, 3, 4);
    setAttributes(context);
    StateRecord after = readState(context);
    EXPECT_LT(80U, before.size());
    EXPECT_EQ("1 2 3 4 ", after["viewport"]);
    EXPECT_EQ("1 ", after["cull face is on"]);
    EXPECT_NE(before, after);
}

INSTANTIATE_TEST_SUITE_P(, HostStateTest, testing::Values(kCompatible, kCore, kES),
                         [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace zephyr::test
