#include "zephyr/console/ConsoleSnapshot.h"
#include "support/AssertAnswers.h"
#include "support/AssertRecorder.h"
#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/KeyTable.h"
#include "support/LogLine.h"
#include "support/SeenLine.h"
#include "zephyr/common/Angle.h"
#include "zephyr/common/Color.h"
#include "zephyr/console/Console.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using namespace test;

template <auto Accessor>
using Read = std::invoke_result_t<decltype(Accessor), const ConsoleSnapshot&>;

static_assert(std::is_same_v<Read<&ConsoleSnapshot::lines>, const std::vector<LogEntry>&>);
static_assert(std::is_same_v<Read<&ConsoleSnapshot::activeInput>, const std::u32string&>);
static_assert(std::is_same_v<Read<&ConsoleSnapshot::textColor>, const Color&>);
static_assert(std::is_same_v<Read<&ConsoleSnapshot::backgroundColor>, const Color&>);
static_assert(std::is_same_v<Read<&ConsoleSnapshot::cursorPosition>, std::uint32_t>);
static_assert(std::is_same_v<Read<&ConsoleSnapshot::cursorChar>, char32_t>);
static_assert(std::is_same_v<Read<&ConsoleSnapshot::cursorBlinkRate>, double>);
static_assert(std::is_same_v<Read<&ConsoleSnapshot::scrollOffset>, std::uint32_t>);
static_assert(std::is_same_v<Read<&ConsoleSnapshot::font>, const QFont*>);
static_assert(std::is_copy_constructible_v<ConsoleSnapshot> && std::is_copy_assignable_v<ConsoleSnapshot>);
static_assert(std::is_nothrow_move_constructible_v<ConsoleSnapshot> &&
              std::is_nothrow_move_assignable_v<ConsoleSnapshot>);

/// The fields in the order that programs which are already linked copy them in.
struct Layout
{
    std::vector<LogEntry> lines;
    std::u32string input;
    Color textColor;
    Color backgroundColor;
    std::uint32_t cursorPosition;
    char32_t cursorChar;
    double cursorBlinkRate;
    std::uint32_t scrollOffset;
    std::shared_ptr<QFont> font;
};
static_assert(sizeof(ConsoleSnapshot) == sizeof(Layout) && alignof(ConsoleSnapshot) == alignof(Layout));

const std::vector<LogEntry> kEntries = {{U"help", Input, 0}, {U"    a\nb", Output, 4}};

ConsoleSnapshot someSnapshot(std::shared_ptr<QFont> font)
{
    return {kEntries, U"abc", Color(1, 2, 3, 4), Color(5, 6, 7, 8), 2,
            U'_',     2.5,    1234567890,        std::move(font)};
}

void expectEntriesEqual(const std::vector<LogEntry>& actual, const std::vector<LogEntry>& expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        EXPECT_EQ(actual[i].text, expected[i].text);
        EXPECT_EQ(actual[i].type, expected[i].type);
        EXPECT_EQ(actual[i].indent, expected[i].indent);
    }
}

void expectSomeSnapshot(const ConsoleSnapshot& snapshot, const QFont* font)
{
    expectEntriesEqual(snapshot.lines(), kEntries);
    EXPECT_EQ(snapshot.activeInput(), U"abc");
    EXPECT_EQ(snapshot.textColor(), Color(1, 2, 3, 4));
    EXPECT_EQ(snapshot.backgroundColor(), Color(5, 6, 7, 8));
    EXPECT_EQ(snapshot.cursorPosition(), 2U);
    EXPECT_EQ(snapshot.cursorChar(), U'_');
    EXPECT_EQ(snapshot.cursorBlinkRate(), 2.5);
    EXPECT_EQ(snapshot.scrollOffset(), 1234567890U);
    EXPECT_EQ(snapshot.font(), font);
}

/// A font of any family whose lines are 16 pixels high.
std::shared_ptr<QFont> fontOfHeight16()
{
    for (const QString& family : QFontDatabase::families()) {
        for (int pixels = 8; pixels < 24; ++pixels) {
            auto font = std::make_shared<QFont>(family);
            font->setPixelSize(pixels);
            if (QFontMetrics(*font).height() == 16) {
                return font;
            }
        }
    }
    return nullptr;
}

