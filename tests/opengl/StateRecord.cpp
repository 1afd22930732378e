#include "opengl/StateRecord.h"

#include <array>
#include <functional>
#include <iterator>
#include <sstream>

namespace zephyr::test {

namespace {

constexpr GLuint kIndices =
    4; // draw buffers, viewports, texture units and vertex attributes that are looked at
constexpr std::size_t kMaxValues = 16;
constexpr double kUntouched = -12345.0;

struct Name
{
    const char* text;
    GLenum value;
};

constexpr Name kValues[] = {
    {"program", GL_CURRENT_PROGRAM},
    {"array buffer", GL_ARRAY_BUFFER_BINDING},
    {"element array buffer", GL_ELEMENT_ARRAY_BUFFER_BINDING},
    {"pixel unpack buffer", GL_PIXEL_UNPACK_BUFFER_BINDING},
    {"pixel pack buffer", GL_PIXEL_PACK_BUFFER_BINDING},
    {"uniform buffer", GL_UNIFORM_BUFFER_BINDING},
    {"vertex array", GL_VERTEX_ARRAY_BINDING},
    {"draw framebuffer", GL_DRAW_FRAMEBUFFER_BINDING},
    {"read framebuffer", GL_READ_FRAMEBUFFER_BINDING},
    {"framebuffer", GL_FRAMEBUFFER_BINDING},
    {"renderbuffer", GL_RENDERBUFFER_BINDING},
    {"draw buffer", GL_DRAW_BUFFER},
    {"blend color", GL_BLEND_COLOR},
    {"blend source color", GL_BLEND_SRC_RGB},
    {"blend source alpha", GL_BLEND_SRC_ALPHA},
    {"blend target color", GL_BLEND_DST_RGB},
    {"blend target alpha", GL_BLEND_DST_ALPHA},
    {"blend equation of color", GL_BLEND_EQUATION_RGB},
    {"blend equation of alpha", GL_BLEND_EQUATION_ALPHA},
    {"color mask", GL_COLOR_WRITEMASK},
    {"depth mask", GL_DEPTH_WRITEMASK},
    {"depth function", GL_DEPTH_FUNC},
    {"depth range", GL_DEPTH_RANGE},
    {"cull face", GL_CULL_FACE_MODE},
    {"front face", GL_FRONT_FACE},
    {"stencil function", GL_STENCIL_FUNC},
    {"stencil reference", GL_STENCIL_REF},
    {"stencil value mask", GL_STENCIL_VALUE_MASK},
    {"stencil mask", GL_STENCIL_WRITEMASK},
    {"stencil fail", GL_STENCIL_FAIL},
    {"viewport", GL_VIEWPORT},
    {"scissor box", GL_SCISSOR_BOX},
    {"active texture", GL_ACTIVE_TEXTURE},
    {"unpack alignment", GL_UNPACK_ALIGNMENT},
    {"unpack row length", GL_UNPACK_ROW_LENGTH},
    {"unpack skip rows", GL_UNPACK_SKIP_ROWS},
    {"unpack skip pixels", GL_UNPACK_SKIP_PIXELS},
    {"unpack swap bytes", GL_UNPACK_SWAP_BYTES},
    {"pack alignment", GL_PACK_ALIGNMENT},
    {"polygon mode", GL_POLYGON_MODE},
    {"primitive restart index", GL_PRIMITIVE_RESTART_INDEX},
    {"clip origin", GL_CLIP_ORIGIN},
    {"clip depth mode", GL_CLIP_DEPTH_MODE},
    {"logic operation", GL_LOGIC_OP_MODE},
    {"clear color", GL_COLOR_CLEAR_VALUE},
    {"line width", GL_LINE_WIDTH},
    {"program pipeline", GL_PROGRAM_PIPELINE_BINDING},
    {"transform feedback", GL_TRANSFORM_FEEDBACK_BINDING},
};

constexpr Name kSwitches[] = {
    {"blend", GL_BLEND},
    {"cull face is on", GL_CULL_FACE},
    {"depth test", GL_DEPTH_TEST},
    {"stencil test", GL_STENCIL_TEST},
    {"scissor test", GL_SCISSOR_TEST},
    {"dither", GL_DITHER},
    {"polygon offset", GL_POLYGON_OFFSET_FILL},
    {"polygon smooth", GL_POLYGON_SMOOTH},
    {"polygon stipple", 0x0B42},
    {"alpha test", 0x0BC0},
    {"alpha to coverage", GL_SAMPLE_ALPHA_TO_COVERAGE},
    {"alpha to one", GL_SAMPLE_ALPHA_TO_ONE},
    {"sample coverage", GL_SAMPLE_COVERAGE},
    {"sample mask", GL_SAMPLE_MASK},
    {"multisample", GL_MULTISAMPLE},
    {"logic operation is on", GL_COLOR_LOGIC_OP},
    {"framebuffer sRGB", GL_FRAMEBUFFER_SRGB},
    {"rasterizer discard", GL_RASTERIZER_DISCARD},
    {"primitive restart", GL_PRIMITIVE_RESTART},
    {"fixed primitive restart", GL_PRIMITIVE_RESTART_FIXED_INDEX},
    {"depth clamp", GL_DEPTH_CLAMP},
    {"clip distance 0", GL_CLIP_DISTANCE0},
    {"clip distance 3", GL_CLIP_DISTANCE3},
    {"program point size", GL_PROGRAM_POINT_SIZE},
};

constexpr Name kOfDrawBuffers[] = {{"blend source color", GL_BLEND_SRC_RGB},
                                   {"blend target alpha", GL_BLEND_DST_ALPHA},
                                   {"blend equation", GL_BLEND_EQUATION_RGB},
                                   {"color mask", GL_COLOR_WRITEMASK}};

constexpr Name kOfViewports[] = {{"viewport", GL_VIEWPORT}, {"scissor box", GL_SCISSOR_BOX}};

constexpr Name kOfTextureUnits[] = {{"texture", GL_TEXTURE_BINDING_2D},
                                    {"cube map", GL_TEXTURE_BINDING_CUBE_MAP},
                                    {"sampler", GL_SAMPLER_BINDING}};

constexpr Name kOfAttributes[] = {
    {"is enabled", GL_VERTEX_ATTRIB_ARRAY_ENABLED}, {"size", GL_VERTEX_ATTRIB_ARRAY_SIZE},
    {"type", GL_VERTEX_ATTRIB_ARRAY_TYPE},          {"normalized", GL_VERTEX_ATTRIB_ARRAY_NORMALIZED},
    {"stride", GL_VERTEX_ATTRIB_ARRAY_STRIDE},      {"buffer", GL_VERTEX_ATTRIB_ARRAY_BUFFER_BINDING},
    {"divisor", GL_VERTEX_ATTRIB_ARRAY_DIVISOR}};

class StateReader
{
public:
    explicit StateReader(GlContext& glContext) : context(glContext), gl(glContext.gl()) {}

