#include "view/ViewPointer.h"
#include "qt/view/ViewedConsole.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

#include <optional>

namespace zephyr::console::qt {
namespace {

class ViewPointerTest : public ViewedConsole
{
protected:
    /// The middle of a row of the last frame, at the left end of a code point.
    QPointF at(int row, int column)
    {
        const auto plan = frame();
        const int rowsOfLog = static_cast<int>(plan->log.size());
        const FramePlan::PlacedRow& placed = row < rowsOfLog
                                                 ? plan->log[static_cast<std::size_t>(row)]
                                                 : plan->input[static_cast<std::size_t>(row - rowsOfLog)];
        return {placed.row.x + column * plan->font->spaceWidth() + 1.0,
                placed.top + plan->font->lineHeight() / 2.0};
    }

    void pressAt(QPointF place, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                 Qt::MouseButton button = Qt::LeftButton)
    {
        pointer.press({place, button, modifiers, time});
        time += 10;
    }

    void click(QPointF place, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        pressAt(place, modifiers);
        pointer.release(place);
    }

    /// Waits until a next press begins a new click.
    void pause() { time += 10'000; }

    std::uint64_t time = 1;
    std::optional<std::size_t> cursor;
    int pastes = 0;
    ViewPointer pointer{context,
                        view,
                        {[this](std::size_t offset) { cursor = offset; }, [this] { ++pastes; },
                         [this](const std::u32string& text) { view.pickOffer(*console, text); }}};
};

TEST_F(ViewPointerTest, SelectsWhatItIsDraggedOver)
{
    write(5);
    pressAt(at(2, 2));
    pointer.move(at(4, 3));
    pointer.release(at(4, 3));
    EXPECT_EQ((TextRange{{2, 2}, {4, 3}}), state().selection);
    click(at(3, 0));
    pause();
    EXPECT_TRUE(state().selection.isEmpty());
}

TEST_F(ViewPointerTest, SelectsAWordByADoubleClickAndALineByATripleClick)
{
    write(5);
    click(at(3, 1));
    click(at(3, 1));
    EXPECT_EQ((TextRange{{3, 0}, {3, 4}}), state().selection);
    click(at(3, 1));
    EXPECT_EQ((TextRange{{3, 0}, {3, 6}}), state().selection);
    click(at(3, 1));
    EXPECT_TRUE(state().selection.isEmpty()) << "a fourth click begins anew";
}

TEST_F(ViewPointerTest, SelectsTheWordOfTheLetterThatIsDoubleClicked)
{
    console->write(U"foo a bar", Output);
    const auto wordAt = [this](int column) {
        const QPointF nearItsEnd = at(2, column) + QPointF(0.7 * frame()->font->spaceWidth(), 0);
        click(nearItsEnd);
        click(nearItsEnd);
        pause();
        return state().selection;
    };
    EXPECT_EQ((TextRange{{2, 0}, {2, 3}}), wordAt(2));
    EXPECT_EQ((TextRange{{2, 4}, {2, 5}}), wordAt(4));
    EXPECT_EQ((TextRange{{2, 6}, {2, 9}}), wordAt(8));
    EXPECT_TRUE(wordAt(20).isEmpty()) << "behind the line";
}

TEST_F(ViewPointerTest, ExtendsByTheWordsThatItIsDraggedOver)
{
    console->write(U"foo a bar", Output);
    const QPointF nearTheEndOfA = at(2, 4) + QPointF(0.7 * frame()->font->spaceWidth(), 0);
    click(at(2, 1));
    pressAt(at(2, 1));
    pointer.move(nearTheEndOfA);
    EXPECT_EQ((TextRange{{2, 0}, {2, 5}}), state().selection);
}

TEST_F(ViewPointerTest, TakesSlowClicksForSingleOnes)
{
    write(5);
    click(at(3, 1));
    pause();
    click(at(3, 1));
    EXPECT_TRUE(state().selection.isEmpty());
}

TEST_F(ViewPointerTest, ExtendsTheSelectionByShiftAndAClick)
{
    write(5);
    click(at(2, 1));
    pause();
    click(at(4, 2), Qt::ShiftModifier);
    EXPECT_EQ((TextRange{{2, 1}, {4, 2}}), state().selection);
    pause();
    click(at(3, 2), Qt::ShiftModifier);
    EXPECT_EQ((TextRange{{2, 1}, {3, 2}}), state().selection);
}

TEST_F(ViewPointerTest, BeginsToSelectAtTheFirstClickWithShift)
{
    write(5);
    click(at(4, 2), Qt::ShiftModifier);
    EXPECT_TRUE(state().selection.isEmpty());
    pause();
    click(at(3, 2), Qt::ShiftModifier);
    EXPECT_EQ((TextRange{{3, 2}, {4, 2}}), state().selection);
}

TEST_F(ViewPointerTest, SelectsNothingThatWasCleared)
{
    write(5);
    click(at(3, 1));
    pause();
    view.clear();
    write(5);
    click(at(1, 2), Qt::ShiftModifier);
    EXPECT_TRUE(state().selection.isEmpty());
    pause();
    click(at(0, 0), Qt::ShiftModifier);
    EXPECT_EQ((TextRange{{7, 0}, {8, 2}}), state().selection);
}

TEST_F(ViewPointerTest, SelectsInTheInputLineWhereNoRowOfTheLogIsInView)
{
    type(U"abc def");
    view.clear();
    pressAt(at(0, 3));
    pointer.move(at(0, 6));
    pointer.release(at(0, 6));
    EXPECT_EQ((TextRange{{kInputLine, 3}, {kInputLine, 6}}), state().selection);
    write(5);
    size = {640, 20};
    ASSERT_TRUE(frame()->log.empty());
    pause();
    pressAt(at(0, 4));
    pointer.move(at(0, 9));
    EXPECT_EQ((TextRange{{kInputLine, 4}, {kInputLine, 9}}), state().selection);
}

/// In a window that fills the screen, the pointer can't go beyond the edge.
TEST_F(ViewPointerTest, ScrollsWhileItIsDraggedAlongTheEdge)
{
    write(200);
    pressAt(at(3, 0));
    pointer.move({10.0, 0.0});
    const std::size_t before = frame()->log.front().row.entry;
    EXPECT_TRUE(QTest::qWaitFor([&] { return frame()->log.front().row.entry + 5 < before; }));
    pointer.move({10.0, 100.0});
    const std::size_t top = frame()->log.front().row.entry;
    pointer.move({10.0, size.height() - 1.0});
    EXPECT_TRUE(QTest::qWaitFor([&] { return frame()->log.front().row.entry > top + 5; }));
    pointer.release({10.0, size.height() - 1.0});
}

TEST_F(ViewPointerTest, ScrollsWhileItIsDraggedBeyondTheEdge)
{
    write(200);
    const auto plan = frame();
    pressAt(at(3, 0));
    pointer.move({10.0, -30.0});
    frame();
    const TextPlace before = state().selection.from;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        frame();
        return state().selection.from.entry + 5 < before.entry;
    }));
    pointer.release({10.0, -30.0});
    EXPECT_LT(frame()->log.front().row.entry, plan->log.front().row.entry);
}

