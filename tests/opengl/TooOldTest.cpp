#include "opengl/DrawnConsole.h"
#include "opengl/WarningLog.h"

#include <utility>

namespace zephyr::test {
namespace {

TEST(OpenGLTooOld, IsReportedOnce)
{
    GlContext context(kCompatible);
    ASSERT_GT(std::pair(2, 0), context.context->format().version());
    DrawnConsole drawn;
    const WarningLog log;
    drawn.console->paint();
    drawn.console->paint();
    EXPECT_EQ(QStringList("The console isn't shown in this OpenGL context: it is older than OpenGL 2.0"),
              log.warnings());
    EXPECT_EQ(GLenum(GL_NO_ERROR), context.gl().glGetError());
}

} // namespace
} // namespace zephyr::test
