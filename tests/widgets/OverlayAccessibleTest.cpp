// What assistive technology finds of a console over a widget.

#include "support/AccessibleEvents.h"
#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLineEdit>
#include <QPainter>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace zephyr::test {
namespace {

using console::Console;
using console::qt::ConsoleHost;
using console::widgets::ConsoleOverlay;
using Strings = std::vector<std::string>;

/// A form with an editor that has the focus.
class AnOverlaidForm : public testing::Test
{
protected:
    AnOverlaidForm()
    {
        editor.setAccessibleName("editor");
        form.setLayout(new QVBoxLayout);
        form.layout()->addWidget(&editor);
        form.resize(300, 200);
        form.move(40, 30);
        form.show();
        editor.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    }

    QAccessibleInterface* terminal() { return terminalBelow(QAccessible::queryAccessibleInterface(&form)); }

    QWidget form;
    QLineEdit editor{&form};
    std::shared_ptr<Console> console = std::make_shared<Console>();
};

TEST_F(AnOverlaidForm, HasTheConsoleInItsTree)
{
    ConsoleOverlay overlay(&form, console);
    ASSERT_NE(nullptr, terminal());
    EXPECT_TRUE(terminal()->state().invisible);
    overlay.host().setOpen(true);
    QAccessibleInterface* const around = QAccessible::queryAccessibleInterface(&form);
    QAccessibleInterface* const pane = QAccessible::queryAccessibleInterface(&overlay);
    EXPECT_EQ(around, pane->parent());
    EXPECT_LE(0, around->indexOfChild(pane));
    EXPECT_EQ(pane, terminal()->parent());
    EXPECT_EQ(QAccessible::Pane, pane->role());
    EXPECT_EQ(around->rect(), pane->rect());
    EXPECT_EQ(around->rect(), terminal()->rect());
    EXPECT_EQ(form.windowHandle(), terminal()->window());
    EXPECT_FALSE(terminal()->state().invisible);
    EXPECT_TRUE(terminal()->state().focused);
    EXPECT_EQ(around->window(), pane->window());
}

TEST_F(AnOverlaidForm, HasTheFocusAgainWhenTheConsoleCloses)
{
    AccessibleEvents events;
    const ConsoleOverlay overlay(&form, console);
    QTest::keyClick(&editor, Qt::Key_QuoteLeft);
    EXPECT_TRUE(events.has("focus Console"));
    events.take();
    QTest::keyClick(&editor, Qt::Key_A);
    EXPECT_TRUE(events.has("cursor " + std::to_string(terminal()->textInterface()->cursorPosition())));
    QTest::keyClick(&editor, Qt::Key_QuoteLeft);
    EXPECT_TRUE(events.has("focus editor"));
}

TEST_F(AnOverlaidForm, LeavesTheFocusAtTheOpenConsoleWhenTheWidgetsPassItOn)
{
    QLineEdit other(&form);
    other.setAccessibleName("other");
    other.show();
    ConsoleOverlay overlay(&form, console);
    AccessibleEvents events;
    overlay.host().setOpen(true);
    events.take();
    other.setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return events.has("focus Console"); }));
    const Strings heard = events.take();
    EXPECT_EQ("focus Console", heard.back());
}

TEST_F(AnOverlaidForm, KnowsWhereTheCharactersOfTheOverlayAre)
{
    ConsoleOverlay overlay(&form, console);
    overlay.host().setOpen(true);
    console->write(U"abc", console::Output);
    overlay.grab(); // paints
    QAccessibleTextInterface& text = *terminal()->textInterface();
    const auto offset = static_cast<int>(text.text(0, -1).indexOf("abc")) + 1;
    const QRect b = text.characterRect(offset);
    EXPECT_TRUE(terminal()->rect().contains(b));
    EXPECT_EQ(offset, text.offsetAtPoint(b.center()));
}

TEST_F(AnOverlaidForm, IsHeardAlsoWhereAWidgetPaintsTheConsoleItself)
{
    QWidget picture(&form);
    picture.show();
    AccessibleEvents events;
    ConsoleHost host(console, &picture);
    host.setOpen(true);
    EXPECT_TRUE(events.has("focus Console"));
    EXPECT_NE(nullptr, dynamic_cast<QAccessibleWidget*>(QAccessible::queryAccessibleInterface(&picture)))
        << "the widget may have a tree of its own";
}

TEST_F(AnOverlaidForm, ForgetsAnOverlayThatIsDestroyed)
{
    auto overlay = std::make_unique<ConsoleOverlay>(&form, console);
    overlay->host().setOpen(true);
    ASSERT_NE(nullptr, terminal());
    overlay.reset();
    EXPECT_EQ(nullptr, terminal());
}

} // namespace
} // namespace zephyr::test
