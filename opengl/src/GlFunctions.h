#ifndef ZEPHYR_CONSOLE_OPENGL_GLFUNCTIONS_H
#define ZEPHYR_CONSOLE_OPENGL_GLFUNCTIONS_H

#include <QOpenGLExtraFunctions>

#include <utility>
#include <vector>

class QOpenGLContext;

namespace zephyr::console::opengl {

/// Version of OpenGL or OpenGL ES: major, minor.
using GlVersion = std::pair<int, int>;
constexpr GlVersion kNever{1000, 0};

/// The versions that brought something, and the extension that gives it to earlier ones.
struct GlFeature
{
    GlVersion desktop;
    GlVersion es;
    const char* extension; // or null
};

// Desktop OpenGL's names for what OpenGL ES lacks. Qt's headers leave them out where Qt is built for OpenGL ES.
constexpr GLenum kAlphaTest = 0x0BC0;
constexpr GLenum kClipDepthMode = 0x935D;
constexpr GLenum kClipDistance0 = 0x3000;
constexpr GLenum kClipOrigin = 0x935C;
constexpr GLenum kColorLogicOp = 0x0BF2;
constexpr GLint kCompatibilityProfile = 2;
constexpr GLenum kContextProfileMask = 0x9126;
constexpr GLenum kFill = 0x1B02;
constexpr GLenum kFramebufferSrgb = 0x8DB9;
constexpr GLenum kLowerLeft = 0x8CA1;
constexpr GLenum kMaxClipDistances = 0x0D32;
constexpr GLenum kNegativeOneToOne = 0x935E;
constexpr GLenum kPolygonMode = 0x0B40;
constexpr GLenum kPolygonSmooth = 0x0B41;
constexpr GLenum kPolygonStipple = 0x0B42;
constexpr GLenum kPrimitiveRestart = 0x8F9D;
constexpr GLenum kSampleAlphaToOne = 0x809F;

/// The functions of one OpenGL context, and what its version has. Use it while that context is current.
class GlFunctions : public QOpenGLExtraFunctions
{
public:
    /// The context must be current.
    explicit GlFunctions(QOpenGLContext& context);

    /// Whether the context is at least `desktop`, or `es` if it is one of OpenGL ES.
    bool isAtLeast(GlVersion desktop, GlVersion es) const { return mVersion >= (mIsES ? es : desktop); }

    bool isES() const { return mIsES; }

    /// Whether the context has what OpenGL 3.1 removed.
    bool isCompatible() const { return mIsCompatible; }

    bool hasSamplers() const { return mHasSamplers; }
    bool hasUnpackBuffers() const { return mHasUnpackBuffers; }

    /// Whether rows of pixels can be cut out of a larger image in memory.
    bool hasUnpackRows() const { return mHasUnpackRows; }

    /// The capabilities of this context that would change how a textured rectangle is drawn.
    const std::vector<GLenum>& capabilities() const { return mCapabilities; }

    GLint integer(GLenum name);

    void setEnabled(GLenum capability, bool enable);

    /// Sets a capability of the first draw buffer or viewport, if `isIndexed` says that each has its own.
    void setEnabledFirst(GLenum capability, bool enable, bool isIndexed);

    // Functions that QOpenGLExtraFunctions lacks. Each is null in a context that lacks it.
    void(QOPENGLF_APIENTRYP polygonMode)(GLenum, GLenum) = nullptr;
    void(QOPENGLF_APIENTRYP clipControl)(GLenum, GLenum) = nullptr;
    void(QOPENGLF_APIENTRYP viewportIndexed)(GLuint, GLfloat, GLfloat, GLfloat, GLfloat) = nullptr;

private:
    bool hasFixedFunctions(const QOpenGLContext& context);
    bool has(const QOpenGLContext& context, const GlFeature& feature) const;
    void findCapabilities(const QOpenGLContext& context);
    void findFunctions(const QOpenGLContext& context);

    const bool mIsES;
    bool mIsCompatible = false;
    const GlVersion mVersion;
    const bool mHasSamplers;
    const bool mHasUnpackBuffers;
    const bool mHasUnpackRows;
    std::vector<GLenum> mCapabilities;
};

} // namespace zephyr::console::opengl

#endif
