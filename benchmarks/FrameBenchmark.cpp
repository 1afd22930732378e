// What a frame costs with the console in it: full HD, premultiplied ARGB. The floor is the pixels and nothing
// else: one fillRect() and a drawStaticText() for each log line that shows.

#include "support/Workload.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"
#include "zephyr/console/ConsoleRenderer.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStaticText>
#include <QString>

#include <algorithm>
#include <limits>
#include <memory>

namespace zephyr::bench {
namespace {

using console::Console;
using console::ConsoleRenderer;
using console::ConsoleSnapshot;
using console::LogEntry;

constexpr int kWidth = 1920;  // pixels
constexpr int kHeight = 1080; // pixels
constexpr std::uint32_t kNewest = 0;
constexpr std::uint32_t kOldest = std::numeric_limits<std::uint32_t>::max();

const ElapsedSimTime kFrameTime(Time(1.0 / 60.0));
const QColor kText(0, 255, 0, 255);
const QColor kBackground(0, 0, 0, 204);

/// A picture with an active painter.
class Canvas
{
public:
    Canvas() : mImage(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied), mPainter(begun(mImage)) {}

    QPainter& painter() { return *mPainter; }

private:
    static std::unique_ptr<QPainter> begun(QImage& image)
    {
        image.fill(Qt::darkCyan);
        return std::make_unique<QPainter>(&image);
    }

