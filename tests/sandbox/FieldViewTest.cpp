#include "sandbox/picture/FieldView.h"

#include "sandbox/simulation/Field.h"

#include <QPointF>
#include <QSize>

#include <gtest/gtest.h>

namespace zephyr::sandbox {
namespace {

TEST(FieldView, CoversAWindowOfItsShape)
{
    const FieldView view(QSize(1280, 720)); // 8 pixels a metre

    EXPECT_EQ(glm::dvec2(0.0, 0.0), view.placeAt(QPointF(0.0, 0.0)));
    EXPECT_EQ(glm::dvec2(160.0, 90.0), view.placeAt(QPointF(1280.0, 720.0)));
    EXPECT_EQ(QPointF(80.0, 40.0), view.toPixels().map(QPointF(10.0, 5.0)));
}

TEST(FieldView, IsCutOffEvenlyInOtherWindows)
{
    EXPECT_EQ(glm::dvec2(35.0, 0.0), FieldView(QSize(720, 720)).placeAt(QPointF(0.0, 0.0)));
    EXPECT_EQ(glm::dvec2(0.0, 25.0), FieldView(QSize(1600, 400)).placeAt(QPointF(0.0, 0.0)));
}

TEST(FieldView, MapsAPlaceBackToItsPixel)
{
    const FieldView view(QSize(333, 777));
    const glm::dvec2 place = view.placeAt(QPointF(12.5, 700.0));
    const QPointF pixel = view.toPixels().map(QPointF(place.x, place.y));

    EXPECT_NEAR(12.5, pixel.x(), 1e-9);
    EXPECT_NEAR(700.0, pixel.y(), 1e-9);
}

TEST(FieldView, SurvivesAWindowWithoutAnArea)
{
    EXPECT_EQ(glm::dvec2(0.0, 0.0), FieldView(QSize(0, 0)).placeAt(QPointF(5.0, 5.0)));
}

TEST(Field, JoinsOppositeEdges)
{
    EXPECT_EQ(glm::dvec2(0.0, 0.0), wrapped({160.0, 90.0}));
    EXPECT_EQ(glm::dvec2(159.0, 1.0), wrapped({-1.0, 91.0}));
    EXPECT_EQ(glm::dvec2(0.0, 0.0), wrapped({-1e-20, -1e-20}));
    EXPECT_EQ(glm::dvec2(-2.0, 2.0), shortestWay({1.0, 89.0}, {159.0, 1.0}));
}

} // namespace
} // namespace zephyr::sandbox
