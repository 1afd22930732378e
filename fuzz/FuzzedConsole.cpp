#include "FuzzedConsole.h"

#include "GuardedCommands.h"
#include "Require.h"
#include "support/ConsoleInside.h"

#include <algorithm>
#include <memory>
#include <system_error>

namespace zephyr::fuzz {

namespace {

using console::Console;
using console::ConsoleSnapshot;
using console::LogEntry;

constexpr unsigned kInnerLines = 8;
constexpr unsigned kAliasDefinitions = 8;

bool sameEntry(const LogEntry& left, const LogEntry& right)
{
    return left.type == right.type && left.indent == right.indent && left.text == right.text;
}

bool sameLog(const ConsoleSnapshot& left, const ConsoleSnapshot& right)
{
    return std::equal(left.lines().begin(), left.lines().end(), right.lines().begin(), right.lines().end(),
                      sameEntry);
}

} // namespace

FuzzedConsole::FuzzedConsole() : mLatest(mConsole.snapshot())
{
    auto& aliases = test::partsOf(mConsole).mAliases;
    mConsole.registerCommand(std::make_unique<GuardedAlias>(aliases, mBudget));
    mConsole.registerCommand(std::make_unique<GuardedRun>(mBudget));
    registerHostCommands(mConsole, mBudget);
    const std::vector<std::filesystem::path> runPaths = mConsole.runPaths();
    mConsole.removeRunpath(runPaths.front()); // the fuzzer's own directory
}

bool FuzzedConsole::step(const std::function<void(Console&)>& run)
{
    mBudget = {kInnerLines, kAliasDefinitions, false};
    bool threw = false;
    try {
        run(mConsole);
    } catch (const CommandFailure&) {
        threw = true;
    } catch (const std::filesystem::filesystem_error& error) {
        threw = true;
        require(std::string(error.what()).find("exists") != std::string::npos,
                "only searching a file throws");
    } catch (const std::system_error& error) {
        threw = true;
        require(error.code() == std::errc::resource_deadlock_would_occur, "only the full line throws");
    }
    check();
    return threw;
}

void FuzzedConsole::checkLog(const ConsoleSnapshot& snapshot) const
{
    require(snapshot.lines().size() >= mLatest.lines().size(), "the log only grows");
    require(std::equal(mLatest.lines().begin(), mLatest.lines().end(), snapshot.lines().begin(), sameEntry),
            "an entry of the log never changes");
    require(snapshot.scrollOffset() <= snapshot.lines().size(), "scrolling ends at the oldest entry");
}

void FuzzedConsole::checkInput(const ConsoleSnapshot& snapshot) const
{
    const std::u32string& buffer = test::inputBuffer(mConsole);
    const std::size_t length = test::inputLength(mConsole);
    require(mConsole.cursorPosition() <= length, "the cursor is within the line");
    require(mConsole.activeInput() == buffer.substr(0, std::min(length, buffer.size())),
            "the active input is what of the line the buffer holds");
    require(snapshot.activeInput() == mConsole.activeInput(), "the snapshot has the console's input");
    require(snapshot.cursorPosition() == mConsole.cursorPosition(), "the snapshot has the console's cursor");
}

void FuzzedConsole::checkAppearance(const ConsoleSnapshot& snapshot) const
{
    require(snapshot.textColor() == mConsole.textColor(), "the snapshot has the console's text colour");
    require(snapshot.backgroundColor() == mConsole.backgroundColor(), "the snapshot has the background");
    require(snapshot.cursorChar() == mConsole.cursorChar(),
            "the snapshot has the console's cursor code point");
    require(snapshot.cursorBlinkRate() == static_cast<double>(mConsole.cursorBlinkRate()),
            "the snapshot has the console's blink rate");
    require(snapshot.font() != nullptr, "the snapshot has a font");
}

void FuzzedConsole::check()
{
    const ConsoleSnapshot snapshot = mConsole.snapshot(); // hangs or throws if the mutex is still locked
    checkLog(snapshot);
    checkInput(snapshot);
    checkAppearance(snapshot);

    mConsole.refresh(mLatest);
    require(sameLog(mLatest, snapshot), "a refreshed snapshot has the log of a new one");
    require(mLatest.activeInput() == snapshot.activeInput(),
            "a refreshed snapshot has the input of a new one");
    require(mLatest.cursorPosition() == snapshot.cursorPosition(), "a refreshed snapshot has the new cursor");
    require(mLatest.scrollOffset() == snapshot.scrollOffset(),
            "a refreshed snapshot has the new scroll offset");
}

std::u32string confined(std::u32string line)
{
    const auto redirection = std::find(line.begin(), line.end(), U'>');
    line.erase(std::remove(redirection, line.end(), U'/'), line.end());
    return line;
}

} // namespace zephyr::fuzz
