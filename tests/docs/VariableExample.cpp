#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Variable.h"

#include <gtest/gtest.h>

namespace zephyr::console::commands {
namespace {

TEST(VariableExample, IsSetByALine)
{
    Console console;
#include "Variable.inc"
    console.execute(U"wind.speed 20");
    EXPECT_EQ(20.0, speed.value());
    console.execute(U"wind.speed 61");
    EXPECT_EQ(20.0, speed.value());
    console.execute(U"wind.speed default");
    EXPECT_EQ(12.0, speed.value());
}

} // namespace
} // namespace zephyr::console::commands
