#include "FailingAllocation.h"
#include "support/ConsoleDriver.h"
#include "support/KeyTable.h"
#include "support/LogLine.h"
#include "support/LogOf.h"
#include "support/ScriptedCommand.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/DepthLimitError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::ConsoleDriver;
using test::FailingAllocation;
using Lines = std::vector<test::LogLine>;

// Too long for a string to hold without an allocation.
const std::u32string kLongText = U"a text that needs memory of its own";

void addSay(Console& console)
{
    test::addCommand(console, U"say").onExecute = [](const ConsoleArgs& args, Console& c) {
        c.write(args.subCmd() + kLongText, Output);
    };
}

/// A console with commands of a host, an alias, a log and a history.
class Subject
{
public:
    Subject()
    {
        addSay(mConsole);
        test::addCompletingCommand(mConsole, U"pick", {kLongText + U"1", kLongText + U"2"});
        mConsole.execute(U"alias both \"say one; say two\"");
        mConsole.open();
        mConsole.setWindowSize({400, 100});
        ConsoleDriver(mConsole).type("say an earlier line that needs memory\n");
    }

    Console& console() { return mConsole; }

private:
    Console mConsole;
};

/// Whether `log` begins with all of `before`.
testing::AssertionResult beginsWith(const Lines& log, const Lines& before)
{
    if (log.size() >= before.size() && std::equal(before.begin(), before.end(), log.begin())) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "an entry of the log was lost or changed";
}

/// Expects the console to work as if nothing had failed, its mutex included.
void expectUsable(Console& console)
{
    addSay(console);
    ConsoleDriver driver(console);
    EXPECT_LE(console.cursorPosition(), console.activeInput().size());
    console.open();
    driver.type("say x");
    EXPECT_EQ(driver.input(), "say x");
    EXPECT_EQ(
        test::linesAddedBy([&] { driver.press(test::KeyReturn); }, console),
        (Lines{test::echo("say x"), test::output("xa text that needs memory of its own"), test::output("")}));
    EXPECT_EQ(driver.input(), "");
}

class AllocationFailure : public testing::Test
{
protected:
    using Operation = std::function<void(Console&)>;

    /// Runs `operation` on a new console and lets the allocation after `successes` others fail. \return whether
    /// one failed.
    static bool failOnce(const Operation& prepare, const Operation& operation, std::size_t successes)
    {
        Subject subject;
        Console& console = subject.console();
        prepare(console);
        const Lines before = test::logLines(console, 0);
        const bool failed = runFailing(console, operation, successes);
        EXPECT_TRUE(beginsWith(test::logLines(console, 0), before));
        expectUsable(console);
        return failed;
    }

    /// Lets each allocation of `operation` fail in turn.
    static void failEverywhere(const Operation& operation, const Operation& prepare = [](Console&) {})
    {
        std::size_t successes = 0;
        while (failOnce(prepare, operation, successes)) {
            ++successes;
            ASSERT_FALSE(HasFailure()) << "after " << successes - 1 << " allocations";
        }
        EXPECT_GT(successes, 0U) << "nothing was allocated";
        RecordProperty("allocations", static_cast<int>(successes));
    }

    static void type(Console& console, const std::string& text) { ConsoleDriver(console).type(text); }

    static Operation executing(const std::u32string& line)
    {
        return [line](Console& console) { console.execute(line); };
    }

    static Operation pressing(int key, int modifiers = 0, const std::u32string& text = {})
    {
        return [key, modifiers, text](Console& console) { console.keyPressed(key, modifiers, text); };
    }

    static Operation typing(const std::string& text)
    {
        return [text](Console& console) { type(console, text); };
    }

    /// \return whether an allocation failed.
    static bool runFailing(Console& console, const Operation& operation, std::size_t successes)
    {
        const FailingAllocation failing(successes);
        try {
            operation(console);
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(failing.hasFailed());
        }
        return failing.hasFailed();
    }

    static bool hasAlias(Console& console, const std::u32string& wanted)
    {
        bool found = false;
        console.forEachAlias(
            [&](const std::u32string& name, const auto&) { found = found || name == wanted; });
        return found;
    }

    static std::vector<std::u32string> texts(const ConsoleSnapshot& snapshot)
    {
        std::vector<std::u32string> all;
        for (const LogEntry& entry : snapshot.lines()) {
            all.push_back(entry.text);
        }
        return all;
    }

    test::TemporaryDirectory mDirectory;
    test::WorkingDirectory mWorkingDirectory{mDirectory.path()};
};

