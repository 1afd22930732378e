#include "view/FramePlan.h"

#include "ViewTestText.h"
#include "view/ViewState.h"

namespace zephyr::console::qt {
namespace {

/// Frames of 40 columns over a log of rows that are numbered from 0 on.
class AFramePlan : public testing::Test
{
protected:
    AFramePlan() { write(2, 100); }

    void write(int from, int to)
    {
        for (int i = from; i < to; ++i) {
            console.write("row " + std::to_string(i), Output);
        }
    }

    QSize sizeOf(int rowCount) const
    {
        return {static_cast<int>(40 * font->spaceWidth()), rowCount * font->lineHeight()};
    }

    FramePlan plan(int rowCount = 20)
    {
        rows.setFormat(font, rowWidth(sizeOf(rowCount)));
        return planFrame(state, console, input, font, rows, sizeOf(rowCount));
    }

    static std::vector<std::size_t> entriesOf(const FramePlan& plan)
    {
        std::vector<std::size_t> entries;
        for (const FramePlan::PlacedRow& placed : plan.log) {
            entries.push_back(placed.row.entry);
        }
        return entries;
    }

    std::shared_ptr<const ViewFont> font = test::monospaced();
    Console console;
    ConsoleInput input;
    ViewState state;
    LogRows rows;
};

TEST_F(AFramePlan, EndsWithTheNewestRowAboveTheInputLine)
{
    const FramePlan frame = plan();
    ASSERT_FALSE(frame.log.empty());
    EXPECT_EQ(99U, frame.log.back().row.entry);
    EXPECT_EQ(static_cast<std::size_t>(frame.page), frame.log.size());
    ASSERT_EQ(1U, frame.input.size());
    EXPECT_EQ(U">>", frame.input[0].row.text.substr(0, 2));
    EXPECT_EQ(frame.log.back().top + font->lineHeight(), frame.input[0].top);
    EXPECT_EQ(3U, frame.cursor);
    EXPECT_EQ(100U, frame.logSize);
    EXPECT_EQ(&frame.input[0], &frame.cursorRow());
}

TEST_F(AFramePlan, HasTheInputLineBelowALogThatIsShort)
{
    state.firstEntry = 98;
    const FramePlan frame = plan();
    EXPECT_EQ((std::vector<std::size_t>{98, 99}), entriesOf(frame));
    EXPECT_EQ(frame.log.back().top + font->lineHeight(), frame.input.at(0).top);
    EXPECT_TRUE(frame.track.isEmpty());
    EXPECT_TRUE(frame.thumb.isEmpty());
}

TEST_F(AFramePlan, HidesEarlierEntries)
{
    state.firstEntry = 100;
    FramePlan frame = plan();
    EXPECT_TRUE(frame.log.empty());
    EXPECT_EQ(1U, frame.input.size());
    state.firstEntry = 90;
    state.top = TextPlace{3, 0};
    frame = plan(5);
    EXPECT_LE(90U, frame.log.at(0).row.entry) << "a place that is hidden is not shown";
}

TEST_F(AFramePlan, StaysWhereItIsScrolledTo)
{
    state.top = TextPlace{40, 0};
    state.sizeSeen = 100;
    FramePlan frame = plan();
    EXPECT_EQ(40U, frame.log.at(0).row.entry);
    EXPECT_EQ(static_cast<std::size_t>(frame.page), frame.log.size());
    EXPECT_EQ(0U, frame.newEntries);
    EXPECT_TRUE(frame.mark.isEmpty());
    const auto before = entriesOf(frame);
    write(100, 107);
    frame = plan();
    EXPECT_EQ(before, entriesOf(frame));
    EXPECT_EQ(7U, frame.newEntries);
    EXPECT_FALSE(frame.mark.isEmpty());
    EXPECT_TRUE(QRect(QPoint(0, 0), frame.size).contains(frame.mark));
}

TEST_F(AFramePlan, CountsNothingNewWhileItFollows)
{
    state.sizeSeen = 10;
    const FramePlan frame = plan();
    EXPECT_EQ(0U, frame.newEntries);
    EXPECT_TRUE(frame.mark.isEmpty());
}

TEST_F(AFramePlan, HasTheThumbAtTheEndsOfItsTrackAtTheEndsOfTheLog)
{
    FramePlan frame = plan();
    ASSERT_FALSE(frame.track.isEmpty());
    EXPECT_TRUE(frame.track.contains(frame.thumb));
    EXPECT_EQ(frame.track.bottom(), frame.thumb.bottom());
    EXPECT_NE(frame.track.top(), frame.thumb.top());
    state.top = TextPlace{0, 0};
    frame = plan();
    EXPECT_EQ(frame.track.top(), frame.thumb.top());
    EXPECT_NE(frame.track.bottom(), frame.thumb.bottom());
    state.top = TextPlace{40, 0};
    frame = plan();
    EXPECT_LT(frame.track.top(), frame.thumb.top());
    EXPECT_GT(frame.track.bottom(), frame.thumb.bottom());
}

TEST_F(AFramePlan, ShowsTheRowOfTheCursorOfALineThatIsTallerThanTheWindow)
{
    input.text = std::u32string(2000, U'x');
    for (const std::uint32_t cursor : {0U, 1000U, 2000U}) {
        input.cursor = cursor;
        const FramePlan frame = plan(3);
        ASSERT_FALSE(frame.input.empty());
        const FramePlan::PlacedRow& row = frame.cursorRow();
        EXPECT_EQ(cursor + 3, frame.cursor);
        EXPECT_LE(row.row.begin, frame.cursor);
        EXPECT_GE(row.row.end, frame.cursor);
        EXPECT_GE(row.top, 0);
        EXPECT_LE(row.top + font->lineHeight(), frame.size.height());
    }
}

TEST_F(AFramePlan, HasTheCursorInAWindowWithoutRoom)
{
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(-5, -5), QSize(1000, 3), QSize(1, 1000)}) {
        rows.setFormat(font, rowWidth(size));
        const FramePlan frame = planFrame(state, console, input, font, rows, size);
        ASSERT_FALSE(frame.input.empty());
        EXPECT_GE(frame.cursorRow().row.end, frame.cursor);
    }
}

