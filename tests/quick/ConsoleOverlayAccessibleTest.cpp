// What assistive technology finds of a console over a scene.

#include "quick/Scene.h"
#include "support/AccessibleEvents.h"

#include <QAccessible>

namespace zephyr::test {
namespace {

class ConsoleOverlayAccessible : public Scene
{
protected:
    QAccessibleInterface* inWindow() { return QAccessible::queryAccessibleInterface(&window); }
    QAccessibleInterface* terminal() { return terminalBelow(inWindow()); }
};

TEST_F(ConsoleOverlayAccessible, IsInTheTreeOfItsWindow)
{
    show("ConsoleOverlay { objectName: 'overlay' }");
    ASSERT_NE(nullptr, terminal());
    EXPECT_TRUE(terminal()->state().invisible);
    open();
    QAccessibleInterface* const pane = terminal()->parent();
    EXPECT_EQ(QAccessible::Pane, pane->role());
    EXPECT_EQ(&overlay(), pane->object());
    EXPECT_EQ(inWindow(), pane->parent());
    EXPECT_EQ(0, inWindow()->indexOfChild(pane));
    EXPECT_EQ(&window, terminal()->window());
    EXPECT_EQ(QRect(window.mapToGlobal(QPoint()), window.size()), terminal()->rect());
    EXPECT_TRUE(terminal()->state().focused);
    EXPECT_TRUE(warnings.empty());
}

TEST_F(ConsoleOverlayAccessible, IsBelowTheItemAroundItThatIsAccessible)
{
    show("Item { Accessible.role: Accessible.Pane; Accessible.name: 'around'; anchors.fill: parent;"
         "  Item { anchors.fill: parent; ConsoleOverlay { objectName: 'overlay' } } }");
    ASSERT_NE(nullptr, terminal());
    EXPECT_EQ("around", terminal()->parent()->parent()->text(QAccessible::Name));
}

TEST_F(ConsoleOverlayAccessible, TellsWhatIsTypedAndAnswered)
{
    AccessibleEvents events;
    show("TextInput { focus: true; Accessible.name: 'editor'; Accessible.role: Accessible.EditableText }"
         "ConsoleOverlay { objectName: 'overlay'; Command { name: 'say'; onRun: (args, answer) => "
         "answer.write('Hi.') } }");
    pressToggle();
    EXPECT_TRUE(events.has("focus Console"));
    type("say");
    const int before = terminal()->textInterface()->cursorPosition();
    EXPECT_TRUE(events.has("cursor " + std::to_string(before)));
    type("\n");
    const QString text = terminal()->textInterface()->text(0, -1);
    EXPECT_TRUE(text.endsWith(">> say\n    Hi.\n\n>> ")) << text.toStdString();
    const qsizetype answer = text.indexOf(">> say");
    EXPECT_TRUE(events.has("insert " + std::to_string(answer) + " >> say\n    Hi.\n\n"));
    events.take();
    pressToggle();
    EXPECT_TRUE(events.has("focus editor"));
}

TEST_F(ConsoleOverlayAccessible, KnowsWhereItsCharactersAre)
{
    show("ConsoleOverlay { objectName: 'overlay'; x: 20; y: 10; width: 200; height: 150 }");
    open();
    console().write(U"abc", console::Output);
    picture();
    QAccessibleTextInterface& text = *terminal()->textInterface();
    const auto offset = static_cast<int>(text.text(0, -1).indexOf("abc")) + 1;
    const QRect b = text.characterRect(offset);
    EXPECT_EQ(QRect(window.mapToGlobal(QPoint(20, 10)), QSize(200, 150)), terminal()->rect());
    EXPECT_TRUE(terminal()->rect().contains(b));
    EXPECT_EQ(offset, text.offsetAtPoint(b.center()));
}

TEST_F(ConsoleOverlayAccessible, FollowsAnotherConsole)
{
    show("ConsoleOverlay { objectName: 'overlay' }");
    ConsoleHandle other;
    ASSERT_TRUE(overlay().setProperty("console", QVariant::fromValue(&other)));
    open();
    other.console()->write(U"of the other", console::Output);
    EXPECT_TRUE(terminal()->textInterface()->text(0, -1).contains("of the other"));
    EXPECT_EQ(1, terminal()->parent()->childCount());
    overlay().setProperty("console", QVariant::fromValue<ConsoleHandle*>(nullptr));
}

} // namespace
} // namespace zephyr::test
