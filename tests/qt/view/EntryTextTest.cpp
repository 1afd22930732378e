#include "view/EntryText.h"

#include "ViewTestText.h"
#include "zephyr/console/Texts.h"

#include <limits>

namespace zephyr::console::qt {
namespace {

constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

class AnEntryText : public testing::Test
{
protected:
    Console console;
};

TEST_F(AnEntryText, IsTheTextOfAnEntry)
{
    console.writeIndented(U"one\ntwo", Prompt, 2);
    const EntryText text(console, test::kFirstEntry);
    EXPECT_EQ(9U, text.size());
    EXPECT_EQ(Prompt, text.type());
    EXPECT_EQ(2U, text.indent());
    EXPECT_EQ(U"  one\ntwo", text.read(0, kAll));
}

TEST_F(AnEntryText, HasThePromptInFrontOfAnEchoedLine)
{
    console.write(U"help", Input);
    const EntryText text(console, test::kFirstEntry);
    EXPECT_EQ(7U, text.size());
    EXPECT_EQ(U">> help", text.read(0, 7));
    EXPECT_EQ(U">", text.read(0, 1));
    EXPECT_EQ(U"> h", text.read(1, 3));
    EXPECT_EQ(U" help", text.read(2, 5));
    EXPECT_EQ(U"help", text.read(3, 4));
    EXPECT_EQ(U"elp", text.read(4, kAll));
    EXPECT_EQ(U"", text.read(7, 1));
    EXPECT_EQ(U"", text.read(1, 0));
}

TEST_F(AnEntryText, CutsWhatIsReadAtItsEnd)
{
    console.write(U"text", Output);
    const EntryText text(console, test::kFirstEntry);
    EXPECT_EQ(U"xt", text.read(2, 100));
    EXPECT_EQ(U"t", text.read(3, kAll));
    EXPECT_EQ(U"", text.read(4, 1));
    EXPECT_EQ(U"", text.read(100, 1));
    EXPECT_EQ(U"", text.read(kAll, kAll));
}

TEST_F(AnEntryText, IsEmptyWhereThereIsNoEntry)
{
    for (const std::size_t index : {console.logSize(), kAll}) {
        const EntryText text(console, index);
        EXPECT_EQ(0U, text.size());
        EXPECT_EQ(U"", text.read(0, 10));
    }
}

RC_GTEST_PROP(EntryTextProperties, IsReadInPartsAsItIsShown, ())
{
    Console console;
    test::writeAnything(console, (*test::mixedText()).text);
    const std::u32string shown = shownText(console.snapshot().lines().back());
    const EntryText text(console, test::kFirstEntry);
    RC_ASSERT(text.size() == shown.size());
    const std::size_t first = *rc::gen::inRange<std::size_t>(0, shown.size() + 1);
    const std::size_t count = *rc::gen::inRange<std::size_t>(0, shown.size() + 2);
    RC_ASSERT(text.read(first, count) == shown.substr(first, count));
}

} // namespace
} // namespace zephyr::console::qt
