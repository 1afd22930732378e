#ifndef ZEPHYR_SANDBOX_PROGRAM_SANDBOXWINDOW_H
#define ZEPHYR_SANDBOX_PROGRAM_SANDBOXWINDOW_H

#include "sandbox/picture/Hud.h"
#include "sandbox/picture/SimulationPainter.h"
#include "sandbox/program/ObstacleMouse.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QElapsedTimer>
#include <QImage>
#include <QRasterWindow>
#include <QTimer>

#include <functional>
#include <memory>

namespace zephyr::sandbox {

class Sandbox;

/// The window of a sandbox: runs its simulation in real time, draws it, and draws the open console over it.
///
/// - It is: a QRasterWindow, not a QOpenGLWindow, so that it also works without a graphics card. A ConsoleHost adds the
///   console. Keys that the console ignores control the simulation: space pauses, R resets, G makes the wind gust, the
///   arrows change the wind. The mouse places and removes obstacles while the console is closed.
/// - Threads: the application's main thread.
/// - Ownership: borrows the sandbox, which must outlive it.
/// - Failure: the ConsoleHost handles exceptions of commands.
class SandboxWindow : public QRasterWindow
{
public:
    /// Moves the sandbox's recordings to the background, where the window keeps them working. A plain window draws the
    /// console without the kit's view.
    explicit SandboxWindow(Sandbox& sandbox, bool isPlain = false);
    ~SandboxWindow() override;

    /// `callback` is called once, after the window has been painted for the first time.
    void whenShown(std::function<void()> callback);

    /// `callback` is called once: at once if no recording is working, or else when it has ended.
    void whenNotRecording(std::function<void()> callback);

    /// A picture of the window as it is now, at the screen's own resolution.
    QImage frame();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void tick();
    void draw(QPainter& painter);
    bool controlSimulation(int key);
    void changeWind(double speedChange, double headingChange);

    Sandbox& mSandbox;
    ObstacleMouse mObstacleMouse;
    SimulationPainter mSimulationPainter;
    Hud mHud;
    std::unique_ptr<console::qt::ConsoleHost> mConsoleHost; // null once `quit` has run
    QTimer mTimer;
    QElapsedTimer mTickClock;
    QElapsedTimer mFrameClock;
    std::function<void()> mWhenShown;
    std::function<void()> mWhenNotRecording;
};

} // namespace zephyr::sandbox

#endif
