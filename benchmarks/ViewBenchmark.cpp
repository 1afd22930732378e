// The cost of a frame with the host kit's own view in it, in full HD and premultiplied ARGB. Its floor is what
// ConsoleRenderer costs on the same log, or the same frame with an empty log.

#include "support/Canvas.h"
#include "support/HostedLog.h"
#include "support/Workload.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"
#include "zephyr/console/ConsoleRenderer.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <Qt>

#include <cstddef>
#include <cstdint>
#include <string>

namespace zephyr::bench {
namespace {

using console::Console;
using console::ConsoleRenderer;
using console::ConsoleSnapshot;

const ElapsedSimTime kFrameTime(Time(1.0 / 60.0));
constexpr std::int64_t kHugeLog = 1000000;   // lines
constexpr std::int64_t kLongLine = 5000000;  // code points
constexpr std::int64_t kHugeLine = 50000000; // code points
constexpr std::int64_t kNoLine = 0;          // code points

void renderUnchanged(benchmark::State& state)
{
    Canvas canvas;
    Console console;
    fillLog(console, logLength(state));
    const ConsoleSnapshot snapshot = console.snapshot();
    ConsoleRenderer renderer;
    renderer.render(kFrameTime, snapshot, canvas.painter());
    for (auto _ : state) {
        renderer.render(kFrameTime, snapshot, canvas.painter());
    }
}

void paintUnchanged(benchmark::State& state)
{
    Canvas canvas;
    HostedLog log(logLength(state));
    log.host().setOpen(true);
    log.host().paint(canvas.painter());
    for (auto _ : state) {
        log.host().paint(canvas.painter());
    }
}

void renderAddedLine(benchmark::State& state)
{
    std::size_t written = 0;
    Canvas canvas;
    Console console;
    fillLog(console, logLength(state));
    ConsoleSnapshot snapshot = console.snapshot();
    console.newline();
    console.refresh(snapshot); // doubles the room for lines
    ConsoleRenderer renderer;
    renderer.render(kFrameTime, snapshot, canvas.painter());
    for (auto _ : state) {
        console.write(lineText(written++), console::Output);
        console.refresh(snapshot);
        renderer.render(kFrameTime, snapshot, canvas.painter());
    }
}

void paintAddedLine(benchmark::State& state)
{
    std::size_t written = 0;
    Canvas canvas;
    HostedLog log(logLength(state));
    log.host().setOpen(true);
    log.host().paint(canvas.painter());
    for (auto _ : state) {
        log.console().write(lineText(written++), console::Output);
        log.host().paint(canvas.painter());
    }
}

void renderFirst(benchmark::State& state)
{
    Canvas canvas;
    Console console;
    fillLog(console, logLength(state));
    for (auto _ : state) {
        const ConsoleSnapshot snapshot = console.snapshot();
        ConsoleRenderer renderer;
        renderer.render(kFrameTime, snapshot, canvas.painter());
    }
}

void openAndPaint(benchmark::State& state)
{
    Canvas canvas;
    HostedLog log(logLength(state));
    for (auto _ : state) {
        log.host().setOpen(true);
        log.host().paint(canvas.painter());
        state.PauseTiming();
        log.host().setOpen(false);
        log.host().paint(canvas.painter()); // frees what the frame kept
        state.ResumeTiming();
    }
}

/// A log whose newest line has some code points; none for no line.
void writeLongLine(Console& console, std::int64_t length)
{
    if (length != kNoLine) {
        console.write(std::u32string(static_cast<std::size_t>(length), U'x'), console::Output);
    }
}

/// A key, typed and erased in turn, and the frame that shows it.
void pressAndPaint(benchmark::State& state, bool isLong)
{
    Canvas canvas;
    HostedLog log(0);
    writeLongLine(log.console(), isLong ? state.range(0) : kNoLine);
    log.host().setOpen(true);
    log.host().paint(canvas.painter());
    bool isTyped = false;
    for (auto _ : state) {
        isTyped ? log.console().keyPressed(Qt::Key_Backspace, 0, {}) : log.console().keyPressed(0, 0, U"x");
        isTyped = !isTyped;
        log.host().paint(canvas.painter());
    }
}

void paintLongLine(benchmark::State& state, bool isLong)
{
    Canvas canvas;
    HostedLog log(0);
    writeLongLine(log.console(), isLong ? state.range(0) : kNoLine);
    log.host().setOpen(true);
    log.host().paint(canvas.painter());
    for (auto _ : state) {
        log.host().paint(canvas.painter());
    }
}

void frameSettings(benchmark::internal::Benchmark* registered)
{
    registered->Apply(logLengths)->Arg(kHugeLog)->Unit(benchmark::kMicrosecond);
}

void lineSettings(benchmark::internal::Benchmark* registered)
{
    registered->Arg(kLongLine)->Arg(kHugeLine)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
}

BENCHMARK(renderUnchanged)->Name("kit_unchanged/floor")->Apply(frameSettings);
BENCHMARK(paintUnchanged)->Name("kit_unchanged/console")->Apply(frameSettings);
BENCHMARK(renderAddedLine)->Name("kit_one_line/floor")->Apply(frameSettings);
BENCHMARK(paintAddedLine)->Name("kit_one_line/console")->Apply(frameSettings);
BENCHMARK(renderFirst)->Name("kit_first_frame/floor")->Apply(frameSettings);
BENCHMARK(openAndPaint)->Name("kit_first_frame/console")->Apply(frameSettings);
BENCHMARK_CAPTURE(paintLongLine, empty, false)->Name("kit_long_line/floor")->Apply(lineSettings);
BENCHMARK_CAPTURE(paintLongLine, long, true)->Name("kit_long_line/console")->Apply(lineSettings);
BENCHMARK_CAPTURE(pressAndPaint, empty, false)->Name("kit_long_line_key/floor")->Apply(lineSettings);
BENCHMARK_CAPTURE(pressAndPaint, long, true)->Name("kit_long_line_key/console")->Apply(lineSettings);

} // namespace
} // namespace zephyr::bench
