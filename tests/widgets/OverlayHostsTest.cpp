#include "widgets/HostWindows.h"
#include "widgets/SeenWindow.h"
#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <map>

namespace zephyr::test {
namespace {

using console::widgets::ConsoleOverlay;

/// The console over each kind of window, with enough lines to reach the lower edge.
class OverlayOn : public testing::TestWithParam<HostKind>
{
protected:
    OverlayOn()
    {
        overlay->host().setPlain(true);
        for (int i = 0; i < 60; ++i) {
            overlay->console()->write(U"a line of the log", console::Output);
        }
    }

    void setOpen(bool open) { overlay->host().setOpen(open); }

    testing::AssertionResult showsConsoleOver(const QImage& before) const
    {
        return showsConsole(*host.over, *overlay->console(), before);
    }

    HostWindow host = GetParam().make();
    ConsoleOverlay* const overlay = new ConsoleOverlay(host.over);
};

/// Counts the events that an object gets.
class EventCount : public QObject
{
public:
    explicit EventCount(QObject& watched) { watched.installEventFilter(this); }

    std::map<QEvent::Type, int> counts;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        ++counts[event->type()];
        return false;
    }
};

/// All of the widgets in the order in which Tab reaches them.
std::vector<QWidget*> tabOrder(QWidget& window)
{
    std::vector<QWidget*> order;
    for (QWidget* w = window.nextInFocusChain(); w != &window; w = w->nextInFocusChain()) {
        if ((w->focusPolicy() & Qt::TabFocus) != 0 && w->isVisible()) {
            order.push_back(w);
        }
    }
    return order;
}

TEST_P(OverlayOn, CoversTheWidgetWhileOpenAndLeavesNoTrace)
{
    const QImage before = showSettled(*host.window);
    QWidget* const focused = QApplication::focusWidget();
    setOpen(true);
    EXPECT_TRUE(showsConsoleOver(before));
    EXPECT_EQ(focused, QApplication::focusWidget());
    setOpen(false);
    EXPECT_TRUE(shows(*host.window, before));
    EXPECT_EQ(focused, QApplication::focusWidget());
}

TEST_P(OverlayOn, ChangesNoPixelWhileClosed)
{
    const QImage with = showSettled(*host.window);
    HostWindow plain = GetParam().make();
    host.window->hide();
    EXPECT_EQ(showSettled(*plain.window), with);
}

TEST_P(OverlayOn, OpensBeforeTheWindowIsShown)
{
    HostWindow plain = GetParam().make();
    const QImage before = showSettled(*plain.window);
    plain.window->hide();
    setOpen(true);
    showSettled(*host.window);
    EXPECT_TRUE(showsConsoleOver(before));
}

TEST_P(OverlayOn, FollowsTheSizeOfTheWidget)
{
    const QSize other(600, 420);
    showSettled(*host.window);
    host.window->resize(other);
    const QImage before = showSettled(*host.window);
    setOpen(true);
    EXPECT_TRUE(showsConsoleOver(before));
    host.window->resize(other - QSize(90, 60));
    showSettled(*host.window);
    host.window->resize(other);
    EXPECT_TRUE(showsConsoleOver(before));
    EXPECT_EQ(host.over->size(), overlay->size());
}

TEST_P(OverlayOn, StaysAboveChildrenThatAreAddedOrRaisedLater)
{
    showSettled(*host.window);
    setOpen(true);
    auto* added = new QLabel("added later", host.over);
    added->setAutoFillBackground(true);
    added->setGeometry(30, 30, 200, 60);
    added->show();
    auto* raised = new QLabel("raised later", host.over);
    raised->setAutoFillBackground(true);
    raised->setGeometry(60, 60, 200, 60);
    raised->show();
    added->raise();
    overlay->lower();
    setOpen(false);
    const QImage before = showSettled(*host.window);
    setOpen(true);
    EXPECT_TRUE(showsConsoleOver(before));
    raised->raise();
    added->raise();
    overlay->lower();
    EXPECT_TRUE(showsConsoleOver(before));
}

TEST_P(OverlayOn, LetsTheMouseAndTheTabKeyPass)
{
    showSettled(*host.window);
    const std::vector<QWidget*> order = tabOrder(*host.window);
    const auto under = [&](QPoint place) { return host.window->childAt(place); };
    QWidget* const before = under(host.window->rect().center());
    setOpen(true);
    EXPECT_EQ(before, under(host.window->rect().center()));
    EXPECT_EQ(order, tabOrder(*host.window));
    EXPECT_EQ(Qt::NoFocus, overlay->focusPolicy());
}

TEST_P(OverlayOn, GetsNoEventWhileClosed)
{
    showSettled(*host.window);
    setOpen(true);
    setOpen(false);
    showSettled(*host.window);
    const EventCount events(*overlay);
    host.window->resize(host.window->size() + QSize(40, 40));
    auto* added = new QLabel("added", host.over);
    added->raise();
    overlay->console()->write(U"a line", console::Output);
    host.window->update();
    QTest::mouseClick(host.window.get(), Qt::LeftButton, {}, {100, 100});
    showSettled(*host.window);
    EXPECT_TRUE(events.counts.empty());
    EXPECT_FALSE(overlay->isVisible());
    EXPECT_TRUE(overlay->isHidden());
}

TEST_P(OverlayOn, StaysHiddenWhenTheProgramShowsAllChildren)
{
    const QImage before = showSettled(*host.window);
    overlay->show();
    EXPECT_FALSE(overlay->isVisible());
    EXPECT_TRUE(shows(*host.window, before));
}

TEST_P(OverlayOn, SurvivesHidingShowingAndAnotherParent)
{
    const QImage before = showSettled(*host.window);
    setOpen(true);
    host.over->hide();
    ASSERT_TRUE(QTest::qWaitFor([&] { return host.window->isVisible() || !host.window->isActiveWindow(); }));
    host.over->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(host.window.get()));
    EXPECT_TRUE(overlay->isVisible());
    setOpen(false);
    const QImage again = showSettled(*host.window); // Qt may have given the focus to another widget
    setOpen(true);
    EXPECT_TRUE(showsConsoleOver(again));

