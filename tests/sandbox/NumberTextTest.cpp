#include "sandbox/simulation/NumberText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

namespace zephyr::sandbox {
namespace {

TEST(NumberText, ReadsDecimalNumbers)
{
    EXPECT_EQ(12.5, numberFrom(U"12.5"));
    EXPECT_EQ(-3.0, numberFrom(U"-3"));
    EXPECT_EQ(1000.0, numberFrom(U"1e3"));
    EXPECT_EQ(0.5, numberFrom(U".5"));
}

TEST(NumberText, ReadsMinusZeroAsZero)
{
    const std::optional<double> zero = numberFrom(U"-0");
    ASSERT_TRUE(zero);
    EXPECT_FALSE(std::signbit(*zero));
}

TEST(NumberText, TakesNothingElseForANumber)
{
    for (const char32_t* const text : {U"", U" ", U"x", U"12x", U"12 ", U" 12", U"1,5", U"0x10", U"inf",
                                       U"nan", U"-inf", U"1e999", U"--1", U"+1", U"\u0661", U"1\U0001F600"}) {
        EXPECT_EQ(std::nullopt, numberFrom(text));
    }
}

TEST(NumberText, ReadsWholeNumbersInDigitsOnly)
{
    EXPECT_EQ(0U, countFrom(U"0"));
    EXPECT_EQ(4000U, countFrom(U"04000"));
    EXPECT_EQ(4294967295U, countFrom(U"4294967295"));
    for (const char32_t* const text :
         {U"", U"-1", U"+1", U"1.0", U"1e3", U"4294967296", U"x", U"1x", U" 1"}) {
        EXPECT_EQ(std::nullopt, countFrom(text));
    }
}

TEST(NumberText, ReadsOnlyNumbersWithinTheLimits)
{
    EXPECT_EQ(1.0, numberWithin(1.0, 12.0, U"1"));
    EXPECT_EQ(12.0, numberWithin(1.0, 12.0, U"12"));
    EXPECT_EQ(1U, countWithin(1, 5, U"1"));
    EXPECT_EQ(5U, countWithin(1, 5, U"5"));
    for (const char32_t* const text : {U"0", U"0.9", U"12.1", U"nan", U"x"}) {
        EXPECT_EQ(std::nullopt, numberWithin(1.0, 12.0, text));
        EXPECT_EQ(std::nullopt, countWithin(1, 5, text));
    }
    EXPECT_EQ(std::nullopt, countWithin(1, 5, U"6"));
}

TEST(NumberText, WritesNumbersAsShortAsTheyGo)
{
    EXPECT_EQ("12.5", textOf(12.5));
    EXPECT_EQ("270", textOf(270.0));
    EXPECT_EQ("0.00833333", textOf(1.0 / 120.0));
    EXPECT_EQ("0", textOf(0.0));
}

} // namespace
} // namespace zephyr::sandbox
