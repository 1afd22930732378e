#include "quick/Scene.h"

#include <QWheelEvent>

namespace zephyr::test {
namespace {

using Lines = std::vector<std::string>;

/// An overlay over things that take the mouse and the keys.
class ConsoleOverlayInput : public Scene
{
protected:
    void showOver(const QByteArray& below, const QByteArray& overlayProperties = {})
    {
        show(below + "\nConsoleOverlay { objectName: 'overlay'; " + overlayProperties + " }");
    }

    void showOverEditor()
    {
        showOver("TextInput { objectName: 'editor'; anchors.fill: parent; focus: true }");
        ASSERT_TRUE(find("editor").hasActiveFocus());
    }

    void showOverMouseArea(const QByteArray& overlayProperties = {})
    {
        showOver("MouseArea { objectName: 'area'; anchors.fill: parent; hoverEnabled: true\n"
                 "property int clicks: 0; onClicked: ++clicks; property int wheels: 0; onWheel: ++wheels }",
                 overlayProperties);
    }

    void click()
    {
        QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, kMiddle);
        QTest::qWait(0);
    }

    void turnWheel()
    {
        QWheelEvent event(kMiddle, kMiddle, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&window, &event);
    }

    int countOf(const char* property) { return find("area").property(property).toInt(); }
    std::string editorText() { return find("editor").property("text").toString().toStdString(); }

    static constexpr QPoint kMiddle{160, 100};
};

TEST_F(ConsoleOverlayInput, LetsKeysThroughWhileItIsClosed)
{
    showOverEditor();
    type("abc");
    EXPECT_EQ("abc", editorText());
    EXPECT_EQ(U"", console().activeInput());
}

TEST_F(ConsoleOverlayInput, OpensFromTheFocusOfAnyItemAndGivesTheKeysBack)
{
    showOverEditor();
    type("ab");
    pressToggle();
    EXPECT_TRUE(console().isOpen());
    type("hidden");
    EXPECT_EQ("ab", editorText());
    EXPECT_EQ(U"hidden", console().activeInput());
    EXPECT_TRUE(find("editor").hasActiveFocus());
    EXPECT_FALSE(overlay().hasFocus());

    pressToggle();
    EXPECT_FALSE(console().isOpen());
    EXPECT_TRUE(find("editor").hasActiveFocus());
    type("c");
    EXPECT_EQ("abc", editorText());
}

TEST_F(ConsoleOverlayInput, RunsTheLineThatIsTyped)
{
    showOver("Item { focus: true }");
    pressToggle();
    type("alias x help\n");
    EXPECT_NE(nullptr, console().lookupAlias(U"x"));
}

TEST_F(ConsoleOverlayInput, LetsTheMouseThroughWhileItIsClosed)
{
    showOverMouseArea();
    click();
    turnWheel();
    QTest::mouseMove(&window, kMiddle);
    EXPECT_EQ(1, countOf("clicks"));
    EXPECT_EQ(1, countOf("wheels"));
    EXPECT_TRUE(find("area").property("containsMouse").toBool());
}

TEST_F(ConsoleOverlayInput, KeepsTheMouseWhileItIsOpen)
{
    showOverMouseArea();
    open();
    click();
    turnWheel();
    QTest::mouseMove(&window, kMiddle + QPoint(5, 5));
    EXPECT_EQ(0, countOf("clicks"));
    EXPECT_EQ(0, countOf("wheels"));
    EXPECT_FALSE(find("area").property("containsMouse").toBool());

    overlay().setProperty("open", false);
    click();
    EXPECT_EQ(1, countOf("clicks"));
}

TEST_F(ConsoleOverlayInput, KeepsTheMouseFromHandlersToo)
{
    showOver("Item { objectName: 'area'; anchors.fill: parent; property int taps: 0\n"
             "TapHandler { onTapped: ++parent.taps } }");
    click();
    EXPECT_EQ(1, countOf("taps"));
    open();
    click();
    EXPECT_EQ(1, countOf("taps"));
}

TEST_F(ConsoleOverlayInput, LetsTheMouseThroughWhileItIsOpenIfAsked)
{
    showOverMouseArea("takesMouse: false; open: true");
    click();
    EXPECT_EQ(1, countOf("clicks"));
    overlay().setProperty("takesMouse", true);
    click();
    EXPECT_EQ(1, countOf("clicks"));
}

TEST_F(ConsoleOverlayInput, LetsTheMouseThroughBesideIt)
{
    showOverMouseArea("height: 50; open: true");
    click();
    EXPECT_EQ(1, countOf("clicks"));
}

TEST_F(ConsoleOverlayInput, ScrollsTheLogByTheWheel)
{
    showOverMouseArea("plain: true; open: true");
    for (int i = 0; i < 60; ++i) {
        console().write("a line", console::Output);
    }
    turnWheel();
    EXPECT_EQ(2, console().snapshot().scrollOffset());
}

} // namespace
} // namespace zephyr::test