TEST_F(AFramePlan, ShowsWhatIsRecalledInPlaceOfTheInputLine)
{
    input.text = U"typed";
    state.recalled = U"recalled";
    const FramePlan frame = plan();
    EXPECT_NE(std::u32string::npos, frame.input.at(0).row.text.find(U"recalled"));
    EXPECT_EQ(std::u32string::npos, frame.input.at(0).row.text.find(U"typed"));
}

TEST_F(AFramePlan, HasTheCompositionInFrontOfTheCursor)
{
    input = {U"ab", 1};
    state.composition = QStringLiteral("xyz");
    const FramePlan frame = plan();
    EXPECT_EQ(U"axyzb", frame.input.at(0).row.text.substr(3, 5));
    EXPECT_EQ(4U, frame.composition);
    EXPECT_EQ(7U, frame.cursor);
}

TEST_F(AFramePlan, FindsTheRowNearestToAPlace)
{
    const FramePlan frame = plan();
    EXPECT_EQ(&frame.log.front(), frame.rowNear(-100));
    EXPECT_EQ(&frame.log.front(), frame.rowNear(frame.log.front().top));
    EXPECT_EQ(&frame.log[3], frame.rowNear(frame.log[3].top));
    EXPECT_EQ(&frame.log[3], frame.rowNear(frame.log[4].top - 1));
    EXPECT_EQ(&frame.input.back(), frame.rowNear(frame.input.back().top));
    EXPECT_EQ(&frame.input.back(), frame.rowNear(100000));
    EXPECT_EQ(nullptr, FramePlan().rowNear(5));
}

TEST_F(AFramePlan, MarksEachHitInView)
{
    console.write(U"Row row ROW", Output);
    state.find.query = U"row";
    FramePlan frame = plan();
    std::size_t expected = 0;
    for (const FramePlan::PlacedRow& placed : frame.log) {
        expected += placed.row.entry == 100 ? 3 : 1;
    }
    EXPECT_EQ(expected, frame.hits.size());
    EXPECT_EQ((TextRange{{100, 8}, {100, 11}}), frame.hits.back());
    state.find.matchesCase = true;
    frame = plan();
    EXPECT_EQ((TextRange{{100, 4}, {100, 7}}), frame.hits.back());
    state.find.query.clear();
    EXPECT_TRUE(plan().hits.empty());
}

TEST_F(AFramePlan, MarksAHitThatGoesOnInTheNextRow)
{
    const std::u32string text = std::u32string(36, U'x') + U"needle" + std::u32string(36, U'x');
    console.write(text, Output);
    state.find.query = U"needle";
    const FramePlan frame = plan();
    ASSERT_EQ(1U, frame.hits.size());
    EXPECT_EQ((TextRange{{100, 36}, {100, 42}}), frame.hits[0]);
    state.top = frame.log[frame.log.size() - 2].row.place();
    ASSERT_GT(state.top->offset, 36U);
    ASSERT_LT(state.top->offset, 42U);
    EXPECT_EQ(frame.hits, plan(3).hits) << "although it begins above the view";
}

TEST_F(AFramePlan, MarksTheHitsThatASearchFromTheEntrysBeginningFinds)
{
    console.write(std::u32string(2000, U'-'), Output);
    state.find.query = U"---";
    for (const std::size_t offset : {500U, 1000U}) {
        state.top = TextPlace{100, offset};
        const FramePlan frame = plan(6);
        ASSERT_FALSE(frame.hits.empty());
        EXPECT_GT(frame.hits[0].to, frame.log[0].row.place());
        EXPECT_LT(frame.hits[0].from.offset, frame.log[0].row.begin + 3);
        for (const TextRange& hit : frame.hits) {
            EXPECT_EQ(0U, hit.from.offset % 3);
        }
    }
}

