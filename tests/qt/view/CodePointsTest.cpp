#include "view/CodePoints.h"
#include "ViewTestText.h"

namespace zephyr::console::qt {
namespace {

TEST(LaidOutText, CountsCodePointsAsUnitsWhereEachTakesOne)
{
    const LaidOutText text(U"a\u00E9\u4E2D");
    EXPECT_EQ(QStringLiteral(u"a\u00E9\u4E2D"), text.text());
    EXPECT_EQ(3U, text.size());
    for (int i = 0; i <= 3; ++i) {
        EXPECT_EQ(i, text.unitAt(static_cast<std::size_t>(i)));
        EXPECT_EQ(static_cast<std::size_t>(i), text.indexAt(i));
    }
}

TEST(LaidOutText, CountsACodePointOutsideTheBasicPlaneAsTwoUnits)
{
    const LaidOutText text(U"a\U0001F600b");
    EXPECT_EQ(3U, text.size());
    EXPECT_EQ(1, text.unitAt(1));
    EXPECT_EQ(3, text.unitAt(2));
    EXPECT_EQ(4, text.unitAt(3));
    EXPECT_EQ(1U, text.indexAt(1));
    EXPECT_EQ(1U, text.indexAt(2)) << "the second half of a pair";
    EXPECT_EQ(2U, text.indexAt(3));
    EXPECT_EQ(3U, text.indexAt(4));
}

TEST(LaidOutText, ReplacesWhatIsNoScalarValue)
{
    const std::u32string odd = {
        U'a', char32_t(0xD83D), char32_t(0xDE00), char32_t(0x110000), char32_t(0xFFFFFFFF), U'z'};
    const LaidOutText text(odd);
    EXPECT_EQ(QStringLiteral(u"a\uFFFD\uFFFD\uFFFD\uFFFDz"), text.text());
    EXPECT_EQ(6U, text.size());
    EXPECT_EQ(5U, text.indexAt(5));
}

TEST(LaidOutText, KeepsZeroAndNoncharacters)
{
    const std::u32string odd = {U'\0', U'\uFFFF', U'\uFEFF', U'x'};
    const LaidOutText text(odd);
    ASSERT_EQ(4, text.text().size());
    EXPECT_EQ(0, text.text()[0].unicode());
    EXPECT_EQ(0xFFFF, text.text()[1].unicode());
    EXPECT_EQ(0xFEFF, text.text()[2].unicode());
}

TEST(LaidOutText, MayBeEmpty)
{
    const LaidOutText text(U"");
    EXPECT_TRUE(text.text().isEmpty());
    EXPECT_EQ(0U, text.size());
    EXPECT_EQ(0, text.unitAt(0));
    EXPECT_EQ(0U, text.indexAt(0));
}

RC_GTEST_PROP(LaidOutTextProperties, EachCodePointHasUnitsOfItsOwnInOrder, ())
{
    const test::MixedText mixed = *test::mixedText();
    const LaidOutText text(mixed.text);
    RC_ASSERT(text.size() == mixed.text.size());
    RC_ASSERT(text.unitAt(0) == 0);
    RC_ASSERT(text.unitAt(text.size()) == static_cast<int>(text.text().size()));
    for (std::size_t i = 0; i < text.size(); ++i) {
        RC_ASSERT(text.unitAt(i) < text.unitAt(i + 1));
        for (int unit = text.unitAt(i); unit < text.unitAt(i + 1); ++unit) {
            RC_ASSERT(text.indexAt(unit) == i);
        }
    }
}

} // namespace
} // namespace zephyr::console::qt
