#include "Generators.h"
#include "support/ConsoleDriver.h"
#include "support/KeyTable.h"
#include "support/LogLine.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <QFont> // complete, since RapidCheck inspects a pointer to it

namespace zephyr::console {
namespace {

std::vector<test::LogLine> linesOf(const ConsoleSnapshot& snapshot)
{
    std::vector<test::LogLine> lines;
    for (const LogEntry& entry : snapshot.lines()) {
        lines.push_back({StringUtil::toString(entry.text), entry.type, entry.indent});
    }
    return lines;
}

void assertSame(const ConsoleSnapshot& refreshed, const ConsoleSnapshot& fresh)
{
    RC_ASSERT(linesOf(refreshed) == linesOf(fresh));
    RC_ASSERT(refreshed.activeInput() == fresh.activeInput());
    RC_ASSERT(refreshed.textColor() == fresh.textColor());
    RC_ASSERT(refreshed.backgroundColor() == fresh.backgroundColor());
    RC_ASSERT(refreshed.cursorPosition() == fresh.cursorPosition());
    RC_ASSERT(refreshed.cursorChar() == fresh.cursorChar());
    RC_ASSERT(refreshed.cursorBlinkRate() == fresh.cursorBlinkRate());
    RC_ASSERT(refreshed.scrollOffset() == fresh.scrollOffset());
    RC_ASSERT(refreshed.font() == fresh.font());
}

void changeSomething(Console& console)
{
    test::ConsoleDriver driver(console);
    switch (*rc::gen::inRange(0, 5)) {
    case 0:
        console.writeIndented(*test::textOf(test::with(test::kPlainCharacters, {"\n", " "})), Prompt,
                              *rc::gen::inRange(0U, 9U));
        break;
    case 1: console.execute(U"help *"); break;
    case 2: driver.press(*rc::gen::elementOf(test::kKeys)); break;
    case 3: console.mouseWheel(Angle(*rc::gen::inRange(-200, 200)), Angle(0)); break;
    default: driver.type(*test::textOf(test::with(test::kPlainCharacters, {" "})));
    }
}

RC_GTEST_PROP(RefreshProperties, ARefreshedSnapshotEqualsANewOneWheneverItIsRefreshed,
              (std::vector<bool> refreshes))
{
    Console console;
    console.open();
    console.setWindowSize({400, 90});
    ConsoleSnapshot early = console.snapshot();
    ConsoleSnapshot often = early;
    for (const bool now : refreshes) {
        changeSomething(console);
        if (now) {
            console.refresh(often);
            assertSame(often, console.snapshot());
        }
    }
    console.refresh(early);
    assertSame(early, console.snapshot());
}

RC_GTEST_PROP(RefreshProperties, ASnapshotOfAnotherConsoleIsReplacedWhole, ())
{
    Console console;
    Console other;
    for (int count = *rc::gen::inRange(0, 6); count > 0; --count) {
        changeSomething(console);
        changeSomething(other);
    }
    ConsoleSnapshot snapshot = other.snapshot();
    console.refresh(snapshot);
    assertSame(snapshot, console.snapshot());
}

} // namespace
} // namespace zephyr::console
