#include "faults/FailingAllocation.h"
#include "view/FramePlan.h"
#include "view/ViewFrames.h"
#include "view/ViewState.h"
#include "zephyr/console/Console.h"

#include <QImage>
#include <QPainter>
#include <QSize>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>

namespace zephyr::console::qt {
namespace {

/// Low enough for Qt to fill it on one thread. From 96 rows on it shares a fill with its thread pool, and where memory runs
/// out meanwhile those threads go on after the painter has ended, which nobody outside of Qt can know.
constexpr QSize kSize(400, 90);

QImage painted(ViewFrames& frames, const Console& console, const std::shared_ptr<const ViewState>& state)
{
    QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    frames.plan(console, console.readInput(), state, image.size());
    frames.paint(painter, true);
    return image;
}

TEST(ViewPictureMemory, IsWholeAgainAfterMemoryRanOutAtAnyPlace)
{
    const auto state = std::make_shared<const ViewState>();
    Console console;
    console.open();
    ViewFrames frames;
    painted(frames, console, state); // so that Qt has its fonts
    int failures = 0;
    bool hasFailed = true;
    for (std::size_t successes = 0; hasFailed; ++successes) {
        console.write(U"a line that needs memory of its own", Output);
        {
            const test::FailingAllocation failing(successes);
            try {
                painted(frames, console, state);
            } catch (const std::bad_alloc&) {
                ++failures;
            }
            hasFailed = failing.hasFailed();
        }
        ViewFrames others;
        EXPECT_EQ(painted(others, console, state), painted(frames, console, state)) << successes;
    }
    EXPECT_GT(failures, 10);
}

} // namespace
} // namespace zephyr::console::qt
