#include "view/ViewFont.h"

#include "ViewTestText.h"

#include <QFontInfo>
#include <QFontMetricsF>

#include <limits>

namespace zephyr::console::qt {
namespace {

TEST(ViewFont, IsTheFontThatWasAskedFor)
{
    const ViewFont font(QStringLiteral("DejaVu Sans Mono"), 12.5);
    EXPECT_EQ(QStringLiteral("DejaVu Sans Mono"), QFontInfo(font.font()).family());
    EXPECT_DOUBLE_EQ(12.5, font.font().pointSizeF());
}

TEST(ViewFont, MeasuresRowsAsQtDoes)
{
    for (const double pointSize : {6.0, 10.0, 40.0}) {
        const auto font = test::monospaced(pointSize);
        const QFontMetrics metrics(font->font());
        EXPECT_EQ(metrics.height(), font->lineHeight());
        EXPECT_EQ(metrics.ascent(), font->ascent());
        EXPECT_EQ(font->lineHeight() - font->ascent(), font->descent());
        EXPECT_GT(font->spaceWidth(), 0.0);
    }
}

TEST(ViewFont, HasColumnsWhereItIsMonospaced)
{
    const auto font = test::monospaced();
    ASSERT_TRUE(font->columnWidth().has_value());
    EXPECT_DOUBLE_EQ(font->spaceWidth(), *font->columnWidth());
    EXPECT_DOUBLE_EQ(QFontMetricsF(font->font()).horizontalAdvance(QLatin1Char('W')), *font->columnWidth());
    EXPECT_FALSE(test::proportional()->columnWidth().has_value());
}

TEST(ViewFont, IsMonospacedWhereItsFamilyIsNotThere)
{
    const ViewFont font(QStringLiteral("No Such Family"), 10.0);
    EXPECT_TRUE(font.columnWidth().has_value());
}

TEST(ViewFont, HasAHeightHoweverSmallItIs)
{
    const ViewFont font(QStringLiteral("DejaVu Sans Mono"), 0.01);
    EXPECT_GE(font.lineHeight(), 1);
}

TEST(ViewFont, LaysTextOutFromLeftToRightWithTabStopsEveryEightSpaces)
{
    const auto font = test::proportional();
    const QTextOption option = font->textOption(QTextOption::NoWrap);
    EXPECT_EQ(Qt::LeftToRight, option.textDirection());
    EXPECT_EQ(QTextOption::NoWrap, option.wrapMode());
    EXPECT_DOUBLE_EQ(8 * font->spaceWidth(), option.tabStopDistance());
}

} // namespace
} // namespace zephyr::console::qt
