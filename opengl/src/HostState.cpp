#include "HostState.h"

#include <QRect>

namespace zephyr::console::opengl {

// Capabilities

DisabledCapabilities::DisabledCapabilities(GlFunctions& gl) : mGl(gl)
{
    for (const GLenum capability : gl.capabilities()) {
        if (gl.glIsEnabled(capability) == GL_TRUE) {
            mDisabled.push_back(capability);
            gl.glDisable(capability);
        }
    }
}

DisabledCapabilities::~DisabledCapabilities()
{
    for (const GLenum capability : mDisabled) {
        mGl.glEnable(capability);
    }
}

// Blending. A query without an index asks for the first draw buffer's state.

PictureBlending::PictureBlending(GlFunctions& gl)
    : mGl(gl),
      mHasIndexedMasks(gl.isAtLeast({3, 0}, {3, 2})),
      mHasIndexedFunctions(gl.isAtLeast({4, 0}, {3, 2})),
      mIsEnabled(gl.glIsEnabled(GL_BLEND) == GL_TRUE),
      mFunctions{static_cast<GLenum>(gl.integer(GL_BLEND_SRC_RGB)),
                 static_cast<GLenum>(gl.integer(GL_BLEND_DST_RGB)),
                 static_cast<GLenum>(gl.integer(GL_BLEND_SRC_ALPHA)),
                 static_cast<GLenum>(gl.integer(GL_BLEND_DST_ALPHA))},
      mEquations{static_cast<GLenum>(gl.integer(GL_BLEND_EQUATION_RGB)),
                 static_cast<GLenum>(gl.integer(GL_BLEND_EQUATION_ALPHA))}
{
    gl.glGetBooleanv(GL_COLOR_WRITEMASK, mMask.data());
    gl.setEnabledFirst(GL_BLEND, true, mHasIndexedMasks);
    setFunctions(GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    setEquations(GL_FUNC_ADD, GL_FUNC_ADD);
    setMask({GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE});
}

PictureBlending::~PictureBlending()
{
    setMask(mMask);
    setEquations(mEquations[0], mEquations[1]);
    setFunctions(mFunctions[0], mFunctions[1], mFunctions[2], mFunctions[3]);
    mGl.setEnabledFirst(GL_BLEND, mIsEnabled, mHasIndexedMasks);
}

void PictureBlending::setFunctions(GLenum sourceColor, GLenum targetColor, GLenum sourceAlpha,
                                   GLenum targetAlpha)
{
    if (mHasIndexedFunctions) {
        mGl.glBlendFuncSeparatei(0, sourceColor, targetColor, sourceAlpha, targetAlpha);
    } else {
        mGl.glBlendFuncSeparate(sourceColor, targetColor, sourceAlpha, targetAlpha);
    }
}

void PictureBlending::setEquations(GLenum color, GLenum alpha)
{
    if (mHasIndexedFunctions) {
        mGl.glBlendEquationSeparatei(0, color, alpha);
    } else {
        mGl.glBlendEquationSeparate(color, alpha);
    }
}

void PictureBlending::setMask(const std::array<GLboolean, 4>& mask)
{
    if (mHasIndexedMasks) {
        mGl.glColorMaski(0, mask[0], mask[1], mask[2], mask[3]);
    } else {
        mGl.glColorMask(mask[0], mask[1], mask[2], mask[3]);
    }
}

// Viewport

PictureViewport::PictureViewport(GlFunctions& gl, const QRect& viewport)
    : mGl(gl), mIsScissored(gl.glIsEnabled(GL_SCISSOR_TEST) == GL_TRUE)
{
    gl.glGetFloatv(GL_VIEWPORT, mViewport.data());
    setViewport({static_cast<GLfloat>(viewport.x()), static_cast<GLfloat>(viewport.y()),
                 static_cast<GLfloat>(viewport.width()), static_cast<GLfloat>(viewport.height())});
    gl.setEnabledFirst(GL_SCISSOR_TEST, false, gl.viewportIndexed != nullptr);
    if (gl.clipControl != nullptr) {
        mClipOrigin = static_cast<GLenum>(gl.integer(kClipOrigin));
        mClipDepthMode = static_cast<GLenum>(gl.integer(kClipDepthMode));
        gl.clipControl(kLowerLeft, kNegativeOneToOne);
    }
}

PictureViewport::~PictureViewport()
{
    if (mGl.clipControl != nullptr) {
        mGl.clipControl(mClipOrigin, mClipDepthMode);
    }
    mGl.setEnabledFirst(GL_SCISSOR_TEST, mIsScissored, mGl.viewportIndexed != nullptr);
    setViewport(mViewport);
}

void PictureViewport::setViewport(const std::array<GLfloat, 4>& viewport)
{
    if (mGl.viewportIndexed != nullptr) {
        mGl.viewportIndexed(0, viewport[0], viewport[1], viewport[2], viewport[3]);
    } else {
        mGl.glViewport(static_cast<GLint>(viewport[0]), static_cast<GLint>(viewport[1]),
                       static_cast<GLsizei>(viewport[2]), static_cast<GLsizei>(viewport[3]));
    }
}

// Polygons

FilledPolygons::FilledPolygons(GlFunctions& gl) : mGl(gl)
{
    if (gl.polygonMode != nullptr) {
        gl.glGetIntegerv(kPolygonMode, mModes.data());
        gl.polygonMode(GL_FRONT_AND_BACK, kFill);
    }
}

FilledPolygons::~FilledPolygons()
{
    if (mGl.polygonMode == nullptr) {
        return;
    }
    if (mGl.isCompatible()) {
        mGl.polygonMode(GL_FRONT, static_cast<GLenum>(mModes[0]));
        mGl.polygonMode(GL_BACK, static_cast<GLenum>(mModes[1]));
    } else {
        mGl.polygonMode(GL_FRONT_AND_BACK, static_cast<GLenum>(mModes[0]));
    }
}

// Pixels in memory

PlainUnpacking::PlainUnpacking(GlFunctions& gl) : mGl(gl)
{
    if (mGl.hasUnpackBuffers()) {
        mBuffer = static_cast<GLuint>(gl.integer(GL_PIXEL_UNPACK_BUFFER_BINDING));
        gl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    }
    const auto set = [this](GLenum name, GLint value) {
        mSettings.push_back({name, mGl.integer(name)});
        mGl.glPixelStorei(name, value);
    };
    set(GL_UNPACK_ALIGNMENT, 4);
    if (gl.hasUnpackRows()) {
        set(GL_UNPACK_ROW_LENGTH, 0);
        set(GL_UNPACK_SKIP_ROWS, 0);
        set(GL_UNPACK_SKIP_PIXELS, 0);
    }
}

PlainUnpacking::~PlainUnpacking()
{
    for (const Setting& setting : mSettings) {
        mGl.glPixelStorei(setting.name, setting.value);
    }
    if (mGl.hasUnpackBuffers()) {
        mGl.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, mBuffer);
    }
}

// Textures

FirstTextureUnit::FirstTextureUnit(GlFunctions& gl)
    : mGl(gl), mActive(static_cast<GLenum>(gl.integer(GL_ACTIVE_TEXTURE)))
{
    gl.glActiveTexture(GL_TEXTURE0);
    mTexture = static_cast<GLuint>(gl.integer(GL_TEXTURE_BINDING_2D));
    if (mGl.hasSamplers()) {
        mSampler = static_cast<GLuint>(gl.integer(GL_SAMPLER_BINDING));
        gl.glBindSampler(0, 0);
    }
}

FirstTextureUnit::~FirstTextureUnit()
{
    if (mGl.hasSamplers()) {
        mGl.glBindSampler(0, mSampler);
    }
    mGl.glBindTexture(GL_TEXTURE_2D, mTexture);
    mGl.glActiveTexture(mActive);
}

// Vertices

ProgramAndVertices::ProgramAndVertices(GlFunctions& gl)
    : mGl(gl),
      mProgram(static_cast<GLuint>(gl.integer(GL_CURRENT_PROGRAM))),
      mArrayBuffer(static_cast<GLuint>(gl.integer(GL_ARRAY_BUFFER_BINDING)))
{
    if (hasVertexArrays(gl)) {
        mVertexArray = static_cast<GLuint>(gl.integer(GL_VERTEX_ARRAY_BINDING));
    } else {
        saveAttribute();
    }
}

ProgramAndVertices::~ProgramAndVertices()
{
    if (hasVertexArrays(mGl)) {
        mGl.glBindVertexArray(mVertexArray);
    } else {
        restoreAttribute();
    }
    mGl.glBindBuffer(GL_ARRAY_BUFFER, mArrayBuffer);
    mGl.glUseProgram(mProgram);
}

void ProgramAndVertices::saveAttribute()
{
    mGl.glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &mAttribute.isEnabled);
    mGl.glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_SIZE, &mAttribute.size);
    mGl.glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_TYPE, &mAttribute.type);
    mGl.glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_NORMALIZED, &mAttribute.isNormalized);
    mGl.glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_STRIDE, &mAttribute.stride);
    mGl.glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_BUFFER_BINDING, &mAttribute.buffer);
    mGl.glGetVertexAttribPointerv(0, GL_VERTEX_ATTRIB_ARRAY_POINTER, &mAttribute.pointer);
}

void ProgramAndVertices::restoreAttribute()
{
    mGl.glBindBuffer(GL_ARRAY_BUFFER, static_cast<GLuint>(mAttribute.buffer));
    mGl.glVertexAttribPointer(0, mAttribute.size, static_cast<GLenum>(mAttribute.type),
                              static_cast<GLboolean>(mAttribute.isNormalized), mAttribute.stride,
                              mAttribute.pointer);
    if (mAttribute.isEnabled == 0) {
        mGl.glDisableVertexAttribArray(0);
    }
}

HostState::HostState(GlFunctions& gl, const QRect& viewportOfPicture)
    : capabilities(gl),
      blending(gl),
      viewport(gl, viewportOfPicture),
      polygons(gl),
      unpacking(gl),
      texture(gl),
      vertices(gl)
{}

} // namespace zephyr::console::opengl
