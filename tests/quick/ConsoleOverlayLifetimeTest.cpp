#include "quick/Scene.h"
#include "support/ScriptedCommand.h"

#include <QPointer>

namespace zephyr::test {
namespace {

class ConsoleOverlayLifetime : public Scene
{
protected:
    /// Whether the lower right corner of a window is darker than its white background.
    static bool isDark(QQuickWindow& shown)
    {
        const QImage picture = shown.grabWindow();
        return picture.pixelColor(picture.width() - 2, picture.height() - 2).lightness() < 128;
    }
};

TEST_F(ConsoleOverlayLifetime, GoesOnInAnotherWindow)
{
    show("ConsoleOverlay { objectName: 'overlay'; open: true }");
    ASSERT_TRUE(isDark(window));
    QQuickItem& moved = overlay();
    QQuickWindow other;
    other.setColor(Qt::white);
    other.resize(200, 100);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    moved.setParentItem(other.contentItem());
    EXPECT_TRUE(isDark(other));
    EXPECT_FALSE(isDark(window));
    EXPECT_EQ(QSizeF(200, 100), moved.size());

    moved.setParentItem(nullptr); // in no window
    moved.setParentItem(window.contentItem());
    EXPECT_TRUE(isDark(window));
}

TEST_F(ConsoleOverlayLifetime, IsMadeAnewByALoader)
{
    show("Loader { objectName: 'loader'; anchors.fill: parent\n"
         "sourceComponent: ConsoleOverlay { open: true; Command { name: 'pause' } } }");
    const QPointer<QQuickItem> first = find("loader").property("item").value<QQuickItem*>();
    ASSERT_TRUE(isDark(window));
    find("loader").setProperty("active", false);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull());
    EXPECT_FALSE(isDark(window));
    find("loader").setProperty("active", true);
    EXPECT_TRUE(isDark(window));
    EXPECT_NE(nullptr,
              consoleOf(*find("loader").property("item").value<QQuickItem*>()).lookupCommand(U"pause"));
}

TEST_F(ConsoleOverlayLifetime, EndsWithItsParent)
{
    show("ConsoleOverlay { objectName: 'overlay'; open: true }");
    const std::weak_ptr<Console> console = overlay().property("console").value<ConsoleHandle*>()->console();
    ASSERT_TRUE(isDark(window));
    root.reset();
    EXPECT_TRUE(console.expired());
    EXPECT_FALSE(isDark(window));
}

TEST_F(ConsoleOverlayLifetime, EndsBeforeTheLineThatItExecutesReturns)
{
    show("ConsoleOverlay { objectName: 'overlay' }");
    bool isRun = false;
    addCommand(console(), U"end").onExecute = [&](const console::ConsoleArgs&, Console& running) {
        root.reset();
        running.write("still there", console::Output);
        isRun = true;
        throw std::runtime_error("nobody hears");
    };
    QMetaObject::invokeMethod(&overlay(), "execute", Q_ARG(QString, "end"));
    EXPECT_TRUE(isRun);
}

TEST_F(ConsoleOverlayLifetime, LivesInAWindowOfQml)
{
    const std::unique_ptr<QObject> made = make("Window { width: 200; height: 100; visible: true; "
                                               "ConsoleOverlay { objectName: 'overlay'; open: true } }");
    auto& qmlWindow = *qobject_cast<QQuickWindow*>(made.get());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&qmlWindow));
    EXPECT_EQ(QSizeF(200, 100), made->findChild<QQuickItem*>("overlay")->size());
    EXPECT_TRUE(isDark(qmlWindow));
    qmlWindow.resize(300, 150);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return made->findChild<QQuickItem*>("overlay")->size() == QSizeF(300, 150); }));
}

} // namespace
} // namespace zephyr::test
