// What assistive technology is told of a console, and what it can ask.

#include "qt/HostedConsole.h"
#include "support/AccessibleEvents.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QImage>
#include <QPainter>

#include <string>
#include <thread>
#include <vector>

namespace zephyr::test {
namespace {

using Strings = std::vector<std::string>;

/// A console on a window that is shown and active.
class AnAccessibleConsole : public HostedConsole
{
protected:
    AnAccessibleConsole()
    {
        window.setTitle("host");
        window.show();
        window.requestActivate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        host.clearView(); // hides the lines of the start
    }

    QAccessibleInterface& pane() { return *QAccessible::queryAccessibleInterface(&window); }
    QAccessibleInterface& accessible() { return *pane().child(0); }
    QAccessibleTextInterface& text() { return *accessible().textInterface(); }
    std::string all() { return text().text(0, -1).toStdString(); }

    void paint()
    {
        QImage frame(window.size(), QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&frame);
        host.paint(painter);
    }
};

TEST_F(AnAccessibleConsole, IsATerminalInItsWindow)
{
    EXPECT_EQ(QAccessible::Window, pane().role());
    EXPECT_EQ("host", pane().text(QAccessible::Name));
    EXPECT_EQ(QRect(window.mapToGlobal(QPoint()), window.size()), pane().rect());
    ASSERT_EQ(1, pane().childCount());
    EXPECT_EQ(QAccessible::Terminal, accessible().role());
    EXPECT_EQ("Console", accessible().text(QAccessible::Name));
    EXPECT_FALSE(accessible().text(QAccessible::Description).isEmpty());
    EXPECT_EQ(&pane(), accessible().parent());
    EXPECT_EQ(0, pane().indexOfChild(&accessible()));
    EXPECT_EQ(&window, accessible().window());
    EXPECT_EQ(QAccessible::Application, pane().parent()->role());
}

TEST_F(AnAccessibleConsole, IsInvisibleAndEmptyWhileClosed)
{
    const auto expectClosed = [&] {
        EXPECT_TRUE(accessible().state().invisible);
        EXPECT_FALSE(accessible().state().focused);
        EXPECT_EQ(0, text().characterCount());
        EXPECT_EQ("", all());
        EXPECT_TRUE(accessible().rect().isEmpty());
        EXPECT_EQ(-1, text().offsetAtPoint(window.mapToGlobal(QPoint(5, 5))));
        EXPECT_EQ(nullptr,
                  pane().childAt(window.mapToGlobal(QPoint(5, 5)).x(), window.mapToGlobal(QPoint(5, 5)).y()));
    };
    expectClosed();
    open();
    EXPECT_FALSE(accessible().state().invisible);
    EXPECT_TRUE(accessible().state().focused);
    EXPECT_TRUE(accessible().state().focusable);
    EXPECT_TRUE(accessible().state().multiLine);
    EXPECT_TRUE(accessible().state().editable);
    EXPECT_FALSE(accessible().state().readOnly);
    EXPECT_EQ(pane().rect(), accessible().rect());
    EXPECT_EQ(&accessible(), pane().focusChild());
    EXPECT_EQ(&accessible(), pane().childAt(pane().rect().center().x(), pane().rect().center().y()));
    host.setOpen(false);
    expectClosed();
}

TEST_F(AnAccessibleConsole, ReadsAsTheLogAndTheInputLine)
{
    open();
    console->write(U"first answer", console::Output);
    console->write(U"second one", console::Output);
    type("he llo");
    const std::string expected = "first answer\nsecond one\n>> he llo";
    EXPECT_EQ(expected, all());
    EXPECT_EQ(static_cast<int>(expected.size()), text().characterCount());
    EXPECT_EQ(static_cast<int>(expected.size()), text().cursorPosition());
    EXPECT_EQ("answer", text().text(6, 12));
    EXPECT_EQ("", text().text(500, 600));
    click(Qt::Key_Home);
    EXPECT_EQ(27, text().cursorPosition());
}

TEST_F(AnAccessibleConsole, IsReadByLinesWordsAndCharacters)
{
    open();
    console->write(U"first answer", console::Output);
    type("two");
    int start = 0;
    int end = 0;
    EXPECT_EQ("first answer\n", text().textAtOffset(3, QAccessible::LineBoundary, &start, &end));
    EXPECT_EQ(0, start);
    EXPECT_EQ(13, end);
    EXPECT_EQ(">> two", text().textAfterOffset(3, QAccessible::LineBoundary, &start, &end));
    EXPECT_EQ(">> two", text().textAtOffset(15, QAccessible::LineBoundary, &start, &end));
    EXPECT_EQ("first answer\n", text().textBeforeOffset(15, QAccessible::LineBoundary, &start, &end));
    EXPECT_EQ("answer", text().textAtOffset(8, QAccessible::WordBoundary, &start, &end));
    EXPECT_EQ(6, start);
    EXPECT_EQ(12, end);
    EXPECT_EQ("n", text().textAtOffset(7, QAccessible::CharBoundary, &start, &end));
}

TEST_F(AnAccessibleConsole, KnowsWhereCharactersAre)
{
    open();
    console->write(U"abc", console::Output);
    console->write(std::u32string(200, U'w'), console::Output); // some rows
    type("xyz");
    paint();
    const QRect a = text().characterRect(0);
    const QRect b = text().characterRect(1);
    const QRect input = text().characterRect(text().characterCount() - 1);
    EXPECT_FALSE(a.isEmpty());
    EXPECT_EQ(a.top(), b.top());
    EXPECT_NEAR(a.right(), b.left(), 1);
    EXPECT_TRUE(accessible().rect().contains(input));
    EXPECT_GT(text().characterRect(203).top(), text().characterRect(4).top()) << "another row of one line";
    for (const int offset : {0, 1, 2, 4, 100, 203, 206, 209}) {
        EXPECT_EQ(offset, text().offsetAtPoint(text().characterRect(offset).center())) << offset;
    }
    EXPECT_EQ(-1, text().offsetAtPoint(accessible().rect().bottomRight() + QPoint(10, 10)));
    EXPECT_TRUE(text().characterRect(-1).isEmpty());
    EXPECT_TRUE(text().characterRect(5000).isEmpty());
}

TEST_F(AnAccessibleConsole, SelectsAndMovesTheCursorForOthers)
{
    open();
    console->write(U"abc", console::Output);
    type("xyz");
    EXPECT_EQ(0, text().selectionCount());
    text().setSelection(0, 1, 3);
    int start = 0;
    int end = 0;
    text().selection(0, &start, &end);
    EXPECT_EQ(1, text().selectionCount());
    EXPECT_EQ(1, start);
    EXPECT_EQ(3, end);
    text().removeSelection(0);
    EXPECT_EQ(0, text().selectionCount());
    text().setCursorPosition(8);
    EXPECT_EQ(1u, console->cursorPosition());
    EXPECT_EQ(8, text().cursorPosition());
    text().setCursorPosition(2);
    EXPECT_EQ(1u, console->cursorPosition()) << "the log has no cursor";
}

TEST_F(AnAccessibleConsole, MayBeEndedByTheReceiverWhenOthersMoveTheCursor)
{
    auto mortal = std::make_unique<ConsoleHost>(console, &window);
    QAccessibleTextInterface& itsText = *pane().child(0)->textInterface();
    open();
    type("xyz");
    QObject::connect(mortal.get(), &ConsoleHost::repaintNeeded, &window, [&] { mortal.reset(); });
    itsText.setCursorPosition(itsText.cursorPosition() - 2);
    EXPECT_FALSE(mortal);
}

TEST_F(AnAccessibleConsole, TellsWhoHasTheFocusWhenItOpensAndCloses)
{
    AccessibleEvents events;
    open();
    EXPECT_EQ((Strings{"show Console", "focus Console", "cursor 3"}), events.take());
    host.setOpen(false);
    EXPECT_EQ((Strings{"hide Console", "focus host"}), events.take());
}

TEST_F(AnAccessibleConsole, TellsNoFocusWhileItsWindowIsInactive)
{
    AccessibleEvents events;
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    events.take();
    open();
    EXPECT_FALSE(events.has("focus Console"));
    EXPECT_FALSE(accessible().state().focused);
    window.requestActivate();
    EXPECT_TRUE(QTest::qWaitFor([&] { return events.has("focus Console"); }));
    EXPECT_TRUE(accessible().state().focused);
}

TEST_F(AnAccessibleConsole, TellsWhatIsTyped)
{
    AccessibleEvents events;
    open();
    events.take();
    type("ab");
    EXPECT_EQ((Strings{"insert 3 a", "cursor 4", "insert 4 b", "cursor 5"}), events.take());
    click(Qt::Key_Left);
    EXPECT_EQ((Strings{"cursor 4"}), events.take());
    click(Qt::Key_Backspace);
    EXPECT_EQ((Strings{"remove 3 a", "cursor 3"}), events.take());
    click(Qt::Key_Shift);
    EXPECT_TRUE(events.take().empty());
}

TEST_F(AnAccessibleConsole, TellsAnAnswerAndTheLineThatItAnswers)
{
    addCommand(*console, U"say").onExecute = [](const console::ConsoleArgs&, Console& answering) {
        answering.writeIndented(U"Hello.", 4);
    };
    AccessibleEvents events;
    open();
    type("say");
    events.take();
    type("\n");
    EXPECT_TRUE(events.has("insert 0 >> say\n    Hello.\n\n"));
    EXPECT_EQ(">> say\n    Hello.\n\n>> ", all());
}

TEST_F(AnAccessibleConsole, TellsWhatAnotherThreadWrites)
{
    AccessibleEvents events;
    open();
    std::thread([&] { console->write(U"from afar", console::Output); }).join();
    EXPECT_TRUE(QTest::qWaitFor([&] { return events.has("insert 0 from afar\n"); }));
}

TEST_F(AnAccessibleConsole, TellsABoundedPartOfAFlood)
{
    AccessibleEvents events;
    open();
    for (int i = 0; i < 100'000; ++i) {
        console->write(U"a line of a flood", console::Output);
    }
    console->write(U"the last line", console::Output);
    ASSERT_TRUE(QTest::qWaitFor([&] { return events.insertedUnits() > 0; }));
    EXPECT_LE(events.insertedUnits(), 2048u);
    EXPECT_NE(std::string::npos, all().find("the last line\n>> "));
}

TEST_F(AnAccessibleConsole, HasTheFindBarInItsText)
{
    AccessibleEvents events;
    open();
    click(Qt::Key_F, Qt::ControlModifier);
    events.take();
    type("q");
    const std::string all = this->all();
    const std::size_t bar = all.find('\n');
    ASSERT_NE(std::string::npos, bar);
    EXPECT_EQ('q', all.at(static_cast<std::size_t>(text().cursorPosition()) - 1)) << all;
    EXPECT_GT(text().cursorPosition(), static_cast<int>(bar));
}

TEST_F(AnAccessibleConsole, TellsNothingUnlessSomebodyListens)
{
    AccessibleEvents events(false);
    open();
    type("ab\n");
    host.setOpen(false);
    EXPECT_EQ(Strings(), events.take());
    events.setListening(true);
    open();
    EXPECT_TRUE(events.has("focus Console"));
}

TEST_F(AnAccessibleConsole, TellsOneWhoBeginsToListenWhileItIsOpen)
{
    open();
    type("a");
    AccessibleEvents events;
    type("b");
    EXPECT_EQ((Strings{"show Console", "focus Console", "cursor 5"}), events.take());
    type("c");
    EXPECT_EQ((Strings{"insert 5 c", "cursor 6"}), events.take());
}

TEST_F(AnAccessibleConsole, IsTheWholeLogWhilePlain)
{
    host.setPlain(true);
    open();
    console->write(U"abc", console::Output);
    paint();
    EXPECT_EQ(0u, all().rfind("Zephyr Console:", 0)) << all();
    EXPECT_TRUE(text().characterRect(0).isEmpty());
}

TEST(ConsoleAccessible, EndsWithItsHost)
{
    AccessibleEvents events;
    QWindow window;
    const auto console = std::make_shared<Console>();
    auto host = std::make_unique<ConsoleHost>(console, &window);
    QAccessibleInterface* const pane = QAccessible::queryAccessibleInterface(&window);
    ASSERT_EQ(1, pane->childCount());
    const QAccessible::Id id = QAccessible::uniqueId(pane->child(0));
    host->setOpen(true);
    host.reset();
    EXPECT_EQ(nullptr, QAccessible::accessibleInterface(id));
    EXPECT_EQ(nullptr, QAccessible::queryAccessibleInterface(&window)) << "as without a console";
}

TEST(ConsoleAccessible, IsTheNewestOfTwoOnOneObject)
{
    QWindow window;
    const auto console = std::make_shared<Console>();
    auto first = std::make_unique<ConsoleHost>(console, &window);
    QAccessibleInterface* const pane = QAccessible::queryAccessibleInterface(&window);
    QAccessibleInterface* const before = pane->child(0);
    const ConsoleHost second(console, &window);
    QAccessibleInterface* const after = pane->child(0);
    EXPECT_NE(before, after);
    first.reset();
    ASSERT_EQ(pane, QAccessible::queryAccessibleInterface(&window));
    EXPECT_EQ(after, pane->child(0));
}

TEST(ConsoleAccessible, OutlivesItsObject)
{
    AccessibleEvents events;
    auto window = std::make_unique<QWindow>();
    const auto console = std::make_shared<Console>();
    ConsoleHost host(console, window.get());
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(window.get())->child(0);
    host.setOpen(true);
    window.reset();
    EXPECT_FALSE(accessible->isValid());
    EXPECT_EQ(nullptr, accessible->parent());
    EXPECT_EQ("", accessible->textInterface()->text(0, -1));
    host.setOpen(false);
    host.setOpen(true);
}

TEST(ConsoleAccessible, LeavesOtherWindowsAlone)
{
    QWindow hosting;
    const ConsoleHost host(std::make_shared<Console>(), &hosting);
    QWindow other;
    EXPECT_EQ(nullptr, QAccessible::queryAccessibleInterface(&other));
}

} // namespace
} // namespace zephyr::test