    QWidget other;
    other.resize(500, 400);
    auto* layout = new QVBoxLayout(&other);
    QWidget* const moved = host.window.release();
    moved->setParent(&other);
    layout->addWidget(moved);
    moved->show();
    setOpen(false);
    const QImage inOther = showSettled(other);
    setOpen(true);
    EXPECT_TRUE(showsConsoleOver(inOther));

    layout->removeWidget(moved);
    moved->setParent(nullptr);
    host.window.reset(moved);
    moved->resize(before.size() / before.devicePixelRatio());
    setOpen(false);
    const QImage alone = showSettled(*moved);
    setOpen(true);
    EXPECT_TRUE(showsConsoleOver(alone));
}

TEST_P(OverlayOn, GoesWithItsWidget)
{
    setOpen(true);
    showSettled(*host.window);
    bool isDestroyed = false;
    QObject::connect(overlay, &QObject::destroyed, [&] { isDestroyed = true; });
    host.window.reset();
    EXPECT_TRUE(isDestroyed);
}

TEST_P(OverlayOn, CanGoBeforeItsWidget)
{
    const QImage before = showSettled(*host.window);
    setOpen(true);
    const std::shared_ptr<console::Console> console = overlay->console();
    EXPECT_TRUE(showsConsole(*host.over, *console, before));
    delete overlay;
    EXPECT_TRUE(shows(*host.window, before));
    EXPECT_TRUE(console->isOpen());
}

INSTANTIATE_TEST_SUITE_P(, OverlayOn, testing::ValuesIn(hostKinds()),
                         [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace zephyr::test
