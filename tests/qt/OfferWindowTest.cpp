#include "view/OfferWindow.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h> // needs the header above

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace zephyr::console::qt {
namespace {

using Part = std::pair<std::size_t, std::size_t>; // first and size

Part part(const OfferWindow& window) { return {window.first(), window.size()}; }

TEST(OfferWindow, HasTheWholeOfAShortList)
{
    OfferWindow window;
    window.follow(3, 2, 8);
    EXPECT_EQ(Part(0, 3), part(window));
    window.follow(0, std::nullopt, 8);
    EXPECT_EQ(Part(0, 0), part(window));
}

TEST(OfferWindow, MovesNoFurtherThanTheSelectedOfferNeeds)
{
    OfferWindow window;
    const auto follow = [&](std::size_t selected) {
        window.follow(10, selected, 4);
        return part(window);
    };
    EXPECT_EQ(Part(0, 4), follow(3));
    EXPECT_EQ(Part(1, 4), follow(4));
    EXPECT_EQ(Part(1, 4), follow(2));
    EXPECT_EQ(Part(0, 4), follow(0));
    EXPECT_EQ(Part(6, 4), follow(9));
}

TEST(OfferWindow, GoesToTheStartWithoutASelectedOffer)
{
    OfferWindow window;
    window.follow(10, 9, 4);
    window.follow(10, std::nullopt, 4);
    EXPECT_EQ(Part(0, 4), part(window));
}

TEST(OfferWindow, TakesNoRows)
{
    OfferWindow window;
    window.follow(10, 9, 0);
    EXPECT_EQ(Part(0, 0), part(window));
}

RC_GTEST_PROP(OfferWindow, IsAsFullAsItCanBeAndHasTheSelectedOffer, ())
{
    OfferWindow window;
    const int steps = *rc::gen::inRange(1, 20);
    for (int i = 0; i < steps; ++i) {
        const auto count = *rc::gen::inRange<std::size_t>(1, 20);
        const auto selected = *rc::gen::inRange<std::size_t>(0, count);
        const auto rows = *rc::gen::inRange<std::size_t>(1, 12);
        window.follow(count, selected, rows);
        RC_ASSERT(window.size() == std::min(count, rows));
        RC_ASSERT(window.first() <= selected);
        RC_ASSERT(selected < window.first() + window.size());
        RC_ASSERT(window.first() + window.size() <= count);
    }
}

} // namespace
} // namespace zephyr::console::qt
