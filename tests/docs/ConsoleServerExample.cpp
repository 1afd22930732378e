#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

using console::Console;
using console::remote::ConsoleServer;

TEST(ConsoleServer, IsMadeAsItsCommentShows)
{
    const TemporaryDirectory folder;
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(folder.path().string()));
    Console console;
#include "ConsoleServer.inc"
    EXPECT_EQ("sandbox", server.name());
    qunsetenv("XDG_RUNTIME_DIR");
}

} // namespace
} // namespace zephyr::test
