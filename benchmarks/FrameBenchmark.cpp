// The cost of a frame with the console in it, in full HD and premultiplied ARGB. The floor only draws the pixels: one
// fillRect(), and one drawStaticText() for each visible log line.

#include "support/Canvas.h"
#include "support/TextEdit.h"
#include "support/Workload.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"
#include "zephyr/console/ConsoleRenderer.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStaticText>
#include <QString>

#include <algorithm>
#include <memory>

namespace zephyr::bench {
namespace {

using console::Console;
using console::ConsoleRenderer;
using console::ConsoleSnapshot;
using console::LogEntry;

enum class View
{
    Newest,
    Oldest
};

const ElapsedSimTime kFrameTime(Time(1.0 / 60.0));

int linesThatFit(const QFont& font) { return kHeight / QFontMetrics(font).height(); }

/// A snapshot scrolled to the newest lines, or to the oldest ones.
ConsoleSnapshot snapshotOf(std::size_t lines, View view)
{
    Console console;
    fillLog(console, lines);
    const ConsoleSnapshot now = console.snapshot();
    const auto font = std::make_shared<QFont>(*now.font());
    const std::size_t back = view == View::Newest ? 0 : lines - static_cast<std::size_t>(linesThatFit(*font));
    return {now.lines(),
            now.activeInput(),
            now.textColor(),
            now.backgroundColor(),
            now.cursorPosition(),
            now.cursorChar(),
            now.cursorBlinkRate(),
            static_cast<std::uint32_t>(back),
            font};
}

/// Draws the log lines that one view shows, and nothing else.
class PlainFrame
{
public:
    PlainFrame(const ConsoleSnapshot& snapshot, QPainter& p)
        : mPainter(p), mLineHeight(QFontMetrics(*snapshot.font()).height())
    {
        p.setFont(*snapshot.font());
        p.setPen(kText);
        p.setRenderHint(QPainter::TextAntialiasing, true);
        const std::vector<LogEntry>& log = snapshot.lines();
        const auto fitting = static_cast<std::ptrdiff_t>(linesThatFit(*snapshot.font()));
        // The newest lines stand above the prompt and an empty line.
        mShown = snapshot.scrollOffset() == 0 ? std::vector<LogEntry>(log.end() - (fitting - 2), log.end())
                                              : std::vector<LogEntry>(log.begin(), log.begin() + fitting);
    }

    void layOut()
    {
        mLines.clear();
        for (const LogEntry& entry : mShown) {
            mLines.emplace_back(QString::fromStdU32String(entry.text));
            mLines.back().setTextFormat(Qt::PlainText);
        }
    }