TEST_F(ViewPointerTest, PlacesTheCursorByAClickOnTheInputLine)
{
    type(U"abc def");
    click(at(2, 3 + 4));
    EXPECT_EQ(4U, cursor);
    cursor.reset();
    pause();
    click(at(0, 1));
    EXPECT_EQ(std::nullopt, cursor) << "in the log there is none";
    pause();
    click(at(2, 0));
    EXPECT_EQ(0U, cursor) << "on the prompt";
}

TEST_F(ViewPointerTest, PastesByTheMiddleButton)
{
    pressAt(at(0, 0), Qt::NoModifier, Qt::MiddleButton);
    EXPECT_EQ(1, pastes);
}

TEST_F(ViewPointerTest, DragsTheScrollBar)
{
    write(1000);
    const QRect thumb = frame()->thumb;
    const QRect track = frame()->track;
    EXPECT_EQ(track.bottom(), thumb.bottom());
    pressAt(thumb.center());
    pointer.move(QPointF(thumb.center()) - QPointF(0, thumb.top() / 2.0));
    const std::size_t middle = frame()->log.front().row.entry;
    const double below = 1002.0 - static_cast<double>(frame()->log.size()); // of the top, at the end
    EXPECT_NEAR(below / 2, static_cast<double>(middle), 3.0);
    pointer.move({static_cast<double>(thumb.x()), -100.0});
    EXPECT_EQ("Zephyr Console:", first());
    EXPECT_EQ(track.top(), frame()->thumb.top());
    pointer.move({0.0, 1000.0});
    pointer.release({0.0, 1000.0});
    EXPECT_EQ("line 999", last());
}

