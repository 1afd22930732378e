// The cost of a key, which must not depend on the length of the log or the history.

#include "support/Commands.h"
#include "support/Keys.h"
#include "support/Workload.h"

#include <Qt>

#include <memory>

namespace zephyr::bench {
namespace {

using console::Console;

constexpr std::int64_t kKeysInLine = 1000;
constexpr std::int64_t kShortHistory = 100;   // records
constexpr std::int64_t kLongHistory = 100000; // records
constexpr std::int64_t kUps = 10000;
constexpr std::int64_t kFirstTabs = 1000; // each erasure lowers the limit of the line, which starts at 2048

/// An open console with a log and a history. Each record of the history also adds to the log.
std::unique_ptr<Console> usedConsole(const benchmark::State& state)
{
    auto console = std::make_unique<Console>();
    console->registerCommand(std::make_unique<ManyCandidates>());
    console->open();
    for (std::int64_t i = 0; i < state.range(1); ++i) {
        type(*console, U"choose one");
        press(*console, Qt::Key_Return);
    }
    fillLog(*console, logLength(state));
    return console;
}

void typeAKey(benchmark::State& state)
{
    const std::unique_ptr<Console> console = usedConsole(state);
    const std::u32string text = U"a";
    while (state.KeepRunningBatch(kKeysInLine)) {
        console->open(); // with an empty line
        for (std::int64_t i = 0; i < kKeysInLine; ++i) {
            console->keyPressed(Qt::Key_A, Qt::NoModifier, text);
        }
    }
}

void pressFirstTab(benchmark::State& state)
{
    const std::unique_ptr<Console> console = usedConsole(state);
    type(*console, U"choose ");
    for (auto _ : state) {
        press(*console, Qt::Key_Tab);
        // Edit the line, so that the next Tab asks for candidates again.
        press(*console, Qt::Key_Backspace);
        type(*console, U"e");
    }
}

void pressNextTab(benchmark::State& state)
{
    const std::unique_ptr<Console> console = usedConsole(state);
    type(*console, U"choose ");
    press(*console, Qt::Key_Tab);
    for (auto _ : state) {
        press(*console, Qt::Key_Tab);
    }
}

void pressUp(benchmark::State& state)
{
    const std::unique_ptr<Console> console = usedConsole(state);
    for (auto _ : state) {
        press(*console, Qt::Key_Up);
    }
}

void keySettings(benchmark::internal::Benchmark* registered)
{
    for (const std::int64_t log : {kSmallLog, kMediumLog, kLargeLog}) {
        registered->Args({log, kShortHistory});
    }
    registered->Args({kLargeLog, kLongHistory})->MeasureProcessCPUTime();
}

BENCHMARK(typeAKey)->Name("key/console")->Apply(keySettings);
BENCHMARK(pressFirstTab)->Name("first_tab/console")->Apply(keySettings)->Iterations(kFirstTabs);
BENCHMARK(pressNextTab)->Name("next_tab/console")->Apply(keySettings);
BENCHMARK(pressUp)->Name("up/console")->Apply(keySettings)->Iterations(kUps);

} // namespace
} // namespace zephyr::bench