    QImage mImage;
    std::unique_ptr<QPainter> mPainter;
};

ConsoleSnapshot snapshotOf(const Console& console, std::uint32_t scrollOffset)
{
    const ConsoleSnapshot now = console.snapshot();
    return {now.lines(),           now.activeInput(),    now.textColor(),
            now.backgroundColor(), now.cursorPosition(), now.cursorChar(),
            now.cursorBlinkRate(), scrollOffset,         std::make_shared<QFont>(*now.font())};
}

ConsoleSnapshot snapshotOf(std::size_t lines, std::uint32_t scrollOffset)
{
    Console console;
    fillLog(console, lines);
    return snapshotOf(console, scrollOffset);
}

/// The log lines that show in one view, drawn and nothing else.
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
        const auto fitting = static_cast<std::ptrdiff_t>(kHeight / mLineHeight);
        // The newest lines stand above the prompt and an empty line.
        mShown = snapshot.scrollOffset() == kNewest
                     ? std::vector<LogEntry>(log.end() - (fitting - 2), log.end())
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

void drawFloor(benchmark::State& state, std::uint32_t scrollOffset)
{
    Canvas canvas;
    PlainFrame frame(snapshotOf(logLength(state), scrollOffset), canvas.painter());
    frame.layOut();
    frame.draw();
    for (auto _ : state) {
        frame.draw();
    }
}

void renderView(benchmark::State& state, std::uint32_t scrollOffset)
{
    Canvas canvas;
    const ConsoleSnapshot snapshot = snapshotOf(logLength(state), scrollOffset);
    ConsoleRenderer renderer;
    renderer.render(kFrameTime, snapshot, canvas.painter());
    for (auto _ : state) {
        renderer.render(kFrameTime, snapshot, canvas.painter());
    }
}

void layOutAndDrawFloor(benchmark::State& state, std::uint32_t scrollOffset)
{
    Canvas canvas;
    PlainFrame frame(snapshotOf(logLength(state), scrollOffset), canvas.painter());
    for (auto _ : state) {
        frame.layOut();
        frame.draw();
    }
}

void renderFirstFrame(benchmark::State& state, std::uint32_t scrollOffset)
{
    Canvas canvas;
    const ConsoleSnapshot snapshot = snapshotOf(logLength(state), scrollOffset);
    for (auto _ : state) {
        ConsoleRenderer renderer;
        renderer.render(kFrameTime, snapshot, canvas.painter());
    }
}

void refreshAndRender(benchmark::State& state)
{
    Canvas canvas;
    Console console;
    fillLog(console, logLength(state));
    ConsoleSnapshot snapshot = console.snapshot();
    console.newline();
    console.refresh(snapshot); // makes room for as many lines again
    ConsoleRenderer renderer;
    renderer.render(kFrameTime, snapshot, canvas.painter());
    for (auto _ : state) {
        console.write(lineText(state.iterations()), console::Output);
        console.refresh(snapshot);
        renderer.render(kFrameTime, snapshot, canvas.painter());
    }
}

void snapshotAndRender(benchmark::State& state)
{
    Canvas canvas;
    Console console;
    fillLog(console, logLength(state));
    ConsoleRenderer renderer;
    renderer.render(kFrameTime, console.snapshot(), canvas.painter());
    for (auto _ : state) {
        console.write(lineText(state.iterations()), console::Output);
        renderer.render(kFrameTime, console.snapshot(), canvas.painter());
    }
}

/// What a user would take instead: a read-only text field with the same lines in the same look.
std::unique_ptr<QPlainTextEdit> filledTextEdit(std::size_t lines)
{
    QString text;
    for (std::size_t i = 0; i < lines; ++i) {
        text += QString::fromStdU32String(lineText(i)) + QLatin1Char(i + 1 == lines ? ' ' : '\n');
    }
    auto edit = std::make_unique<QPlainTextEdit>(text);
    QPalette palette;
    palette.setColor(QPalette::Base, kBackground);
    palette.setColor(QPalette::Text, kText);
    edit->setPalette(palette);
    edit->setFont(*Console().snapshot().font());
    edit->setReadOnly(true);
    edit->setUndoRedoEnabled(false);
    edit->setFrameShape(QFrame::NoFrame);
    edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit->resize(kWidth, kHeight);
    edit->show(); // or it would not know how many lines fit
    return edit;
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
    Canvas canvas;
    const std::unique_ptr<QPlainTextEdit> edit = filledTextEdit(logLength(state));
    scrollTo(*edit, &QScrollBar::maximum);
    edit->render(&canvas.painter());
    for (auto _ : state) {
        edit->appendPlainText(QString::fromStdU32String(lineText(state.iterations())));
        edit->render(&canvas.painter());
    }
}

void frameSettings(benchmark::internal::Benchmark* registered)
{
    registered->Apply(logLengths)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(drawFloor, newest, kNewest)->Name("render_newest/floor")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderView, newest, kNewest)->Name("render_newest/console")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderTextEdit, newest, &QScrollBar::maximum)
    ->Name("render_newest/textedit")
    ->Apply(frameSettings);

BENCHMARK_CAPTURE(drawFloor, oldest, kOldest)->Name("render_oldest/floor")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderView, oldest, kOldest)->Name("render_oldest/console")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderTextEdit, oldest, &QScrollBar::minimum)
    ->Name("render_oldest/textedit")
    ->Apply(frameSettings);

BENCHMARK_CAPTURE(drawFloor, one_line, kNewest)->Name("one_line/floor")->Apply(frameSettings);
BENCHMARK(refreshAndRender)->Name("one_line/console")->Apply(frameSettings);
BENCHMARK(appendAndRenderTextEdit)->Name("one_line/textedit")->Apply(frameSettings);
BENCHMARK_CAPTURE(drawFloor, one_line_copy, kNewest)->Name("one_line_copy/floor")->Apply(frameSettings);
BENCHMARK(snapshotAndRender)->Name("one_line_copy/console")->Apply(frameSettings);

BENCHMARK_CAPTURE(layOutAndDrawFloor, newest, kNewest)->Name("first_frame/floor")->Apply(frameSettings);
BENCHMARK_CAPTURE(renderFirstFrame, newest, kNewest)->Name("first_frame/console")->Apply(frameSettings);
BENCHMARK_CAPTURE(layOutAndDrawFloor, oldest, kOldest)
    ->Name("first_frame_oldest/floor")
    ->Apply(frameSettings);
BENCHMARK_CAPTURE(renderFirstFrame, oldest, kOldest)
    ->Name("first_frame_oldest/console")
    ->Apply(frameSettings);

} // namespace
} // namespace zephyr::bench
