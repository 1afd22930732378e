#include "qt/HostedConsole.h"
#include "qt/NearPixels.h"
#include "support/AssertRecorder.h"
#include "support/PlainRenderer.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPaintDevice>
#include <QPainter>

#include <functional>
#include <vector>

namespace zephyr::test {
namespace {

// Qt fills large images on its thread pool. The images here are low enough for one thread.
const QColor kBehind(40, 80, 120);

QImage canvas(QSize pixels, double ratio = 1.0)
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(kBehind);
    return image;
}

/// An image whose metrics anybody may read.
class MeasuredImage : public QImage
{
public:
    explicit MeasuredImage(const QImage& image) : QImage(image) {}

    using QImage::metric;
};

/// A device that behaves as a window does: it gives its size in logical pixels, each `ratio` of its own pixels wide.
class WindowLikeDevice : public QObject, public QPaintDevice
{
public:
    WindowLikeDevice(QSize logicalSize, double ratio)
        : size(logicalSize), image(canvas(logicalSize * ratio, ratio))
    {}

    QSize size;
    MeasuredImage image;

    QPaintEngine* paintEngine() const override { return image.paintEngine(); }

protected:
    int metric(PaintDeviceMetric what) const override
    {
        switch (what) {
        case PdmWidth: return size.width();
        case PdmHeight: return size.height();
        default: return image.metric(what);
        }
    }

    QPaintDevice* redirected(QPoint*) const override { return const_cast<MeasuredImage*>(&image); }
};

class ConsoleHostPaint : public HostedConsole
{
protected:
    ConsoleHostPaint()
    {
        host.setPlain(true);
        console->write(U"a line of text", console::Output);
        console->write(U"second line", console::Output);
    }

    /// A canvas with the console drawn on it by a plain renderer.
    QImage expected(QSize pixels, double ratio = 1.0) const
    {
        QImage image = canvas(pixels, ratio);
        QPainter painter(&image);
        PlainRenderer().render(0.0, console->snapshot(), painter);
        return image;
    }

    QImage painted(QSize pixels, double ratio = 1.0)
    {
        QImage image = canvas(pixels, ratio);
        QPainter painter(&image);
        host.paint(painter);
        return image;
    }
};

TEST_F(ConsoleHostPaint, DrawsNothingWhileTheConsoleIsClosed)
{
    EXPECT_EQ(canvas({160, 45}), painted({160, 45}));
    open();
    host.setOpen(false);
    EXPECT_EQ(canvas({160, 45}), painted({160, 45}));
}

TEST_F(ConsoleHostPaint, DrawsTheConsoleWhileItIsOpen)
{
    open();
    EXPECT_EQ(expected({160, 45}), painted({160, 45}));
    type("typed");
    EXPECT_EQ(expected({160, 45}), painted({160, 45}));
    type("\n");
    EXPECT_EQ(expected({160, 45}), painted({160, 45}));
}

TEST_F(ConsoleHostPaint, DrawsLinesThatNoEventAnnounced)
{
    open();
    painted({160, 45});
    console->write(U"a line from elsewhere", console::Output);
    EXPECT_EQ(expected({160, 45}), painted({160, 45}));
}

TEST_F(ConsoleHostPaint, LeavesThePainterAsItWas)
{
    open();
    QImage image = canvas({160, 45});
    QPainter painter(&image);
    painter.setPen(QPen(Qt::red, 3));
    painter.setFont(QFont("Serif", 22));
    painter.setBrush(Qt::blue);
    painter.translate(3, 4);
    painter.setClipRect(10, 10, 50, 50);
    painter.setOpacity(0.5);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    const QTransform transform = painter.transform();
    const QPainter::RenderHints hints = painter.renderHints();

    host.paint(painter);
    EXPECT_EQ(QPen(Qt::red, 3), painter.pen());
    EXPECT_EQ(QFont("Serif", 22), painter.font());
    EXPECT_EQ(QBrush(Qt::blue), painter.brush());
    EXPECT_EQ(transform, painter.transform());
    EXPECT_EQ(QRectF(10, 10, 50, 50), painter.clipBoundingRect());
    EXPECT_EQ(0.5, painter.opacity());
    EXPECT_EQ(hints, painter.renderHints());
}

/// Hosts leave such state in a painter that they have used.
TEST_F(ConsoleHostPaint, LooksTheSameWhateverThePainterWasUsedForBefore)
{
    const std::vector<std::function<void(QPainter&)>> leftovers = {
        [](QPainter& painter) { painter.setPen(Qt::NoPen); },
        [](QPainter& painter) { painter.setPen(QPen(Qt::red, 5, Qt::DotLine)); },
        [](QPainter& painter) { painter.setOpacity(0.3); },
        [](QPainter& painter) { painter.setCompositionMode(QPainter::CompositionMode_Xor); },
        [](QPainter& painter) { painter.setLayoutDirection(Qt::RightToLeft); },
        [](QPainter& painter) { painter.setBackgroundMode(Qt::OpaqueMode); },
        [](QPainter& painter) { painter.setBrush(Qt::red); },
        [](QPainter& painter) { painter.setFont(QFont("Serif", 30)); },
        [](QPainter& painter) { painter.setRenderHint(QPainter::Antialiasing); },
    };
    open();
    type("typed");
    for (std::size_t i = 0; i < leftovers.size(); ++i) {
        QImage image = canvas({160, 45}, 1.0);
        QPainter painter(&image);
        leftovers[i](painter);
        host.paint(painter);
        painter.end();
        EXPECT_EQ(expected({160, 45}), image) << "leftover " << i;
    }
}

TEST_F(ConsoleHostPaint, StaysWithinTheClip)
{
    open();
    QImage image = canvas({160, 45}, 1.0);
    QPainter painter(&image);
    painter.setClipRect(0, 0, 80, 45);
    host.paint(painter);
    painter.end();
    const QRect right(80, 0, 80, 45);
    EXPECT_EQ(canvas({160, 45}, 1.0).copy(right), image.copy(right));
    EXPECT_EQ(expected({160, 45}).copy(0, 0, 80, 45), image.copy(0, 0, 80, 45));
}

TEST_F(ConsoleHostPaint, IgnoresAPainterThatPaintsNowhere)
{
    open();
    QPainter painter;
    host.paint(painter);
    EXPECT_FALSE(painter.isActive());
}

TEST_F(ConsoleHostPaint, MeasuresTheTimeBetweenFramesItself)
{
    open();
    const QImage shown = painted({160, 45});
    QImage hidden = canvas({160, 45});
    {
        QPainter painter(&hidden);
        PlainRenderer renderer;
        renderer.render(1.0 / console->cursorBlinkRate(), console->snapshot(), painter);
    }
    ASSERT_NE(shown, hidden);
    EXPECT_TRUE(QTest::qWaitFor([&] { return painted({160, 45}) == hidden; }, 60000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return painted({160, 45}) == shown; }, 60000));
}

