#ifndef ZEPHYR_SANDBOX_SANDBOXWINDOW_H
#define ZEPHYR_SANDBOX_SANDBOXWINDOW_H

#include "sandbox/SimulationPainter.h"
#include "zephyr/console/ConsoleRenderer.h"

#include <QElapsedTimer>
#include <QImage>
#include <QRasterWindow>
#include <QTimer>

#include <functional>

namespace zephyr {
class ElapsedSimTime;
}

namespace zephyr::sandbox {

class ConsoleInput;
class Sandbox;

/// The window of a sandbox: runs its simulation in real time, draws it, and draws the console over it while
/// that is open.
///
/// - It is: a QRasterWindow, not a QOpenGLWindow, so that it works on every machine, one without a graphics
///   card included. Keys, wheel and size go to the console; only keys that it leaves alone work the
///   simulation: space pauses, R resets, G lets the wind gust, the arrows change the wind.
/// - Threads: the application's main thread.
/// - Ownership: borrows the sandbox and the input, which must outlive it.
/// - Failure: none of its own; ConsoleInput deals with what commands throw.
class SandboxWindow : public QRasterWindow
{
public:
    SandboxWindow(Sandbox& sandbox, ConsoleInput& input);

    /// `callback` is called once, after the window has been painted for the first time.
    void whenShown(std::function<void()> callback);

    /// Draws a frame as it is now and answers it, at the screen's own resolution.
    QImage frame();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void tick();
    void drawTexts(QPainter& painter) const;
    void drawConsole(const ElapsedSimTime& elapsed, QPainter& painter);
    bool controlSimulation(int key);
    void changeWind(double speedChange, double headingChange);

    Sandbox& mSandbox;
    ConsoleInput& mInput;
    SimulationPainter mSimulationPainter;
    console::ConsoleRenderer mConsoleRenderer;
    QTimer mTimer;
    QElapsedTimer mTickClock;
    QElapsedTimer mFrameClock;
    std::function<void()> mWhenShown;
};

} // namespace zephyr::sandbox

#endif
