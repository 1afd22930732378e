#include "faults/FailingAllocation.h"
#include "view/FramePlan.h"
#include "view/ViewFrames.h"
#include "view/ViewState.h"
#include "zephyr/console/Console.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

namespace zephyr::console::qt {
namespace {

QImage painted(ViewFrames& frames, const Console& console, const std::shared_ptr<const ViewState>& state)
{
    QImage image(400, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    frames.plan(console, console.readInput(), state, image.size());
    frames.paint(painter, true);
    return image;
}

/// The largest difference of two pictures in a pixel's green. Qt may smooth a text that is laid out again a little
/// differently; a letter that is missing differs by far more.
int worstDifference(const QImage& a, const QImage& b)
{
    int worst = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            worst = std::max(worst, std::abs(qGreen(a.pixel(x, y)) - qGreen(b.pixel(x, y))));
        }
    }
    return worst;
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
        EXPECT_LE(worstDifference(painted(others, console, state), painted(frames, console, state)), 20)
            << successes;
    }
    EXPECT_GT(failures, 10);
}

} // namespace
} // namespace zephyr::console::qt