TEST_F(ConsoleHostPaint, DoesNotCountTheTimeWhileTheConsoleWasClosed)
{
    QElapsedTimer clock;
    clock.start();
    open();
    const QImage shown = painted({160, 45});
    host.setOpen(false);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return static_cast<double>(clock.elapsed()) > 1000.0 / console->cursorBlinkRate(); }, 60000));
    open();
    EXPECT_EQ(shown, painted({160, 45}));
}

TEST_F(ConsoleHostPaint, CoversAnImageOfAHigherRatio)
{
    open();
    EXPECT_EQ(expected({320, 90}, 2.0), painted({320, 90}, 2.0));
}

TEST_F(ConsoleHostPaint, CoversAWindowOfAHigherRatio)
{
    open();
    for (int i = 0; i < 40; ++i) {
        console->write(U"filling the window", console::Output);
    }
    for (const double ratio : {1.0, 1.5, 2.0}) {
        WindowLikeDevice device({160, 45}, ratio);
        QPainter painter(&device);
        ASSERT_EQ(&device, painter.device());
        host.paint(painter);
        painter.end();
        EXPECT_TRUE(nearPixels(expected(QSize(160, 45) * ratio, ratio), device.image)) << ratio;
    }
}

/// A scene graph scales an item's painter up to the display's pixels in this way.
TEST_F(ConsoleHostPaint, CoversADeviceWhosePainterIsScaled)
{
    open();
    QImage image = canvas({320, 90});
    QPainter painter(&image);
    painter.scale(2.0, 2.0);
    host.paint(painter);
    painter.end();
    EXPECT_TRUE(nearPixels(expected({320, 90}, 2.0), image));
}

TEST_F(ConsoleHostPaint, CoversADeviceWhosePainterHasAWindowOfItsOwn)
{
    open();
    QImage image = canvas({320, 90});
    QPainter painter(&image);
    painter.setWindow(0, 0, 160, 45);
    host.paint(painter);
    painter.end();
    EXPECT_TRUE(nearPixels(expected({320, 90}, 2.0), image));
}

TEST_F(ConsoleHostPaint, CoversADeviceWhosePainterIsScaledUnequally)
{
    open();
    QImage image = canvas({320, 45});
    QPainter painter(&image);
    painter.scale(2.0, 1.0);
    host.paint(painter);
    painter.end();
    EXPECT_TRUE(nearPixels(expected({320, 45}), image)) << "laid out at the smaller scale, so that all fits";
}

TEST_F(ConsoleHostPaint, IgnoresAWindowOfNoSize)
{
    AssertRecorder asserts;
    open();
    WindowLikeDevice device({160, 45}, 2.0);
    QPainter painter(&device);
    device.size = QSize(0, 0);
    host.paint(painter);
    painter.end();
    EXPECT_EQ(canvas({320, 90}, 2.0), device.image);
    EXPECT_TRUE(asserts.failures().empty());
}

} // namespace
} // namespace zephyr::test
