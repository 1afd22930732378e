#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Command.h"

#include <gtest/gtest.h>

namespace {

using namespace zephyr::console::commands;

#include "Registration.inc"

TEST(RegistrationExample, RemovesTheCommandWithItsObject)
{
    zephyr::console::Console console;
    {
        const Lamp lamp(console);
        console.execute(U"lamp on");
        EXPECT_TRUE(lamp.isOn());
    }
    EXPECT_EQ(nullptr, console.lookupCommand(U"lamp"));
}

} // namespace