    StateRecord read()
    {
        for (const Name& name : kValues) {
            record(name.text, [&](GLfloat* values) { gl.glGetFloatv(name.value, values); });
        }
        for (const Name& name : kSwitches) {
            record(name.text, [&](GLfloat* values) { *values = gl.glIsEnabled(name.value); });
        }
        readDrawBuffersAndViewports();
        readTextureUnits();
        readAttributes();
        return state;
    }

private:
    void record(const std::string& name, const std::function<void(GLfloat*)>& query)
    {
        std::array<GLfloat, kMaxValues> values{};
        values.fill(kUntouched);
        query(values.data());
        if (gl.glGetError() != GL_NO_ERROR) {
            return;
        }
        std::ostringstream text;
        for (std::size_t i = 0; i < values.size() && values[i] != kUntouched; ++i) {
            text << values[i] << ' ';
        }
        state[name] = text.str();
    }

    static std::string indexed(const char* name, GLuint index)
    {
        return name + (" of " + std::to_string(index));
    }

    void readDrawBuffersAndViewports()
    {
        auto* const get = context.function<void(GLenum, GLuint, GLfloat*)>("glGetFloati_v");
        if (get == nullptr || context.context->isOpenGLES() ||
            context.context->format().version() < std::pair(4, 1)) {
            return;
        }
        for (GLuint i = 0; i < kIndices; ++i) {
            for (const Name& name : kOfDrawBuffers) {
                record(indexed(name.text, i), [&](GLfloat* values) { get(name.value, i, values); });
            }
            for (const Name& name : kOfViewports) {
                record(indexed(name.text, i), [&](GLfloat* values) { get(name.value, i, values); });
            }
            record(indexed("blend", i), [&](GLfloat* values) { *values = gl.glIsEnabledi(GL_BLEND, i); });
            record(indexed("scissor test", i),
                   [&](GLfloat* values) { *values = gl.glIsEnabledi(GL_SCISSOR_TEST, i); });
        }
    }

    void readTextureUnits()
    {
        GLint active = 0;
        gl.glGetIntegerv(GL_ACTIVE_TEXTURE, &active);
        for (GLuint i = 0; i < kIndices; ++i) {
            gl.glActiveTexture(GL_TEXTURE0 + i);
            for (const Name& name : kOfTextureUnits) {
                record(indexed(name.text, i), [&](GLfloat* values) { gl.glGetFloatv(name.value, values); });
            }
        }
        gl.glActiveTexture(static_cast<GLenum>(active));
    }

    void readAttributes()
    {
        for (GLuint i = 0; i < kIndices; ++i) {
            for (const Name& name : kOfAttributes) {
                record(indexed(name.text, i),
                       [&](GLfloat* values) { gl.glGetVertexAttribfv(i, name.value, values); });
            }
            void* pointer = nullptr;
            gl.glGetVertexAttribPointerv(i, GL_VERTEX_ATTRIB_ARRAY_POINTER, &pointer);
            state[indexed("pointer", i)] = std::to_string(reinterpret_cast<std::uintptr_t>(pointer));
        }
    }

    GlContext& context;
    QOpenGLExtraFunctions& gl;
    StateRecord state;
};

} // namespace

StateRecord readState(GlContext& context) { return StateReader(context).read(); }

} // namespace zephyr::test
