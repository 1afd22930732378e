// The memory of a log line: the growth of the allocated memory, overhead and spare room included, divided by the number
// of lines. The figures are the same in every run. The times mean nothing.

#include "support/Canvas.h"
#include "support/HostedLog.h"
#include "support/Workload.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"
#include "zephyr/console/ConsoleRenderer.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace zephyr::bench {
namespace {

using console::Console;
using console::ConsoleRenderer;
using console::ConsoleSnapshot;

const ElapsedSimTime kFrameTime(Time(1.0 / 60.0));

/// Bytes currently allocated.
double bytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// Reports the bytes allocated since `before`, divided by the number of lines.
void reportSince(benchmark::State& state, double before)
{
    state.counters["bytes_per_line"] = (bytesInUse() - before) / static_cast<double>(state.range(0));
}

void measureVector(benchmark::State& state)
{
    for (auto _ : state) {
        const double before = bytesInUse();
        const std::vector<console::LogEntry> log = grownLog(logLength(state));
        reportSince(state, before);
    }
}

void measureConsole(benchmark::State& state)
{
    for (auto _ : state) {
        const double before = bytesInUse();
        Console console;
        fillLog(console, logLength(state));
        reportSince(state, before);
    }
}

void measureSnapshot(benchmark::State& state)
{
    Console console;
    fillLog(console, logLength(state));
    for (auto _ : state) {
        const double before = bytesInUse();
        const ConsoleSnapshot snapshot = console.snapshot();
        reportSince(state, before);
    }
}

void measureRefreshedSnapshot(benchmark::State& state)
{
    Console console;
    fillLog(console, logLength(state));
    for (auto _ : state) {
        const ConsoleSnapshot earlier = console.snapshot();
        console.newline();
        const double before = bytesInUse();
        ConsoleSnapshot snapshot = earlier;
        console.refresh(snapshot); // grows the room for lines
        reportSince(state, before);
    }
}

/// A renderer that drew the newest lines of a log into a full HD image.
class DrawnLog
{
public:
    explicit DrawnLog(std::size_t lines) : mImage(1920, 1080, QImage::Format_ARGB32_Premultiplied)
    {
        mConsole.open();
        fillLog(mConsole, lines);
        mConsole.refresh(mSnapshot);
        ConsoleRenderer().render(kFrameTime, mSnapshot, mPainter); // so that Qt already has the letters
    }

    void drawFrame() { mRenderer.render(kFrameTime, mSnapshot, mPainter); }

    void drawEveryLine()
    {
        constexpr double kDegreesOfHalfAPage = 300.0; // 30 lines, fewer than a page
        for (std::uint32_t scrolled = 1; mSnapshot.scrollOffset() != scrolled; mConsole.refresh(mSnapshot)) {
            drawFrame();
            scrolled = mSnapshot.scrollOffset();
            mConsole.mouseWheel(Angle(kDegreesOfHalfAPage), Angle(0.0));
        }
    }

private:
    Console mConsole;
    ConsoleSnapshot mSnapshot = mConsole.snapshot();
    QImage mImage;
    QPainter mPainter{&mImage};
    ConsoleRenderer mRenderer;
};

void measureRendererAfterAFrame(benchmark::State& state)
{
    DrawnLog log(logLength(state));
    for (auto _ : state) {
        const double before = bytesInUse();
        log.drawFrame();
        reportSince(state, before);
    }
}

void measureRendererAfterEveryLine(benchmark::State& state)
{
    DrawnLog log(logLength(state));
    for (auto _ : state) {
        const double before = bytesInUse();
        log.drawEveryLine();
        reportSince(state, before);
    }
}

/// What the host kit keeps beside the log while the console is open, the picture of the view included.
void measureOpenKit(benchmark::State& state)
{
    Canvas canvas;
    HostedLog log(logLength(state));
    HostedLog other(0); // so that Qt already has the letters
    other.host().setOpen(true);
    other.host().paint(canvas.painter());
    for (auto _ : state) {
        const double before = bytesInUse();
        log.host().setOpen(true);
        log.host().paint(canvas.painter());
        reportSince(state, before);
    }
}

void measureClosedKit(benchmark::State& state)
{
    Canvas canvas;
    HostedLog log(logLength(state));
    HostedLog other(0);
    other.host().setOpen(true);
    other.host().paint(canvas.painter());
    for (auto _ : state) {
        const double before = bytesInUse();
        log.host().setOpen(true);
        log.host().paint(canvas.painter());
        log.host().setOpen(false);
        log.host().paint(canvas.painter());
        reportSince(state, before);
    }
}

/// What the host kit keeps after 100,000 lines, or all, were scrolled through.
void measureScrolledKit(benchmark::State& state)
{
    constexpr std::size_t kScrolled = 100000; // lines
    Canvas canvas;
    HostedLog log(logLength(state));
    HostedLog other(0);
    other.host().setOpen(true);
    other.host().paint(canvas.painter());
    for (auto _ : state) {
        const double before = bytesInUse();
        log.host().setOpen(true);
        log.host().paint(canvas.painter());
        for (std::size_t seen = 0; seen < std::min(kScrolled, logLength(state)); seen += log.page()) {
            log.pageUp();
            log.host().paint(canvas.painter());
        }
        reportSince(state, before);
        const QImage scrolled = canvas.image().copy();
        log.pageUp();
        log.host().paint(canvas.painter());
        if (logLength(state) > kScrolled && canvas.image() == scrolled) {
            state.SkipWithError("the log doesn't scroll");
        }
    }
}

void measureMirror(benchmark::State& state)
{
    const QTemporaryDir directory;
    HostedLog log(logLength(state));
    for (auto _ : state) {
        const double before = bytesInUse();
        if (!log.host().mirrorLog(directory.filePath(QStringLiteral("log")))) {
            state.SkipWithError("the mirror could not be written");
        }
        log.console().newline();
        reportSince(state, before);
    }
}

void memorySettings(benchmark::internal::Benchmark* registered)
{
    registered->Apply(logLengths)->Iterations(1)->Repetitions(1);
}

void kitSettings(benchmark::internal::Benchmark* registered)
{
    constexpr std::int64_t kHugeLog = 1000000; // lines
    registered->Apply(memorySettings)->Arg(kHugeLog);
}

BENCHMARK(measureVector)->Name("memory/floor")->Apply(memorySettings);
BENCHMARK(measureConsole)->Name("memory/console")->Apply(kitSettings);
BENCHMARK(measureSnapshot)->Name("memory/snapshot")->Apply(memorySettings);
BENCHMARK(measureRefreshedSnapshot)->Name("memory/refreshed")->Apply(memorySettings);
BENCHMARK(measureRendererAfterAFrame)->Name("memory/first_frame")->Apply(memorySettings);
BENCHMARK(measureRendererAfterEveryLine)->Name("memory/every_line")->Apply(memorySettings);
BENCHMARK(measureOpenKit)->Name("memory/kit_open")->Apply(kitSettings);
BENCHMARK(measureClosedKit)->Name("memory/kit_closed")->Apply(kitSettings);
BENCHMARK(measureScrolledKit)->Name("memory/kit_scrolled")->Apply(kitSettings);
BENCHMARK(measureMirror)->Name("memory/mirror")->Apply(kitSettings);

} // namespace
} // namespace zephyr::bench
