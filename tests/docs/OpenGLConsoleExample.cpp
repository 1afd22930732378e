#include "opengl/GlContext.h"
#include "zephyr/console/opengl/OpenGLConsole.h"

#include <QWindow>

#include <gtest/gtest.h>

namespace zephyr::console::opengl {
namespace {

TEST(OpenGLConsoleExample, PaintsTheConsole)
{
    test::GlContext context(test::kCompatible);
    QWindow window;
    window.resize(320, 200);
    context.bindFrame(window.size(), Qt::white);
    const QImage before = context.picture();
#include "OpenGLConsole.inc"
    EXPECT_EQ(before, context.picture());
    console.setOpen(true);
    console.paint();
    EXPECT_NE(before, context.picture());
}

} // namespace
} // namespace zephyr::console::opengl
