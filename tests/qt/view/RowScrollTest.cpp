#include "view/RowScroll.h"

#include "ViewTestText.h"

#include <limits>

namespace zephyr::console::qt {
namespace {

/// A log of rows that are numbered from 0 on, behind the console's own.
class ARowScroll : public testing::Test
{
protected:
    ARowScroll()
    {
        rows.setFormat(font, test::columns(*font, 20));
        write(30);
    }

    void write(int count)
    {
        for (int i = 0; i < count; ++i) {
            console.write(std::u32string(static_cast<std::size_t>(written++ % 20), U'x'), Output);
        }
    }

    RowScroll::Log log(int page = 10, std::size_t first = 0) { return {console, rows, first, page}; }

    std::size_t top() const { return scroll.top() ? scroll.top()->entry : kInputLine; }

    std::shared_ptr<const ViewFont> font = test::monospaced();
    Console console;
    LogRows rows;
    RowScroll scroll;
    int written = 0;
};

TEST_F(ARowScroll, FollowsTheNewestRowAtFirst) { EXPECT_FALSE(scroll.top().has_value()); }

TEST_F(ARowScroll, GoesBackByRows)
{
    scroll.scrollBy(1, log());
    EXPECT_EQ(21U, top()) << "of 32 rows";
    scroll.scrollBy(5, log());
    EXPECT_EQ(16U, top());
    scroll.scrollBy(-2, log());
    EXPECT_EQ(18U, top());
    scroll.scrollBy(0, log());
    EXPECT_EQ(18U, top());
}

TEST_F(ARowScroll, FollowsAgainAtTheEnd)
{
    scroll.scrollBy(7, log());
    scroll.scrollBy(-6, log());
    EXPECT_TRUE(scroll.top().has_value());
    scroll.scrollBy(-1, log());
    EXPECT_FALSE(scroll.top().has_value());
    scroll.scrollBy(7, log());
    scroll.scrollBy(-100, log());
    EXPECT_FALSE(scroll.top().has_value());
    scroll.scrollBy(7, log());
    scroll.scrollBy(std::numeric_limits<std::int64_t>::min(), log());
    EXPECT_FALSE(scroll.top().has_value());
}

TEST_F(ARowScroll, StopsAtTheBeginning)
{
    scroll.scrollBy(1000, log());
    EXPECT_EQ(0U, top());
    scroll.scrollBy(std::numeric_limits<std::int64_t>::max(), log());
    EXPECT_EQ(0U, top());
    scroll.scrollBy(-std::numeric_limits<std::int64_t>::max(), log());
    EXPECT_FALSE(scroll.top().has_value());
}

TEST_F(ARowScroll, DoesNotGoBackBeforeTheFirstEntryThatIsShown)
{
    scroll.scrollBy(1000, log(10, 7));
    EXPECT_EQ(7U, top());
}

TEST_F(ARowScroll, GoesOnFromTheFirstEntryThatIsShownWhenItsOwnIsHidden)
{
    scroll.showAtTop({3, 0}, log());
    scroll.scrollBy(-1, log(10, 8));
    EXPECT_EQ(9U, top());
    scroll.showAtTop({3, 0}, log());
    scroll.scrollBy(1, log(10, 8));
    EXPECT_EQ(8U, top());
}

TEST_F(ARowScroll, KeepsFollowingWhereAllIsInView)
{
    scroll.scrollBy(5, log(32));
    EXPECT_FALSE(scroll.top().has_value());
    scroll.scrollBy(5, log(1000));
    EXPECT_FALSE(scroll.top().has_value());
    scroll.scrollBy(5, log(10, 22));
    EXPECT_FALSE(scroll.top().has_value());
    scroll.scrollBy(5, log(10, console.logSize()));
    EXPECT_FALSE(scroll.top().has_value()) << "where nothing is shown";
    scroll.scrollBy(5, log(31));
    EXPECT_EQ(0U, top());
}

TEST_F(ARowScroll, StaysWhereItIsWhileEntriesAreWritten)
{
    scroll.scrollBy(3, log());
    EXPECT_EQ(32U, scroll.sizeSeen());
    write(50);
    EXPECT_EQ(19U, top());
    scroll.scrollBy(1, log());
    EXPECT_EQ(18U, top());
    EXPECT_EQ(32U, scroll.sizeSeen());
    scroll.follow();
    EXPECT_FALSE(scroll.top().has_value());
    scroll.scrollBy(1, log());
    EXPECT_EQ(82U, scroll.sizeSeen());
}

TEST_F(ARowScroll, PutsARowAtTheTop)
{
    scroll.showAtTop({5, 0}, log());
    EXPECT_EQ(5U, top());
    scroll.showAtTop({21, 0}, log());
    EXPECT_EQ(21U, top());
    scroll.showAtTop({22, 0}, log());
    EXPECT_FALSE(scroll.top().has_value()) << "all that comes after is in view";
    scroll.showAtTop({kInputLine, 0}, log());
    EXPECT_FALSE(scroll.top().has_value());
}

TEST_F(ARowScroll, PutsTheRowOfAPlaceWithinItAtTheTop)
{
    console.write(std::u32string(1000, U'x'), Output);
    scroll.showAtTop({32, 47}, log());
    EXPECT_EQ((TextPlace{32, 40}), scroll.top());
}

TEST_F(ARowScroll, CountsWhatIsNewSinceTheEndWasLeftByAJump)
{
    scroll.showAtTop({5, 0}, log());
    EXPECT_EQ(32U, scroll.sizeSeen());
}

TEST_F(ARowScroll, BringsARowIntoView)
{
    scroll.reveal({3, 0}, log());
    ASSERT_TRUE(scroll.top().has_value());
    EXPECT_LE(top(), 3U);
    EXPECT_GT(top() + 10, 3U);
    scroll.reveal({15, 0}, log());
    EXPECT_LE(top(), 15U);
    EXPECT_GT(top() + 10, 15U);
    scroll.reveal({31, 0}, log());
    EXPECT_FALSE(scroll.top().has_value());
}

TEST_F(ARowScroll, StaysWhereARowIsInViewAlready)
{
    scroll.showAtTop({10, 0}, log());
    scroll.reveal({15, 0}, log());
    EXPECT_EQ(10U, top());
    scroll.follow();
    scroll.reveal({27, 0}, log());
    EXPECT_FALSE(scroll.top().has_value());
}

TEST_F(ARowScroll, BringsARowIntoAViewOfOneRow)
{
    for (const std::size_t entry : {0U, 31U, 5U, 6U, 4U, 30U}) {
        scroll.reveal({entry, 0}, log(1));
        EXPECT_EQ(entry == 31U ? kInputLine : entry, top());
    }
}

} // namespace
} // namespace zephyr::console::qt
