#include "sandbox/SandboxWindow.h"

#include "sandbox/ConsoleInput.h"
#include "sandbox/NumberText.h"
#include "sandbox/Sandbox.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"

#include <QColor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QWheelEvent>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace zephyr::sandbox {

namespace {

constexpr char kTitle[] = "zephyr-sandbox";
constexpr char kHints[] =
    "Back-quote (`)  console     Space  pause     R  restart     G  gust     Arrows  wind";
constexpr char kState[] = "%1 particles     wind %2 m/s to %3\u00b0%4";
constexpr char kPaused[] = "     paused";

constexpr std::chrono::milliseconds kTickInterval(16);
constexpr double kMillisecondsPerSecond = 1e3;

constexpr double kKeyGust = 15.0; // metres a second
constexpr double kKeySpeed = 1.0; // metres a second
constexpr double kKeyTurn = 5.0;  // degrees
constexpr double kFullCircle = 360.0;

constexpr QColor kTextColor(150, 170, 195);
constexpr int kTextPixels = 13;
constexpr QColor kStripColor(5, 8, 16, 200);
constexpr int kStripHeight = 28; // pixels
constexpr int kMargin = 12;      // pixels

/// The seconds since the last call for the same clock; 0 the first time.
double restarted(QElapsedTimer& clock)
{
    if (!clock.isValid()) {
        clock.start();
        return 0.0;
    }
    return static_cast<double>(clock.restart()) / kMillisecondsPerSecond;
}

QString stateText(Sandbox& sandbox)
{
    const Wind& wind = sandbox.simulation().wind();
    return QString(kState)
        .arg(sandbox.simulation().particles().size())
        .arg(QString::fromStdString(textOf(wind.speed)), QString::fromStdString(textOf(wind.heading)),
             sandbox.clock().isPaused() ? kPaused : "");
}

void drawStrip(QPainter& painter, const QRect& strip, const QString& text)
{
    painter.fillRect(strip, kStripColor);
    painter.setPen(kTextColor);
    painter.drawText(strip.adjusted(kMargin, 0, -kMargin, 0), Qt::AlignLeft | Qt::AlignVCenter, text);
}

} // namespace

SandboxWindow::SandboxWindow(Sandbox& sandbox, ConsoleInput& input) : mSandbox(sandbox), mInput(input)
{
    setTitle(kTitle);
    mTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&mTimer, &QTimer::timeout, this, &SandboxWindow::tick);
    mTimer.start(kTickInterval);
}

void SandboxWindow::whenShown(std::function<void()> callback)
{
    mWhenShown = std::move(callback);
}

QImage SandboxWindow::frame()
{
    const ElapsedSimTime elapsed{Time(restarted(mFrameClock))};
    QImage image(size() * devicePixelRatio(), QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatio());
    QPainter painter(&image);
    mSimulationPainter.draw(mSandbox.simulation(), size(), painter);
    if (mSandbox.console().isOpen()) {
        drawConsole(elapsed, painter);
    } else {
        drawTexts(painter); // the console's text would stand on them
    }
    return image;
}

void SandboxWindow::paintEvent(QPaintEvent*)
{
    // By way of an image, as the console's renderer takes the device's size for physical pixels, which it is
    // for an image and isn't for a window.
    QPainter(this).drawImage(0, 0, frame());
    if (mWhenShown) {
        QTimer::singleShot(0, this, std::exchange(mWhenShown, nullptr));
    }
}

void SandboxWindow::resizeEvent(QResizeEvent* event)
{
    QRasterWindow::resizeEvent(event);
    const QSize size = event->size();
    mSandbox.console().setWindowSize({static_cast<unsigned>(std::max(size.width(), 0)),
                                      static_cast<unsigned>(std::max(size.height(), 0))});
}

void SandboxWindow::keyPressEvent(QKeyEvent* event)
{
    if (!mInput.keyPressed(event->key(), static_cast<int>(event->modifiers()), event->text()) &&
        !controlSimulation(event->key())) {
        event->ignore();
    }
    update();
}

void SandboxWindow::keyReleaseEvent(QKeyEvent* event)
{
    event->setAccepted(mInput.keyReleased(event->key(), static_cast<int>(event->modifiers()), event->text()));
}

void SandboxWindow::wheelEvent(QWheelEvent* event)
{
    event->setAccepted(mInput.wheelTurned(event->angleDelta()));
    update();
}

void SandboxWindow::tick()
{
    for (unsigned steps = mSandbox.clock().stepsFor(restarted(mTickClock)); steps > 0; --steps) {
        mSandbox.simulation().step();
    }
    update();
}

void SandboxWindow::drawTexts(QPainter& painter) const
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(kTextPixels);
    painter.setFont(font);
    drawStrip(painter, QRect(0, 0, width(), kStripHeight), stateText(mSandbox));
    drawStrip(painter, QRect(0, height() - kStripHeight, width(), kStripHeight), kHints);
}

void SandboxWindow::drawConsole(const ElapsedSimTime& elapsed, QPainter& painter)
{
    painter.save();
    mConsoleRenderer.render(elapsed, mSandbox.console().snapshot(), painter);
    painter.restore();
}

bool SandboxWindow::controlSimulation(int key)
{
    switch (key) {
    case Qt::Key_Space:
        mSandbox.clock().setPaused(!mSandbox.clock().isPaused());
        return true;
    case Qt::Key_R:
        mSandbox.simulation().reset();
        return true;
    case Qt::Key_G:
        mSandbox.simulation().startGust(kKeyGust);
        return true;
    case Qt::Key_Up:
        changeWind(kKeySpeed, 0.0);
        return true;
    case Qt::Key_Down:
        changeWind(-kKeySpeed, 0.0);
        return true;
    case Qt::Key_Left:
        changeWind(0.0, -kKeyTurn);
        return true;
    case Qt::Key_Right:
        changeWind(0.0, kKeyTurn);
        return true;
    default:
        return false;
    }
}

void SandboxWindow::changeWind(double speedChange, double headingChange)
{
    const Wind& wind = mSandbox.simulation().wind();
    const double heading = std::fmod(wind.heading + headingChange + kFullCircle, kFullCircle);
    mSandbox.simulation().setWind({std::clamp(wind.speed + speedChange, 0.0, kMaxWindSpeed), heading});
}

} // namespace zephyr::sandbox