class ConsoleSnapshots : public testing::Test
{
protected:
    /// How far Page Up scrolls back in a log that is longer than any page here.
    std::uint32_t page()
    {
        for (int i = 0; i < 200; ++i) {
            mConsole.newline();
        }
        mConsole.open();
        mDriver.press(KeyPageUp);
        return mConsole.snapshot().scrollOffset();
    }

    Console mConsole;
    ConsoleDriver mDriver{mConsole};
};

TEST_F(ConsoleSnapshots, OfAFreshConsoleHoldTheStartUpLinesAndNothingElse)
{
    const ConsoleSnapshot snapshot = mConsole.snapshot();
    expectEntriesEqual(snapshot.lines(), {{U"Zephyr Console:", Output, 0}, {U"", Output, 0}});
    EXPECT_EQ(inputLine(snapshot), (SeenLine{"", 0}));
    EXPECT_EQ(snapshot.scrollOffset(), 0U);
}

TEST_F(ConsoleSnapshots, CarryTheConsolesAppearance)
{
    const ConsoleSnapshot snapshot = mConsole.snapshot();
    EXPECT_EQ(snapshot.textColor(), Color(0, 255, 0, 255));
    EXPECT_EQ(snapshot.backgroundColor(), Color(0, 0, 0, 204));
    EXPECT_EQ(snapshot.cursorChar(), U'\u2588');
    EXPECT_EQ(snapshot.textColor(), mConsole.textColor());
    EXPECT_EQ(snapshot.backgroundColor(), mConsole.backgroundColor());
    EXPECT_EQ(snapshot.cursorChar(), mConsole.cursorChar());
}

TEST_F(ConsoleSnapshots, WidenTheBlinkRateToADouble)
{
    EXPECT_EQ(mConsole.snapshot().cursorBlinkRate(), 3.0);
}

TEST_F(ConsoleSnapshots, HoldEveryEntryOldestFirst)
{
    for (int i = 0; i < 2998; ++i) {
        mConsole.write("line " + std::to_string(i), Output);
    }
    const ConsoleSnapshot snapshot = mConsole.snapshot();
    ASSERT_EQ(snapshot.lines().size(), 3000U);
    EXPECT_EQ(snapshot.lines()[0].text, U"Zephyr Console:");
    EXPECT_EQ(snapshot.lines()[1].text, U"");
    for (std::size_t i = 2; i < 3000; ++i) {
        ASSERT_EQ(StringUtil::toString(snapshot.lines()[i].text), "line " + std::to_string(i - 2));
    }
}

TEST_F(ConsoleSnapshots, ReserveNoMoreThanTheEntriesTheyHold)
{
    mConsole.newline();
    const ConsoleSnapshot snapshot = mConsole.snapshot();
    EXPECT_EQ(snapshot.lines().capacity(), snapshot.lines().size());
}

TEST_F(ConsoleSnapshots, KeepTextTypeAndIndentOfAnEntry)
{
    mConsole.write(U"echo", Input);
    mConsole.writeIndented(U"a\nb", Prompt, 3);
    mConsole.writeIndented(U"x", 8);
    const std::vector<LogEntry> lines = mConsole.snapshot().lines();
    expectEntriesEqual({lines.begin() + 2, lines.end()},
                       {{U"echo", Input, 0}, {U"   a\nb", Prompt, 3}, {U"        x", Output, 8}});
}

TEST_F(ConsoleSnapshots, FollowTheInputLineAndItsCursor)
{
    mConsole.open();
    const std::vector<int> keys = {KeyLeft,  KeyBackspace, KeyHome,   KeyDelete,
                                   KeyRight, KeyEnd,       KeyReturn, KeyUp};
    mDriver.type("abcd");
    EXPECT_EQ(inputLine(mConsole.snapshot()), (SeenLine{"abcd", 4}));
    for (const int key : keys) {
        mDriver.press(key);
        EXPECT_EQ(inputLine(mConsole.snapshot()), inputLine(mConsole)) << key;
    }
    EXPECT_EQ(inputLine(mConsole.snapshot()), (SeenLine{"bd", 2}));
}

TEST_F(ConsoleSnapshots, HoldNothingOfTheBufferBeyondTheInput)
{
    mConsole.open();
    mDriver.type("ab\nlonger line");
    mDriver.press(KeyUp);
    const ConsoleSnapshot snapshot = mConsole.snapshot();
    EXPECT_EQ(snapshot.activeInput(), U"ab");
    EXPECT_LT(snapshot.activeInput().capacity(), 2048U);
}

