// What the host kit costs a program of widgets or with a window of its own: a key until the pixels changed, and a second in
// which nothing happens.

#include "support/Workload.h"
#include "zephyr/console/qt/ConsoleHost.h"
#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QApplication>
#include <QEventLoop>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QRasterWindow>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <sys/resource.h>

#include <cstdint>

namespace zephyr::bench {
namespace {

constexpr QSize kFullHd(1920, 1080);
constexpr int kIdleMs = 3000;
constexpr int kFlashTime = 1000; // milliseconds, Qt's default

/// Sends a key to the widget with the focus, and has painted what it changed.
void press(int key, const QString& text)
{
    QWidget& focus = *QApplication::focusWidget();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&focus, &event);
    }
    QCoreApplication::sendPostedEvents();
}

/// Types a letter and erases it in turn.
void typeIn(benchmark::State& state, QWidget& window)
{
    const auto shown = [&window] { return window.screen()->grabWindow(window.winId()).toImage(); };
    QCoreApplication::processEvents();
    const QImage before = shown();
    press(Qt::Key_Z, QStringLiteral("z"));
    if (shown() == before) {
        state.SkipWithError("a key changed no pixels");
    }
    bool isTyped = true;
    for (auto _ : state) {
        isTyped ? press(Qt::Key_Backspace, {}) : press(Qt::Key_Z, QStringLiteral("z"));
        isTyped = !isTyped;
    }
}

/// A window in full HD on the screen, with the focus in a child.
template <class Child>
void typeInChild(benchmark::State& state, QWidget& window, Child& child)
{
    window.setFixedSize(kFullHd);
    child.setFocus();
    window.show();
    window.activateWindow();
    typeIn(state, window);
}

void typeInLineEdit(benchmark::State& state)
{
    QWidget window;
    QLineEdit edit(&window);
    edit.setGeometry(0, kFullHd.height() - edit.sizeHint().height(), kFullHd.width(),
                     edit.sizeHint().height());
    typeInChild(state, window, edit);
}

void typeInConsole(benchmark::State& state)
{
    QWidget window;
    QWidget child(&window);
    child.setFocusPolicy(Qt::StrongFocus);
    console::widgets::ConsoleOverlay overlay(&window);
    fillLog(*overlay.console(), logLength(state));
    overlay.host().setOpen(true);
    typeInChild(state, window, child);
}

/// A program's window that paints what it must and no more.
class Window : public QRasterWindow
{
public:
    Window()
    {
        resize(kFullHd);
        show();
    }

    console::qt::ConsoleHost& host() { return mHost; }
    int paints() const { return mPaints; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(QRect(QPoint(0, 0), size()), Qt::darkCyan);
        mHost.paint(painter);
        ++mPaints;
    }

private:
    int mPaints = 0;
    console::qt::ConsoleHost mHost{this};
};

/// How often this thread waited, so far.
std::int64_t waits()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

/// Some seconds of an event loop in which nobody does anything.
void idle(benchmark::State& state, bool isOpen, int flashTime)
{
    QApplication::setCursorFlashTime(flashTime);
    Window window;
    window.host().setOpen(isOpen);
    QCoreApplication::processEvents();
    if (window.paints() == 0 || window.host().isOpen() != isOpen) {
        state.SkipWithError("the window was not painted as it should be");
    }
    for (auto _ : state) {
        const std::int64_t before = waits();
        QEventLoop loop;
        QTimer::singleShot(kIdleMs, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
        constexpr std::int64_t kOwn = 1; // the end of the loop
        state.counters["wakeups_per_s"] = static_cast<double>(waits() - before - kOwn) * 1000.0 / kIdleMs;
    }
    QApplication::setCursorFlashTime(kFlashTime);
}

void keySettings(benchmark::internal::Benchmark* registered)
{
    registered->Arg(kSmallLog)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
}

void idleSettings(benchmark::internal::Benchmark* registered)
{
    registered->Arg(kSmallLog)->Iterations(1)->Repetitions(1)->Unit(benchmark::kMillisecond);
}

BENCHMARK(typeInLineEdit)->Name("typing/floor")->Apply(keySettings);
BENCHMARK(typeInConsole)->Name("typing/console")->Apply(keySettings);
BENCHMARK_CAPTURE(idle, closed, false, kFlashTime)->Name("idle/closed")->Apply(idleSettings);
BENCHMARK_CAPTURE(idle, open, true, kFlashTime)->Name("idle/open")->Apply(idleSettings);
BENCHMARK_CAPTURE(idle, steady, true, 0)->Name("idle/steady")->Apply(idleSettings);

} // namespace
} // namespace zephyr::bench