TEST_F(ViewPointerTest, ScrollsNothingByAClickOnTheThumb)
{
    for (const int lines : {40, 960}) { // of the log, 1000 at last
        write(lines);
        view.scrollBy(lines / 3);
        const std::string before = first();
        const QRect thumb = frame()->thumb;
        for (const int y : {thumb.top(), thumb.center().y(), thumb.bottom()}) {
            click(QPointF(thumb.x() + 1.0, y));
            EXPECT_EQ(before, first());
        }
        pressAt(thumb.center());
        pointer.move(thumb.center() - QPoint(5, 0));
        EXPECT_EQ(before, first()) << "the pointer moves to the side";
        pointer.release(thumb.center());
        view.showNewest();
    }
}

TEST_F(ViewPointerTest, KeepsTheThumbUnderThePointer)
{
    write(1000);
    view.scrollBy(300);
    const QRect thumb = frame()->thumb;
    pressAt(thumb.center());
    for (const int moved : {-1, -10, -100, -3, 0, 20}) {
        pointer.move(thumb.center() + QPoint(0, moved));
        EXPECT_NEAR(thumb.top() + moved, frame()->thumb.top(), 1);
    }
}

TEST_F(ViewPointerTest, PicksAnOffer)
{
    type(U"hel");
    const QRect list = frame()->list;
    ASSERT_FALSE(list.isEmpty());
    click(list.topLeft() + QPointF(3, 3));
    EXPECT_EQ(U"help", console->activeInput().substr(0, 4));
}

TEST_F(ViewPointerTest, ShowsTheLineOnWhichItPutsAnOffer)
{
    write(100);
    type(U"hel");
    view.scrollBy(10);
    const QRect list = frame()->list;
    ASSERT_FALSE(list.isEmpty());
    click(list.topLeft() + QPointF(3, 3));
    EXPECT_EQ(U"help", console->activeInput().substr(0, 4));
    EXPECT_EQ("line 99", last());
}

TEST_F(ViewPointerTest, PicksWhatTheUserSees)
{
    type(U"al");
    const QRect list = frame()->list;
    ASSERT_FALSE(list.isEmpty());
    console->keyPressed(Qt::Key_Backspace, 0, {}); // and no frame since
    console->keyPressed(Qt::Key_Backspace, 0, {});
    console->keyPressed(0, 0, U"h");
    view.afterConsoleActed(*console);
    ASSERT_EQ(U"help", state().list.offers.at(0).text.substr(0, 4));
    click(list.topLeft() + QPointF(3, 3));
    EXPECT_EQ(U"h", console->activeInput()) << "where alias stood";
}

TEST_F(ViewPointerTest, ShowsTheNewestLinesByAClickOnTheMark)
{
    write(200);
    view.scrollBy(10);
    write(3);
    const QRect mark = frame()->mark;
    ASSERT_FALSE(mark.isEmpty());
    click(mark.center());
    EXPECT_EQ("line 202", last());
}

} // namespace
} // namespace zephyr::console::qt
