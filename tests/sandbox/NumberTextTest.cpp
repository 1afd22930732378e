#include "sandbox/simulation/NumberText.h"

#include <gtest/gtest.h>

namespace zephyr::sandbox {
namespace {

TEST(NumberText, WritesNumbersAsShortAsTheyGo)
{
    EXPECT_EQ("12.5", textOf(12.5));
    EXPECT_EQ("270", textOf(270.0));
    EXPECT_EQ("0.00833333", textOf(1.0 / 120.0));
    EXPECT_EQ("0", textOf(0.0));
}

} // namespace
} // namespace zephyr::sandbox
