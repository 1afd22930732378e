#include "GlFunctions.h"

#include <QOpenGLContext>
#include <QSurfaceFormat>

#include <iterator>

namespace zephyr::console::opengl {

namespace {

constexpr GlVersion kAlways{1, 0};

constexpr GlFeature kOfAll{kAlways, kAlways, nullptr};
constexpr GlFeature kOfDesktop{kAlways, kNever, nullptr};
constexpr GlFeature kClipControl{{4, 5}, kNever, "GL_ARB_clip_control"};
constexpr GlFeature kSamplers{{3, 3}, {3, 0}, "GL_ARB_sampler_objects"};
constexpr GlFeature kUnpackBuffers{{2, 1}, {3, 0}, "GL_ARB_pixel_buffer_object"};
constexpr GlFeature kUnpackRows{kAlways, {3, 0}, "GL_EXT_unpack_subimage"};
constexpr GlFeature kViewports{{4, 1}, kNever, "GL_ARB_viewport_array"};

struct Capability
{
    GLenum name;
    GlFeature feature;
};

constexpr Capability kCapabilities[] = {
    {GL_CULL_FACE, kOfAll},
    {GL_DEPTH_TEST, kOfAll},
    {GL_STENCIL_TEST, kOfAll},
    {GL_SAMPLE_ALPHA_TO_COVERAGE, kOfAll},
    {GL_SAMPLE_COVERAGE, kOfAll},
    {kSampleAlphaToOne, kOfDesktop},
    {kColorLogicOp, kOfDesktop},
    {kPolygonSmooth, kOfDesktop},
    {GL_RASTERIZER_DISCARD, {{3, 0}, {3, 0}, "GL_EXT_transform_feedback"}},
    {kFramebufferSrgb, {{3, 0}, kNever, "GL_EXT_framebuffer_sRGB"}},
    {kPrimitiveRestart, {{3, 1}, kNever, nullptr}},
    {GL_SAMPLE_MASK, {{3, 2}, {3, 1}, "GL_ARB_texture_multisample"}},
};

/// The fixed functions that also act on what shaders draw.
constexpr GLenum kCompatibleCapabilities[] = {kAlphaTest, kPolygonStipple};

} // namespace

GlFunctions::GlFunctions(QOpenGLContext& context)
    : QOpenGLExtraFunctions(&context),
      mIsES(context.isOpenGLES()),
      mVersion(context.format().version()),
      mHasSamplers(has(context, kSamplers)),
      mHasUnpackBuffers(has(context, kUnpackBuffers)),
      mHasUnpackRows(has(context, kUnpackRows))
{
    mIsCompatible = !mIsES && hasFixedFunctions(context);
    findCapabilities(context);
    findFunctions(context);
}

bool GlFunctions::hasFixedFunctions(const QOpenGLContext& context)
{
    if (mVersion < GlVersion(3, 2)) {
        return mVersion < GlVersion(3, 1) || context.hasExtension("GL_ARB_compatibility");
    }
    return (integer(kContextProfileMask) & kCompatibilityProfile) != 0;
}

bool GlFunctions::has(const QOpenGLContext& context, const GlFeature& feature) const
{
    return isAtLeast(feature.desktop, feature.es) ||
           (feature.extension != nullptr && context.hasExtension(feature.extension));
}

GLint GlFunctions::integer(GLenum name)
{
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

void GlFunctions::setEnabled(GLenum capability, bool enable)
{
    if (enable) {
        glEnable(capability);
    } else {
        glDisable(capability);
    }
}

void GlFunctions::setEnabledFirst(GLenum capability, bool enable, bool isIndexed)
{
    if (!isIndexed) {
        setEnabled(capability, enable);
    } else if (enable) {
        glEnablei(capability, 0);
    } else {
        glDisablei(capability, 0);
    }
}

void GlFunctions::findCapabilities(const QOpenGLContext& context)
{
    for (const Capability& capability : kCapabilities) {
        if (has(context, capability.feature)) {
            mCapabilities.push_back(capability.name);
        }
    }
    if (mIsES && context.hasExtension("GL_EXT_sRGB_write_control")) {
        mCapabilities.push_back(kFramebufferSrgb);
    }
    if (mIsCompatible) {
        mCapabilities.insert(mCapabilities.end(), std::begin(kCompatibleCapabilities),
                             std::end(kCompatibleCapabilities));
    }
    const GLint clipDistances = mIsES ? 0 : integer(kMaxClipDistances);
    for (GLint i = 0; i < clipDistances; ++i) {
        mCapabilities.push_back(kClipDistance0 + static_cast<GLenum>(i));
    }
}

void GlFunctions::findFunctions(const QOpenGLContext& context)
{
    if (!mIsES) {
        polygonMode = reinterpret_cast<decltype(polygonMode)>(context.getProcAddress("glPolygonMode"));
    }
    if (has(context, kViewports)) {
        viewportIndexed =
            reinterpret_cast<decltype(viewportIndexed)>(context.getProcAddress("glViewportIndexedf"));
    }
    if (has(context, kClipControl)) {
        clipControl = reinterpret_cast<decltype(clipControl)>(context.getProcAddress("glClipControl"));
    }
}

} // namespace zephyr::console::opengl