TEST_F(ConsoleSnapshots, ShowTheKeptInputOfAClosedConsole)
{
    mConsole.open();
    mDriver.type("ab");
    mConsole.close();
    EXPECT_EQ(inputLine(mConsole.snapshot()), (SeenLine{"ab", 2}));
}

TEST_F(ConsoleSnapshots, CarryTheScrollOffset)
{
    mConsole.open();
    for (int i = 0; i < 20; ++i) {
        mConsole.newline();
    }
    mConsole.mouseWheel(Angle(70), Angle(0));
    EXPECT_EQ(mConsole.snapshot().scrollOffset(), 7U);
}

TEST_F(ConsoleSnapshots, ShareTheConsolesFont)
{
    const std::shared_ptr<QFont>& font = sharedFont(mConsole);
    const ConsoleSnapshot first = mConsole.snapshot();
    const ConsoleSnapshot second = mConsole.snapshot();
    EXPECT_EQ(first.font(), font.get());
    EXPECT_EQ(second.font(), font.get());
    EXPECT_EQ(font.use_count(), 3);
}

TEST_F(ConsoleSnapshots, ShowTheConsoleAsItWas)
{
    mConsole.open();
    mDriver.type("ab");
    const ConsoleSnapshot before = mConsole.snapshot();
    mConsole.newline();
    mDriver.type("c");
    EXPECT_EQ(before.lines().size(), 2U);
    EXPECT_EQ(inputLine(before), (SeenLine{"ab", 2}));
    EXPECT_EQ(mConsole.snapshot().lines().size(), 3U);
}

TEST_F(ConsoleSnapshots, LeaveTheConsoleAsItIs)
{
    mConsole.open();
    mDriver.type("ab");
    mDriver.press(KeyLeft);
    const Console& console = mConsole;
    expectEntriesEqual(console.snapshot().lines(), console.snapshot().lines());
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"ab", 1}));
    EXPECT_EQ(mDriver.log(), std::vector<std::string>());
}

TEST_F(ConsoleSnapshots, MayBeTakenOnAnotherThread)
{
    mConsole.open();
    mDriver.type("ab");
    SeenLine seen{};
    std::thread([&] { seen = inputLine(mConsole.snapshot()); }).join();
    EXPECT_EQ(seen, (SeenLine{"ab", 2}));
}

TEST_F(ConsoleSnapshots, OfAConsoleWithoutAFontHaveNone)
{
    sharedFont(mConsole).reset();
    EXPECT_EQ(mConsole.snapshot().font(), nullptr);
}

// The page that scrolling uses

TEST_F(ConsoleSnapshots, WithoutAFontAPageIs15Lines)
{
    const AssertRecorder recorder;
    mConsole.setWindowSize({800, 700});
    sharedFont(mConsole).reset();
    EXPECT_EQ(page(), 15U);
    ASSERT_FALSE(recorder.failures().empty());
    EXPECT_EQ(recorder.failures(),
              std::vector<std::string>(recorder.failures().size(), "Console:365: mFont"));
    EXPECT_EQ(recorder.messages(), std::vector<std::string>(recorder.failures().size(), ""));
}

TEST_F(ConsoleSnapshots, WithoutAFontNothingIsReportedWhereVerificationsAreHidden)
{
    const AssertRecorder recorder;
    const SilencedVerifications silence;
    sharedFont(mConsole).reset();
    EXPECT_EQ(page(), 15U);
    EXPECT_EQ(recorder.failures(), std::vector<std::string>());
}

TEST_F(ConsoleSnapshots, AWindowOf700PixelsHas43LinesOf16Pixels)
{
    const std::shared_ptr<QFont> font = fontOfHeight16();
    ASSERT_NE(font, nullptr);
    setFont(mConsole, *font);
    mConsole.setWindowSize({800, 700});
    EXPECT_EQ(page(), 43U);
}

TEST_F(ConsoleSnapshots, AWindowLowerThanALineHasPagesOfNoLines)
{
    const std::shared_ptr<QFont> font = fontOfHeight16();
    ASSERT_NE(font, nullptr);
    setFont(mConsole, *font);
    mConsole.setWindowSize({800, 15});
    EXPECT_EQ(page(), 0U);
    mConsole.setWindowSize({800, 16});
    EXPECT_EQ(page(), 1U);
}