    void draw()
    {
        mPainter.fillRect(QRect(0, 0, kWidth, kHeight), kBackground);
        int top = 0;
        for (const QStaticText& line : mLines) {
            mPainter.drawStaticText(QPoint(0, top), line);
            top += mLineHeight;
        }
    }

private:
    QPainter& mPainter;
    int mLineHeight;
    std::vector<LogEntry> mShown;
    std::vector<QStaticText> mLines;
};

void drawFloor(benchmark::State& state, View view)
{
    Canvas canvas;
    PlainFrame frame(snapshotOf(logLength(state), view), canvas.painter());
    frame.layOut();
    frame.draw();
    for (auto _ : state) {
        frame.draw();
    }
}

void renderView(benchmark::State& state, View view)
{
    Canvas canvas;
    const ConsoleSnapshot snapshot = snapshotOf(logLength(state), view);
    ConsoleRenderer renderer;
    renderer.render(kFrameTime, snapshot, canvas.painter());
    for (auto _ : state) {
        renderer.render(kFrameTime, snapshot, canvas.painter());
    }
}

void layOutAndDrawFloor(benchmark::State& state, View view)
{
    Canvas canvas;
    PlainFrame frame(snapshotOf(logLength(state), view), canvas.painter());
    for (auto _ : state) {
        frame.layOut();
        frame.draw();
    }
}

void renderFirstFrame(benchmark::State& state, View view)
{
    Canvas canvas;
    const ConsoleSnapshot snapshot = snapshotOf(logLength(state), view);
    for (auto _ : state) {
        ConsoleRenderer renderer;
        renderer.render(kFrameTime, snapshot, canvas.painter());
    }
}

/// A renderer that has only shown one end of the log shows the other.
void jumpToOldest(benchmark::State& state)
{
    Canvas canvas;
    const ConsoleSnapshot newest = snapshotOf(logLength(state), View::Newest);
    const ConsoleSnapshot oldest = snapshotOf(logLength(state), View::Oldest);
    for (auto _ : state) {
        state.PauseTiming();
        ConsoleRenderer renderer;
        renderer.render(kFrameTime, newest, canvas.painter());
        state.ResumeTiming();
        renderer.render(kFrameTime, oldest, canvas.painter());
    }
}

void refreshAndRender(benchmark::State& state)
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

void snapshotAndRender(benchmark::State& state)
{
    std::size_t written = 0;
    Canvas canvas;
    Console console;
    fillLog(console, logLength(state));
    ConsoleRenderer renderer;
    renderer.render(kFrameTime, console.snapshot(), canvas.painter());
    for (auto _ : state) {
        console.write(lineText(written++), console::Output);
        renderer.render(kFrameTime, console.snapshot(), canvas.painter());
    }
}

using ScrollBarEnd = int (QScrollBar::*)() const;

void scrollTo(const QPlainTextEdit& edit, ScrollBarEnd end)
{
    QScrollBar& bar = *edit.verticalScrollBar();
    bar.setValue((bar.*end)());
}

void renderTextEdit(benchmark::State& state, ScrollBarEnd end)
{
    Canvas canvas;
    const std::unique_ptr<QPlainTextEdit> edit = filledTextEdit(logLength(state));
    scrollTo(*edit, end);
    edit->render(&canvas.painter());
    for (auto _ : state) {
        edit->render(&canvas.painter());
    }
}

void appendAndRenderTextEdit(benchmark::State& state)
{
    std::size_t written = 0;
    Canvas canvas;
    const std::unique_ptr<QPlainTextEdit> edit = filledTextEdit(logLength(state));
    scrollTo(*edit, &QScrollBar::maximum);
    edit->render(&canvas.painter());
    for (auto _ : state) {
        edit->appendPlainText(QString::fromStdU32String(lineText(written++)));
        edit->render(&canvas.painter());
    }
}

void frameSettings(benchmark::internal::Benchmark* registered)
{
    registered->Apply(logLengths)->Unit(benchmark::kMicrosecond);
}

/// Up to a log of a million lines.
void hugeSettings(benchmark::internal::Benchmark* registered)
{
    constexpr std::int64_t kHugeLog = 1000000; // lines
    registered->Apply(frameSettings)->Arg(kHugeLog);
}

BENCHMARK_CAPTURE(drawFloor, newest, View::Newest)->Name("render_newest/floor")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderView, newest, View::Newest)->Name("render_newest/console")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderTextEdit, newest, &QScrollBar::maximum)
    ->Name("render_newest/textedit")
    ->Apply(frameSettings);

BENCHMARK_CAPTURE(drawFloor, oldest, View::Oldest)->Name("render_oldest/floor")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderView, oldest, View::Oldest)->Name("render_oldest/console")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderTextEdit, oldest, &QScrollBar::minimum)
    ->Name("render_oldest/textedit")
    ->Apply(frameSettings);

BENCHMARK_CAPTURE(drawFloor, one_line, View::Newest)->Name("one_line/floor")->Apply(frameSettings);
BENCHMARK(refreshAndRender)->Name("one_line/console")->Apply(frameSettings);
BENCHMARK(appendAndRenderTextEdit)->Name("one_line/textedit")->Apply(frameSettings);
BENCHMARK_CAPTURE(drawFloor, one_line_copy, View::Newest)->Name("one_line_copy/floor")->Apply(frameSettings);
BENCHMARK(snapshotAndRender)->Name("one_line_copy/console")->Apply(frameSettings);

BENCHMARK_CAPTURE(layOutAndDrawFloor, newest, View::Newest)->Name("first_frame/floor")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderFirstFrame, newest, View::Newest)->Name("first_frame/console")->Apply(frameSettings);
BENCHMARK_CAPTURE(layOutAndDrawFloor, oldest, View::Oldest)
    ->Name("first_frame_oldest/floor")
    ->Apply(hugeSettings);
BENCHMARK_CAPTURE(renderFirstFrame, oldest, View::Oldest)
    ->Name("first_frame_oldest/console")
    ->Apply(hugeSettings);
BENCHMARK_CAPTURE(layOutAndDrawFloor, oldest, View::Oldest)->Name("jump/floor")->Apply(frameSettings);
BENCHMARK(jumpToOldest)->Name("jump/console")->Apply(frameSettings);

} // namespace
} // namespace zephyr::bench
