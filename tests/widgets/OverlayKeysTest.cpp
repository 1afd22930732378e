#include "support/ConsoleDriver.h"
#include "widgets/HostWindows.h"
#include "widgets/SeenWindow.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

using console::widgets::ConsoleOverlay;

// Keys are sent to the window, as the platform does. Qt passes them on to the widget that has the focus.

std::string inputOf(ConsoleOverlay& overlay)
{
    return StringUtil::toString(overlay.console()->activeInput());
}

void press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(widget.window()->windowHandle(), key, modifiers);
}

void turnWheelDown(QWidget& window, QPoint place)
{
    QWheelEvent event(place, window.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window.windowHandle(), &event);
}

class OverlayKeysOn : public testing::TestWithParam<HostKind>
{
protected:
    OverlayKeysOn() { overlay->host().setPlain(true); }

    HostWindow host = GetParam().make();
    ConsoleOverlay* const overlay = new ConsoleOverlay(host.over);
};

TEST_P(OverlayKeysOn, OpenTypeAndCloseAndLeaveTheFocusAlone)
{
    const QImage before = showSettled(*host.window);
    QWidget* const focused = QApplication::focusWidget();
    press(*host.window, Qt::Key_QuoteLeft);
    EXPECT_TRUE(overlay->isVisible());
    for (const Qt::Key key : {Qt::Key_H, Qt::Key_E, Qt::Key_Tab, Qt::Key_Space, Qt::Key_X}) {
        press(*host.window, key);
    }
    console::Console expected;
    expected.open();
    ConsoleDriver typist(expected);
    typist.type("he");
    typist.press(Qt::Key_Tab);
    typist.type(" x");
    EXPECT_EQ(typist.input(), inputOf(*overlay));
    EXPECT_EQ(focused, QApplication::focusWidget());
    EXPECT_TRUE(showsConsole(*host.over, *overlay->console(), before));
    press(*host.window, Qt::Key_QuoteLeft);
    EXPECT_TRUE(overlay->isHidden());
    EXPECT_EQ(focused, QApplication::focusWidget());
    EXPECT_TRUE(shows(*host.window, before));
}

INSTANTIATE_TEST_SUITE_P(, OverlayKeysOn, testing::ValuesIn(hostKinds()),
                         [](const auto& instance) { return std::string(instance.param.name); });

/// An editor's window, as makeMainWindow() makes it.
class OverlayOnEditor : public testing::Test
{
protected:
    OverlayOnEditor()
    {
        overlay->host().setPlain(true);
        window->resize(480, 320);
        showSettled(*window);
    }

    std::unique_ptr<QWidget> window = makeMainWindow();
    QPlainTextEdit& editor = *window->findChild<QPlainTextEdit*>();
    ConsoleOverlay* const overlay = new ConsoleOverlay(window.get());
};

TEST_F(OverlayOnEditor, LeavesTextAndUndoStackAlone)
{
    press(*window, Qt::Key_A);
    press(*window, Qt::Key_QuoteLeft);
    press(*window, Qt::Key_B);
    press(*window, Qt::Key_Return);
    press(*window, Qt::Key_Backspace);
    press(*window, Qt::Key_QuoteLeft);
    EXPECT_EQ("atext", editor.toPlainText());
    EXPECT_TRUE(editor.hasFocus());
    press(*window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ("text", editor.toPlainText());
    press(*window, Qt::Key_C);
    EXPECT_EQ("ctext", editor.toPlainText());
}

TEST_F(OverlayOnEditor, LeavesTheProgramsShortcutsAlone)
{
    QAction* save = window->findChild<QMenu*>()->actions().first();
    save->setShortcut(QKeySequence("Ctrl+S"));
    QShortcut letter(QKeySequence("B"), window.get());
    const QSignalSpy saved(save, &QAction::triggered);
    const QSignalSpy lettered(&letter, &QShortcut::activated);
    press(*window, Qt::Key_QuoteLeft);
    press(*window, Qt::Key_S, Qt::ControlModifier);
    press(*window, Qt::Key_B);
    EXPECT_EQ(1, saved.size());
    EXPECT_EQ(0, lettered.size());
    EXPECT_EQ("b", inputOf(*overlay));
}

TEST_F(OverlayOnEditor, TakesTheWheelOnlyWhileOpen)
{
    editor.setPlainText(QString("line\n").repeated(100));
    for (int i = 0; i < 60; ++i) {
        overlay->console()->write(U"a line of the log", console::Output);
    }
    const QPoint place = editor.mapTo(window.get(), editor.rect().center());
    const auto turn = [&] {
        turnWheelDown(*window, place);
        return editor.verticalScrollBar()->value();
    };
    press(*window, Qt::Key_QuoteLeft);
    EXPECT_EQ(0, turn());
    press(*window, Qt::Key_QuoteLeft);
    EXPECT_LT(0, turn());
}

TEST(OverlayKeys, DoNotTurnTheSceneOfAGraphicsView)
{
    QGraphicsScene scene(0, 0, 2000, 2000);
    QGraphicsView view(&scene);
    view.resize(400, 300);
    ConsoleOverlay overlay(&view);
    showSettled(view);
    const int before = view.verticalScrollBar()->value();
    press(view, Qt::Key_QuoteLeft);
    turnWheelDown(view, {100, 100});
    press(view, Qt::Key_Down);
    EXPECT_EQ(before, view.verticalScrollBar()->value());
    press(view, Qt::Key_QuoteLeft);
    press(view, Qt::Key_Down);
    EXPECT_LT(before, view.verticalScrollBar()->value());
}

TEST(OverlayKeys, OpenTheConsoleOfAnUndockedDockWidget)
{
    QMainWindow window;
    window.resize(400, 300);
    auto* dock = new QDockWidget("dock", &window);
    auto* picture = new QWidget;
    picture->setMinimumSize(200, 150);
    dock->setWidget(picture);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    auto* editor = new QPlainTextEdit;
    window.setCentralWidget(editor);
    ConsoleOverlay overlay(picture);
    showSettled(window);
    dock->setFloating(true);
    showSettled(*dock);
    press(*dock, Qt::Key_QuoteLeft);
    press(*dock, Qt::Key_X);
    EXPECT_EQ("x", inputOf(overlay));
    EXPECT_TRUE(overlay.isVisible());
    EXPECT_EQ("", editor->toPlainText());
    press(*dock, Qt::Key_QuoteLeft);
    dock->setFloating(false);
    showSettled(window);
    editor->setFocus();
    press(window, Qt::Key_QuoteLeft);
    press(window, Qt::Key_Y);
    EXPECT_EQ("y", inputOf(overlay));
    EXPECT_EQ("", editor->toPlainText());
}

} // namespace
} // namespace zephyr::test
