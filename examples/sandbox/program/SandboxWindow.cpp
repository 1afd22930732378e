#include "sandbox/program/SandboxWindow.h"

#include "sandbox/picture/FieldView.h"
#include "sandbox/program/Sandbox.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace zephyr::sandbox {

namespace {

constexpr char kTitle[] = "zephyr-sandbox";

constexpr std::chrono::milliseconds kTickInterval(16);
constexpr double kMillisecondsPerSecond = 1e3;

constexpr Qt::KeyboardModifiers kCommandModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

constexpr double kKeySpeed = 1.0; // metres a second
constexpr double kKeyTurn = 5.0;  // degrees

/// Seconds since the last call with the same clock; 0 on the first.
double restarted(QElapsedTimer& clock)
{
    if (!clock.isValid()) {
        clock.start();
        return 0.0;
    }
    return static_cast<double>(clock.restart()) / kMillisecondsPerSecond;
}

} // namespace

SandboxWindow::SandboxWindow(Sandbox& sandbox, bool isPlain)
    : mSandbox(sandbox),
      mObstacleMouse(sandbox.simulation()),
      mConsoleHost(std::make_unique<console::qt::ConsoleHost>(sandbox.sharedConsole(), this))
{
    setTitle(kTitle);
    mConsoleHost->setPlain(isPlain);
    mSandbox.recording().moveToBackground();
    mSandbox.whenClearing([this] { mConsoleHost->clearView(); });
    mSandbox.whenConsoleEnds([this] { mConsoleHost.reset(); });
    mTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&mTimer, &QTimer::timeout, this, &SandboxWindow::tick);
    mTimer.start(kTickInterval);
}

SandboxWindow::~SandboxWindow()
{
    mSandbox.whenClearing({});
    mSandbox.whenConsoleEnds({});
}

void SandboxWindow::whenShown(std::function<void()> callback) { mWhenShown = std::move(callback); }

void SandboxWindow::whenNotRecording(std::function<void()> callback)
{
    if (mSandbox.recording().isWorking()) {
        mWhenNotRecording = std::move(callback);
    } else {
        callback();
    }
}

QImage SandboxWindow::frame()
{
    QImage image(size() * devicePixelRatio(), QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatio());
    QPainter painter(&image);
    draw(painter);
    return image;
}

void SandboxWindow::draw(QPainter& painter)
{
    mSimulationPainter.draw(mSandbox.simulation(), size(), painter);
    if (!mSandbox.console().isOpen()) { // the texts of both would overlap
        mHud.draw(mSandbox.simulation(), mSandbox.clock(), size(), painter);
    }
    if (mConsoleHost) {
        mConsoleHost->paint(painter);
    }
}

void SandboxWindow::paintEvent(QPaintEvent*)
{
    mHud.countFrame(restarted(mFrameClock));
    QPainter painter(this);
    draw(painter);
    painter.end();
    if (mWhenShown) {
        QTimer::singleShot(0, this, std::exchange(mWhenShown, nullptr));
    }
}

void SandboxWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isPlain = (event->modifiers() & kCommandModifiers) == 0;
    event->setAccepted(isPlain && controlSimulation(event->key()));
    update(); // keys change a paused simulation, too
}

void SandboxWindow::mousePressEvent(QMouseEvent* event)
{
    if (!mSandbox.console().isOpen()) {
        mObstacleMouse.press(event->button(), event->position(), FieldView(size()));
        update();
    }
}

void SandboxWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (!mSandbox.console().isOpen()) {
        mObstacleMouse.move(event->position(), FieldView(size()));
        update();
    }
}

void SandboxWindow::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        mObstacleMouse.release();
    }
}

void SandboxWindow::tick()
{
    if (mSandbox.moveOn(restarted(mTickClock))) {
        update();
    }
    if (mWhenNotRecording && !mSandbox.recording().isWorking()) {
        std::exchange(mWhenNotRecording, nullptr)();
    }
}

bool SandboxWindow::controlSimulation(int key)
{
    switch (key) {
    case Qt::Key_Space: mSandbox.clock().setPaused(!mSandbox.clock().isPaused()); return true;
    case Qt::Key_R: mSandbox.restart(); return true;
    case Qt::Key_G: mSandbox.simulation().startGust(kDefaultGust); return true;
    case Qt::Key_Up: changeWind(kKeySpeed, 0.0); return true;
    case Qt::Key_Down: changeWind(-kKeySpeed, 0.0); return true;
    case Qt::Key_Left: changeWind(0.0, -kKeyTurn); return true;
    case Qt::Key_Right: changeWind(0.0, kKeyTurn); return true;
    default: return false;
    }
}

void SandboxWindow::changeWind(double speedChange, double headingChange)
{
    const Wind& wind = mSandbox.simulation().wind();
    const double heading = std::fmod(wind.heading + headingChange + kFullCircle, kFullCircle);
    mSandbox.simulation().setWind({std::clamp(wind.speed + speedChange, 0.0, kMaxWindSpeed), heading});
}

} // namespace zephyr::sandbox
