#ifndef ZEPHYR_CONSOLE_OPENGL_HOSTSTATE_H
#define ZEPHYR_CONSOLE_OPENGL_HOSTSTATE_H

#include "GlFunctions.h"

#include <array>
#include <vector>

class QRect;

namespace zephyr::console::opengl {

// Each class saves a part of the OpenGL state that the host left, sets what drawing a picture needs, and restores the
// host's part in its destructor. The context must be current all the while.

/// Disables the capabilities that would change the picture.
class DisabledCapabilities
{
public:
    explicit DisabledCapabilities(GlFunctions& gl);
    ~DisabledCapabilities();
    DisabledCapabilities(const DisabledCapabilities&) = delete;
    DisabledCapabilities& operator=(const DisabledCapabilities&) = delete;

private:
    GlFunctions& mGl;
    std::vector<GLenum> mDisabled;
};

/// Blends colours that were multiplied by their alpha, and writes all their parts, in the first draw buffer.
class PictureBlending
{
public:
    explicit PictureBlending(GlFunctions& gl);
    ~PictureBlending();
    PictureBlending(const PictureBlending&) = delete;
    PictureBlending& operator=(const PictureBlending&) = delete;

private:
    void setFunctions(GLenum sourceColor, GLenum targetColor, GLenum sourceAlpha, GLenum targetAlpha);
    void setEquations(GLenum color, GLenum alpha);
    void setMask(const std::array<GLboolean, 4>& mask);

    GlFunctions& mGl;
    const bool mHasIndexedMasks;     // and switches
    const bool mHasIndexedFunctions; // and equations
    const bool mIsEnabled;
    std::array<GLenum, 4> mFunctions;
    std::array<GLenum, 2> mEquations;
    std::array<GLboolean, 4> mMask{};
};

/// Sets the first viewport, without a scissor, and maps the lower end of the clip volume to the lower edge.
class PictureViewport
{
public:
    PictureViewport(GlFunctions& gl, const QRect& viewport);
    ~PictureViewport();
    PictureViewport(const PictureViewport&) = delete;
    PictureViewport& operator=(const PictureViewport&) = delete;

private:
    void setViewport(const std::array<GLfloat, 4>& viewport);

    GlFunctions& mGl;
    const bool mIsScissored;
    std::array<GLfloat, 4> mViewport{}; // which need not be whole numbers
    GLenum mClipOrigin = 0;
    GLenum mClipDepthMode = 0;
};

/// Fills polygons.
class FilledPolygons
{
public:
    explicit FilledPolygons(GlFunctions& gl);
    ~FilledPolygons();
    FilledPolygons(const FilledPolygons&) = delete;
    FilledPolygons& operator=(const FilledPolygons&) = delete;

private:
    GlFunctions& mGl;
    std::array<GLint, 2> mModes{}; // of front and back
};

/// Makes textures from pixels in memory that stand without gaps.
class PlainUnpacking
{
public:
    explicit PlainUnpacking(GlFunctions& gl);
    ~PlainUnpacking();
    PlainUnpacking(const PlainUnpacking&) = delete;
    PlainUnpacking& operator=(const PlainUnpacking&) = delete;

private:
    struct Setting
    {
        GLenum name;
        GLint value;
    };

    GlFunctions& mGl;
    GLuint mBuffer = 0;
    std::vector<Setting> mSettings;
};

/// Makes the first texture unit the active one, and lets its texture's own settings count.
class FirstTextureUnit
{
public:
    explicit FirstTextureUnit(GlFunctions& gl);
    ~FirstTextureUnit();
    FirstTextureUnit(const FirstTextureUnit&) = delete;
    FirstTextureUnit& operator=(const FirstTextureUnit&) = delete;

private:
    GlFunctions& mGl;
    const GLenum mActive;
    GLuint mTexture = 0;
    GLuint mSampler = 0;
};

/// Saves which program and which vertices are used, and sets neither.
class ProgramAndVertices
{
public:
    explicit ProgramAndVertices(GlFunctions& gl);
    ~ProgramAndVertices();
    ProgramAndVertices(const ProgramAndVertices&) = delete;
    ProgramAndVertices& operator=(const ProgramAndVertices&) = delete;

private:
    void saveAttribute();
    void restoreAttribute();

    struct Attribute
    {
        GLint isEnabled = 0;
        GLint size = 0;
        GLint type = 0;
        GLint isNormalized = 0;
        GLint stride = 0;
        GLint buffer = 0;
        void* pointer = nullptr;
    };

    GlFunctions& mGl;
    const GLuint mProgram;
    const GLuint mArrayBuffer;
    GLuint mVertexArray = 0;
    Attribute mAttribute; // the first, where the picture has no vertex array of its own
};

/// Saves all OpenGL state that drawing a picture changes, and sets what it needs.
struct HostState
{
    HostState(GlFunctions& gl, const QRect& viewport);

    DisabledCapabilities capabilities;
    PictureBlending blending;
    PictureViewport viewport;
    FilledPolygons polygons;
    PlainUnpacking unpacking;
    FirstTextureUnit texture;
    ProgramAndVertices vertices;
};

/// Whether a context has vertex arrays, and a picture uses one of its own.
inline bool hasVertexArrays(const GlFunctions& gl) { return gl.isAtLeast({3, 0}, {3, 0}); }

} // namespace zephyr::console::opengl

#endif