// The value itself

/// Where a field that an accessor refers to lies in a snapshot, in bytes.
std::size_t offsetIn(const ConsoleSnapshot& snapshot, const void* field)
{
    return static_cast<std::size_t>(static_cast<const char*>(field) -
                                    reinterpret_cast<const char*>(&snapshot));
}

/// The value of a field that lies `offset` bytes from a snapshot's beginning, whatever the machine's byte order.
template <typename Field>
Field fieldAt(const ConsoleSnapshot& snapshot, std::size_t offset)
{
    Field field{};
    std::memcpy(&field, reinterpret_cast<const char*>(&snapshot) + offset, sizeof(field));
    return field;
}

TEST(ConsoleSnapshot, KeepsTheOrderOfItsFields)
{
    const ConsoleSnapshot snapshot = someSnapshot(nullptr);
    EXPECT_EQ(offsetof(Layout, lines), offsetIn(snapshot, &snapshot.lines()));
    EXPECT_EQ(offsetof(Layout, input), offsetIn(snapshot, &snapshot.activeInput()));
    EXPECT_EQ(offsetof(Layout, textColor), offsetIn(snapshot, &snapshot.textColor()));
    EXPECT_EQ(offsetof(Layout, backgroundColor), offsetIn(snapshot, &snapshot.backgroundColor()));
    EXPECT_EQ(2U, fieldAt<std::uint32_t>(snapshot, offsetof(Layout, cursorPosition)));
    EXPECT_EQ(U'_', fieldAt<char32_t>(snapshot, offsetof(Layout, cursorChar)));
    EXPECT_EQ(2.5, fieldAt<double>(snapshot, offsetof(Layout, cursorBlinkRate)));
    EXPECT_EQ(1234567890U, fieldAt<std::uint32_t>(snapshot, offsetof(Layout, scrollOffset)));
}

TEST(ConsoleSnapshotValue, IsBuiltFromItsFieldsInTheOrderOfItsAccessors)
{
    const auto font = std::make_shared<QFont>();
    expectSomeSnapshot(someSnapshot(font), font.get());
    EXPECT_EQ(font.use_count(), 1);
}

TEST(ConsoleSnapshotValue, MayHaveNoFont) { expectSomeSnapshot(someSnapshot(nullptr), nullptr); }

TEST(ConsoleSnapshotValue, IsCopiedWithTheFontShared)
{
    const auto font = std::make_shared<QFont>();
    const ConsoleSnapshot original = someSnapshot(font);
    ConsoleSnapshot copy = original;
    EXPECT_EQ(font.use_count(), 3);
    EXPECT_NE(copy.lines().data(), original.lines().data());
    expectSomeSnapshot(copy, font.get());
    copy = Console().snapshot();
    expectSomeSnapshot(original, font.get());
    EXPECT_EQ(font.use_count(), 2);
    copy = original;
    expectSomeSnapshot(copy, font.get());
}

TEST(ConsoleSnapshotValue, IsMovedWithoutCopyingItsLines)
{
    const auto font = std::make_shared<QFont>();
    ConsoleSnapshot original = someSnapshot(font);
    const LogEntry* const lines = original.lines().data();
    ConsoleSnapshot moved = std::move(original);
    EXPECT_EQ(moved.lines().data(), lines);
    EXPECT_EQ(font.use_count(), 2);
    expectSomeSnapshot(moved, font.get());
    ConsoleSnapshot assigned = Console().snapshot();
    assigned = std::move(moved);
    EXPECT_EQ(assigned.lines().data(), lines);
    expectSomeSnapshot(assigned, font.get());
}

TEST(ConsoleSnapshotValue, OutlivesItsConsole)
{
    auto console = std::make_unique<Console>();
    console->write(U"last words", Output);
    const ConsoleSnapshot snapshot = console->snapshot();
    console.reset();
    EXPECT_EQ(snapshot.lines().back().text, U"last words");
    ASSERT_NE(snapshot.font(), nullptr);
    EXPECT_EQ(snapshot.font()->family(), QStringLiteral("Consolas"));
    EXPECT_EQ(snapshot.font()->pointSize(), 10);
    EXPECT_FALSE(snapshot.font()->italic());
}

} // namespace
} // namespace zephyr::console
