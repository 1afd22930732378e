#include "opengl/GlContext.h"

#include <gtest/gtest.h>

#include <string>

namespace zephyr::test {
namespace {

class OpenGLContexts : public testing::TestWithParam<ContextKind>
{};

TEST_P(OpenGLContexts, HaveTheVersionThatTheEnvironmentNames)
{
    GlContext context(GetParam());
    const auto [major, minor] = context.context->format().version();
    const bool isES = GetParam().api == QSurfaceFormat::OpenGLES;
    EXPECT_EQ(isES, context.context->isOpenGLES());
    const QByteArray expected = qgetenv(isES ? "EXPECTED_OPENGL_ES" : "EXPECTED_OPENGL");
    if (!expected.isEmpty()) {
        EXPECT_EQ(expected.toStdString(), std::to_string(major) + "." + std::to_string(minor));
    }
}

INSTANTIATE_TEST_SUITE_P(, OpenGLContexts, testing::Values(kCompatible, kCore, kES),
                         [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace zephyr::test
