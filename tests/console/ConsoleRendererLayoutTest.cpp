// How many entries a renderer lays out. The cost of a frame over a long log depends on that.

#include "support/ConsoleView.h"
#include "support/PrivateMember.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zephyr::test {

using console::ConsoleRenderer;
using console::detail::LineCache;
using CachedEntries = std::vector<std::vector<QStaticText>>;

struct LineCacheOf : PrivateMember<LineCacheOf, LineCache ConsoleRenderer::*>
{};
template struct Open<LineCacheOf, &ConsoleRenderer::mLineCache>;

struct EntriesOf : PrivateMember<EntriesOf, CachedEntries LineCache::*>
{};
template struct Open<EntriesOf, &LineCache::mEntries>;

namespace {

constexpr int kLogLength = 20000; // entries
constexpr int kFitting = 20;      // lines

const CachedEntries& cachedEntries(const ConsoleRenderer& renderer)
{
    return renderer.*memberPointer(LineCacheOf()).*memberPointer(EntriesOf());
}

std::ptrdiff_t entriesLaidOut(const ConsoleRenderer& renderer)
{
    const CachedEntries& entries = cachedEntries(renderer);
    return std::count_if(entries.begin(), entries.end(), [](const auto& lines) { return !lines.empty(); });
}

TEST(ConsoleRendererLayout, LaysOutOnlyTheNewestEntriesThatFit)
{
    ConsoleRenderer renderer;
    const ConsoleView view{.log = numberedLog(kLogLength)};
    drawnBy(renderer, view, sceneOfLines(kFitting));
    // Two lines belong to the prompt, and one more entry is laid out to see that it doesn't fit.
    EXPECT_EQ(entriesLaidOut(renderer), kFitting - 2 + 1);
}

TEST(ConsoleRendererLayout, LaysOutOnlyTheOldestEntriesThatFitAndThoseThatMayReachUpIntoView)
{
    ConsoleRenderer renderer;
    const ConsoleView view{.log = numberedLog(kLogLength), .scroll = kLogLength};
    drawnBy(renderer, view, sceneOfLines(kFitting));
    EXPECT_GE(entriesLaidOut(renderer), kFitting);
    EXPECT_LE(entriesLaidOut(renderer), kFitting + 2);
}

TEST(ConsoleRendererLayout, KeepsRoomForNoEntriesThatNoFrameReached)
{
    ConsoleRenderer renderer;
    drawnBy(renderer, ConsoleView{.log = numberedLog(kLogLength)}, sceneOfLines(kFitting));
    EXPECT_LE(cachedEntries(renderer).size(), 2U * kFitting);
}

TEST(ConsoleRendererLayout, KeepsWhatWasLaidOutWhileTheViewMovesToBothSides)
{
    ConsoleRenderer renderer;
    ConsoleView view{.log = numberedLog(kLogLength)};
    for (const std::uint32_t scroll : {10000U, 10100U, 0U, 20000U, 10000U}) {
        view.scroll = scroll;
        EXPECT_TRUE(
            samePixels(drawnBy(renderer, view, sceneOfLines(kFitting)), drawn(view, sceneOfLines(kFitting))))
            << scroll;
    }
    constexpr std::ptrdiff_t kViews = 4; // that have no entry in common
    EXPECT_GE(entriesLaidOut(renderer), kViews * (kFitting - 2));
}

TEST(ConsoleRendererLayout, LaysOutOneEntryForOneThatIsWritten)
{
    ConsoleRenderer renderer;
    ConsoleView view{.log = numberedLog(kLogLength)};
    drawnBy(renderer, view, sceneOfLines(kFitting));
    const std::ptrdiff_t before = entriesLaidOut(renderer);
    view.log.push_back(output(U"newest"));
    drawnBy(renderer, view, sceneOfLines(kFitting));
    EXPECT_EQ(entriesLaidOut(renderer), before + 1);
}

} // namespace
} // namespace zephyr::test
