#include "zephyr/common/Color.h"

#include <gtest/gtest.h>

namespace {

using zephyr::Color;

static_assert(Color(1, 2, 3, 4) == Color(1, 2, 3, 4));
static_assert(Color(1, 2, 3) != Color(1, 2, 3, 4));

TEST(Color, KeepsItsFourChannelsApart)
{
    const Color color(10, 20, 30, 40);
    EXPECT_EQ(color.red(), 10);
    EXPECT_EQ(color.green(), 20);
    EXPECT_EQ(color.blue(), 30);
    EXPECT_EQ(color.alpha(), 40);
}

TEST(Color, IsOpaqueUnlessToldOtherwise) { EXPECT_EQ(Color(1, 2, 3).alpha(), 255); }

TEST(Color, DiffersWhenAnyOneChannelDiffers)
{
    const Color color(1, 2, 3, 4);
    EXPECT_TRUE(color == Color(1, 2, 3, 4));
    EXPECT_FALSE(color != Color(1, 2, 3, 4));
    for (const Color& other : {Color(9, 2, 3, 4), Color(1, 9, 3, 4), Color(1, 2, 9, 4), Color(1, 2, 3, 9)}) {
        EXPECT_FALSE(color == other);
        EXPECT_TRUE(color != other);
    }
}

} // namespace
