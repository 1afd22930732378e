#include "sandbox/GreenPixels.h"
#include "sandbox/SandboxFixture.h"
#include "sandbox/program/SandboxWindow.h"

#include <optional>

namespace zephyr::test {
namespace {

class WindowClear : public SandboxFixture
{
protected:
    WindowClear()
    {
        sandbox.clock().setPaused(true);
        sandbox.console().open();
        for (int i = 0; i < 40; ++i) {
            answerTo("echo a line of some length that is green");
        }
    }
};

TEST_F(WindowClear, EmptiesTheViewAndKeepsTheLog)
{
    sandbox::SandboxWindow window(sandbox);
    window.resize(640, 720);
    const int before = greenPixels(window.frame());
    const std::size_t logged = sandbox.console().logSize();
    answerTo("clear");
    EXPECT_GT(before, 1000);
    EXPECT_LT(greenPixels(window.frame()), before / 5); // the prompt and the cursor
    EXPECT_GT(sandbox.console().logSize(), logged);
}

TEST_F(WindowClear, HasNothingToDoOnceTheWindowIsGone)
{
    std::optional<sandbox::SandboxWindow> window(sandbox);
    window.reset();
    EXPECT_EQ(Lines(), answerTo("clear"));
}

} // namespace
} // namespace zephyr::test