TEST_F(AllocationFailure, LeavesNoConsoleWhereItIsConstructed)
{
    std::size_t successes = 0;
    for (bool failed = true; failed; ++successes) {
        const FailingAllocation failing(successes);
        try {
            const Console console;
            EXPECT_FALSE(failing.hasFailed()) << "a console was made without memory for it";
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(failing.hasFailed());
        }
        failed = failing.hasFailed();
    }
    EXPECT_GT(successes, 5U);
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereACommandRuns)
{
    failEverywhere(executing(U"say \"some words\" that need memory of their own"));
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereNothingIsCalledSo)
{
    failEverywhere(executing(U"nothing_that_is_registered at all"));
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereAnAliasRuns) { failEverywhere(executing(U"both")); }

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereAnAliasIsDefined)
{
    failEverywhere(executing(U"alias another_name_with_memory \"say a; say something longer\""));
}

TEST_F(AllocationFailure, SaysOfNoAliasThatItIsDoneWhereItIsNot)
{
    std::size_t successes = 0;
    for (bool failed = true; failed; ++successes) {
        Subject subject;
        failed = runFailing(subject.console(), executing(U"alias new_one_with_memory \"say a\""), successes);
        const Lines log = test::logLines(subject.console(), 0);
        const bool isSaid =
            std::count(log.begin(), log.end(), test::output("Done.", 4)) > 1; // the other alias wrote one
        const bool isDefined = hasAlias(subject.console(), U"new_one_with_memory");
        EXPECT_TRUE(isDefined || !isSaid) << "after " << successes << " allocations";
        EXPECT_TRUE(failed || isSaid);
    }
    EXPECT_GT(successes, 5U);
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereHelpIsWritten)
{
    failEverywhere(executing(U"help"));
    failEverywhere(executing(U"help *"));
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereACommandIsRedirected)
{
    failEverywhere(executing(U"say x > a_file_with_a_name_that_needs_memory"));
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereACommandReplacesItself)
{
    failEverywhere(executing(U"swap"), [](Console& console) {
        test::addCommand(console, U"swap").onExecute = [](const ConsoleArgs&, Console& c) {
            test::addCommand(c, U"swap");
        };
    });
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereACommandShutsItDown)
{
    failEverywhere(executing(U"quit"), [](Console& console) {
        test::addCommand(console, U"quit").onExecute = [](const ConsoleArgs&, Console& c) { c.shutdown(); };
    });
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereAFileRuns)
{
    const std::filesystem::path file =
        mDirectory.write("a.console", "say x\nsay \"words that need memory\"\n");
    failEverywhere([file](Console& console) { console.runFile(file); });
}

