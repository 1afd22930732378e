#include "remote_guide/Background.h"
#include "remote_guide/RunScript.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

TEST(RemoteGuide, ServesAProgram)
{
    const TemporaryDirectory folder;
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(folder.path().string()));
    const Background first;
    const Background second;
    EXPECT_EQ("my-simulation", first.name());
    EXPECT_EQ("my-simulation-2", second.name());
    qunsetenv("XDG_RUNTIME_DIR");
}

TEST(RemoteGuide, RunsScripts)
{
    const TemporaryDirectory folder;
    console::Console console;
    EXPECT_EQ(0, runScript(console, folder.write("good.console", "help\n"), false));
    EXPECT_EQ(1, runScript(console, folder.write("bad.console", "nothing\nhelp\n"), false));
    EXPECT_EQ(2, runScript(console, folder.path() / "none.console", true));
}

} // namespace
} // namespace zephyr::test