TEST_F(AFramePlan, CountsWhatIsNewOnlyBelowTheView)
{
    state.top = TextPlace{70, 0};
    state.sizeSeen = 75;
    const FramePlan frame = plan();
    EXPECT_EQ(100 - frame.log.back().row.entry - 1, frame.newEntries);
}

TEST_F(AFramePlan, HasABarBelowTheInputLine)
{
    state.bar = ViewState::Bar{U"Find: ", U"text", 4, U"1 of 3"};
    const FramePlan frame = plan();
    EXPECT_FALSE(frame.bar.isEmpty());
    EXPECT_TRUE(QRect(QPoint(0, 0), frame.size).contains(frame.bar));
    EXPECT_GE(frame.bar.top(), frame.input.back().top + font->lineHeight());
}

TEST_F(AFramePlan, HasAListThatLeavesTheInputLineInView)
{
    state.list.offers = {{U"help", U"Says what there is."}, {U"here", U""}};
    state.list.count = 2;
    const FramePlan frame = plan();
    ASSERT_FALSE(frame.list.isEmpty());
    EXPECT_TRUE(QRect(QPoint(0, 0), frame.size).contains(frame.list));
    EXPECT_EQ(2 * font->lineHeight(), frame.list.height());
    EXPECT_LE(frame.list.bottom(), frame.input.front().top);
}

TEST_F(AFramePlan, SaysWhichPartOfALongListIsInView)
{
    for (int i = 0; i < 8; ++i) {
        state.list.offers.push_back({U"name", U""});
    }
    state.list.count = 8;
    EXPECT_TRUE(plan().note.isEmpty());
    state.list.count = 100;
    state.list.first = 16;
    const FramePlan frame = plan();
    EXPECT_EQ(U"17 to 24 of 100", frame.noteText);
    EXPECT_EQ(frame.list.top(), frame.note.bottom() + 1);
    EXPECT_EQ(frame.list.width(), frame.note.width());
    EXPECT_GT(frame.note.width(), static_cast<int>(15 * font->spaceWidth()));
    EXPECT_EQ(U"17 to 19 of 100", plan(5).noteText) << "where there is room for three";
    EXPECT_TRUE(plan(5).note.isEmpty());
}

TEST_F(AFramePlan, GivesWideLettersTheirRoomInTheList)
{
    font = test::proportional(10.0);
    state.list.offers = {{U"WWWW", U"Four wide letters."}};
    state.list.count = 1;
    const int wide = plan().listTexts;
    state.list.offers = {{U"iiii", U"Four letters."}};
    EXPECT_GT(wide, 2 * plan().listTexts);
}

TEST(CoveredSize, IsThePartThatTheLookNames)
{
    ViewState state;
    EXPECT_EQ(QSize(800, 601), coveredSize(state, {800, 601}));
    state.look.part = Look::Part::UpperHalf;
    EXPECT_EQ(800, coveredSize(state, {800, 601}).width());
    EXPECT_NEAR(300, coveredSize(state, {800, 601}).height(), 1);
}

TEST(RowWidth, LeavesRoomForTheScrollBar)
{
    EXPECT_LT(rowWidth({800, 600}), 800.0);
    EXPECT_GT(rowWidth({800, 600}), 760.0);
    EXPECT_GE(rowWidth({0, 0}), 0.0);
    EXPECT_GE(rowWidth({1, 1}), 0.0);
}

class PlaceAtShare : public testing::Test
{
protected:
    Console console;
};

TEST_F(PlaceAtShare, IsTheLogsBeginningAndItsEnd)
{
    console.write(U"0123456789", Output);
    EXPECT_EQ((TextPlace{0, 0}), placeAtShare(0.0, 0, console));
    EXPECT_EQ((TextPlace{1, 0}), placeAtShare(0.0, 1, console));
    EXPECT_EQ(2U, placeAtShare(1.0, 0, console).entry);
    EXPECT_EQ((TextPlace{0, 0}), placeAtShare(-5.0, 0, console));
    EXPECT_EQ(placeAtShare(1.0, 0, console), placeAtShare(5.0, 0, console));
}

TEST_F(PlaceAtShare, IsWithinALongEntry)
{
    console.write(std::u32string(100000, U'x'), Output);
    const TextPlace middle = placeAtShare(0.5, test::kFirstEntry, console);
    EXPECT_EQ(test::kFirstEntry, middle.entry);
    EXPECT_NEAR(50000.0, static_cast<double>(middle.offset), 1000.0);
}

TEST_F(PlaceAtShare, CountsLongEntriesAsMuchAsShortOnes)
{
    for (int i = 0; i < 8; ++i) {
        console.write(std::u32string(i == 0 ? 100000 : 1, U'x'), Output);
    }
    EXPECT_EQ(6U, placeAtShare(0.5, test::kFirstEntry, console).entry);
}

} // namespace
} // namespace zephyr::console::qt