TEST_F(AllocationFailure, LeavesRunFileWhereALineDoesNotFitIntoMemory)
{
    const std::filesystem::path file = mDirectory.write("a.console", "say x\n" + std::string(100'000, 'x'));
    std::size_t successes = 0;
    for (bool failed = true; failed; ++successes) {
        Subject subject;
        const FailingAllocation failing(successes);
        bool hasLeft = false;
        try {
            subject.console().runFile(file);
        } catch (const std::bad_alloc&) {
            hasLeft = true;
        }
        failed = failing.hasFailed();
        EXPECT_EQ(hasLeft, failed) << "after " << successes << " allocations";
    }
    EXPECT_GT(successes, 10U);
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereALineIsSubmitted)
{
    failEverywhere(pressing(test::KeyReturn), typing("say \"several words\" that need memory"));
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereTheBufferGrows)
{
    // The buffer grows with each code point that is inserted, and moves once for that.
    failEverywhere(typing("y"), [](Console& console) {
        type(console, "x");
        console.keyPressed(test::KeyHome, 0, {});
    });
}

TEST_F(AllocationFailure, NeedsNoMemoryWhereWordsAreErasedOrPassed)
{
    for (const int key : {test::KeyBackspace, test::KeyDelete, test::KeyLeft, test::KeyRight}) {
        Subject subject;
        type(subject.console(), "some words that need memory of their own");
        for (int i = 0; i < 10; ++i) {
            subject.console().keyPressed(test::KeyLeft, 0, {});
        }
        EXPECT_FALSE(runFailing(subject.console(), pressing(key, test::kControl), 0));
        EXPECT_NE(ConsoleDriver(subject.console()).input() +
                      std::to_string(subject.console().cursorPosition()),
                  "some words that need memory of their own30")
            << "nothing was done";
    }
}

TEST_F(AllocationFailure, LeavesNoCompletionOfAnotherLineWhereOneIsBegun)
{
    const Operation completed = [](Console& console) { type(console, "pick an_argument_with_memory"); };
    failEverywhere(pressing(test::KeyTab), completed);

    std::size_t successes = 0;
    for (bool failed = true; failed; ++successes) {
        Subject subject;
        ConsoleDriver driver(subject.console());
        completed(subject.console());
        failed = runFailing(subject.console(), pressing(test::KeyTab), successes);
        driver.press(test::KeyTab);
        EXPECT_TRUE(driver.input().starts_with("pick a text that needs memory of its own")) << driver.input();
    }
}

TEST_F(AllocationFailure, LeavesASnapshotWhollyTakenOrNotAtAll)
{
    failEverywhere([](Console& console) { console.snapshot(); });
}

TEST_F(AllocationFailure, LeavesASnapshotAsItWasWhereItIsRefreshed)
{
    std::size_t successes = 0;
    for (bool failed = true; failed; ++successes) {
        Subject subject;
        Console& console = subject.console();
        ConsoleSnapshot snapshot = console.snapshot();
        const ConsoleSnapshot before = snapshot;
        for (std::size_t i = 0; i < 3 * before.lines().size(); ++i) {
            console.write(U"more than twice the lines, each a text that needs memory of its own", Output);
        }
        type(console, "a line that needs memory of its own");
        failed = runFailing(console, [&](Console& c) { c.refresh(snapshot); }, successes);
        const ConsoleSnapshot expected = failed ? before : console.snapshot();
        EXPECT_EQ(texts(snapshot), texts(expected));
        EXPECT_EQ(snapshot.activeInput(), expected.activeInput());
        EXPECT_EQ(snapshot.cursorPosition(), expected.cursorPosition());
        expectUsable(console);
    }
    EXPECT_GT(successes, 5U);
}

TEST_F(AllocationFailure, LeavesASnapshotAsItWasWhereManyLinesAreAdded)
{
    constexpr std::size_t kLines = 2050; // more than the log keeps in one piece
    std::size_t successes = 0;
    for (bool failed = true; failed; ++successes) {
        Subject subject;
        Console& console = subject.console();
        ConsoleSnapshot snapshot = console.snapshot();
        const std::size_t before = snapshot.lines().size();
        while (console.logSize() + 2 < kLines) {
            console.newline(); // which needs no memory
        }
        for (int i = 0; i < 4; ++i) {
            console.write(U"a text that needs memory of its own", Output);
        }
        failed = runFailing(console, [&](Console& c) { c.refresh(snapshot); }, successes);
        EXPECT_EQ(snapshot.lines().size(), failed ? before : console.logSize());
    }
    EXPECT_GT(successes, 4U);
}

TEST_F(AllocationFailure, RegistersACommandOrLeavesItToTheCaller)
{
    std::size_t successes = 0;
    for (bool failed = true; failed; ++successes) {
        Subject subject;
        std::unique_ptr<ConsoleCommand> command = std::make_unique<test::ScriptedCommand>(kLongText);
        failed = runFailing(
            subject.console(), [&](Console& c) { c.registerCommand(std::move(command)); }, successes);
        EXPECT_EQ(command != nullptr, failed);
        EXPECT_EQ(subject.console().lookupCommand(kLongText) == nullptr, failed);
        subject.console().execute(U"help"); // which lists every command
    }
    EXPECT_GT(successes, 1U);
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereItsObserversAreSet)
{
    const std::u32string text(100, U'x');
    failEverywhere(
        [text](Console& console) { console.setObserver([text, &console] { console.logSize(); }); });
    failEverywhere([](Console& console) { console.write(U"a text that needs memory of its own", Output); },
                   [text](Console& console) { console.setObserver([text] {}); });
    failEverywhere([text](Console& console) { console.addObserver([text, &console] { console.logSize(); }); },
                   [text](Console& console) {
                       console.setObserver([text] {});
                       console.addObserver([text] {});
                   });
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereAPartOfItsLogIsReadOrItsHistoryGrows)
{
    failEverywhere([](Console& console) {
        std::vector<LogEntry> entries;
        console.readLog(0, 10, entries);
    });
    failEverywhere([](Console& console) {
        console.writeIndented(U"a text that needs memory of its own", 4);
        console.readLogPart(console.logSize() - 1, 0, 100);
    });
    failEverywhere([](Console& console) { console.readInput(); },
                   typing("a line that needs memory of its own"));
    failEverywhere([](Console& console) { console.addToHistory(U"a line that needs memory of its own"); });
    failEverywhere([](Console& console) { console.history(); },
                   typing("a line that needs memory of its own\n"));
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereALineIsRefused)
{
    failEverywhere(
        [](Console& console) {
            try {
                console.execute(U"loop");
            } catch (const DepthLimitError&) {
                return;
            }
        },
        [](Console& console) {
            console.setDepthLimit(1);
            console.execute(U"alias loop loop");
        });
}

TEST_F(AllocationFailure, NeedsNoMemoryForAnArgumentThatIsThereAlready)
{
    const std::u32string text(100, U'x');
    test::ScriptedCommand command(U"cmd");
    const ArgHandlerFn handler = [text](const ConsoleArgs&, Console&) {};
    command.registerArgHandler(text, handler, text, text);
    const FailingAllocation failing(0);
    command.registerArgHandler(text, handler, text, text);
    EXPECT_FALSE(failing.hasFailed());
}

TEST_F(AllocationFailure, LeavesTheConsoleUsableWhereAnyThreadWrites)
{
    failEverywhere([](Console& console) { console.writeIndented("a text that needs memory of its own", 4); });
}

} // namespace
} // namespace zephyr::console
