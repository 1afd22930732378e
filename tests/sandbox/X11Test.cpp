#include "sandbox/ProgramRun.h"

#include <QColor>
#include <QCoreApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace zephyr::test {
namespace {

/// An X server without a screen, on a display of this process's own.
class VirtualDisplay
{
public:
    // A free number that the server picks itself may be one that another server is just cleaning up behind.
    VirtualDisplay() : mName(QString(":%1").arg(100 + QCoreApplication::applicationPid() % 50000))
    {
        // Without -noreset the server starts anew, and turns others away, whenever its only client leaves.
        mServer.start(XVFB_PROGRAM, {mName, "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten",
                                     "tcp", "-noreset"});
        if (!mServer.waitForReadyRead(kProcessTimeout)) {
            throw std::runtime_error("no X server: " + mServer.readAllStandardError().toStdString());
        }
    }

    ~VirtualDisplay()
    {
        mServer.terminate();
        mServer.waitForFinished(kProcessTimeout);
    }

    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    QString name() const { return mName; }

    /// Gives the keyboard to the window called `name`. \return whether it has it already; until then try again.
    bool focus(const QString& name) const
    {
        const QByteArray window =
            run(XDOTOOL_PROGRAM, {"search", "--onlyvisible", "--name", "^" + name + "$"});
        if (!window.isEmpty() && run(XDOTOOL_PROGRAM, {"getwindowfocus", "-f"}) == window) {
            return true;
        }
        run(XDOTOOL_PROGRAM, {"windowfocus", window.trimmed()});
        return false;
    }

    /// Sends key events to the window that has the focus.
    void sendKeys(const QStringList& words) const { run(XDOTOOL_PROGRAM, words); }

    /// What a camera would see.
    QImage screenshot() const
    {
        QImage image = QImage::fromData(run(IMPORT_PROGRAM, {"-silent", "-window", "root", "png:-"}), "PNG");
        if (image.isNull()) {
            throw std::runtime_error("no picture of the display");
        }
        return image;
    }

private:
    /// Runs a program on the display and answers what it printed.
    QByteArray run(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", mName);
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        if (!process.waitForFinished(kProcessTimeout)) {
            throw std::runtime_error((program + " hung: " + arguments.join(' ')).toStdString());
        }
        return process.readAllStandardOutput();
    }

    QString mName;
    QProcess mServer;
};

/// How many pixels are as green as the console's text alone is.
int greenPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixelColor(x, y) == QColor(0, 255, 0) ? 1 : 0;
        }
    }
    return count;
}

/// A window as it can be seen on a display.
class Camera
{
public:
    Camera(const VirtualDisplay& display, Program& program) : mDisplay(display), mProgram(program) {}

    /// Takes pictures until one has more than `count` green pixels.
    QImage greenerThan(int count)
    {
        return takeUntil([&] { return greenPixels(mNow) > count; });
    }

    /// Takes pictures until one has no green pixels.
    QImage withoutGreen()
    {
        return takeUntil([&] { return greenPixels(mNow) == 0; });
    }

    /// Takes pictures until one differs from the one before.
    QImage moving()
    {
        return takeUntil([&] { return !mBefore.isNull() && mNow != mBefore; });
    }

    /// Takes pictures until one is the same as the one before.
    QImage still()
    {
        return takeUntil([&] { return mNow == mBefore; });
    }

private:
    QImage takeUntil(const std::function<bool()>& isRight)
    {
        mNow = QImage();
        mProgram.waitUntil([&] {
            mBefore = mNow;
            mNow = mDisplay.screenshot();
            return isRight();
        });
        return mNow;
    }

    const VirtualDisplay& mDisplay;
    Program& mProgram;
    QImage mBefore;
    QImage mNow;
};

TEST(X11, TypesIntoTheConsoleWithRealKeys)
{
    const VirtualDisplay display;
    Program program;
    program.setEnvironment("DISPLAY", display.name());
    program.setEnvironment("QT_QPA_PLATFORM", "xcb");
    program.setEnvironment("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // or Qt starts a message bus of its own
    program.start({"--size", "800x600", "--no-startup", "--print-log"});
    program.waitUntil([&] { return display.focus("zephyr-sandbox"); });

    Camera camera(display, program);
    camera.moving();

    // With the console closed, the space bar is the simulation's and stops it: pictures differ no more by
    // themselves.
    display.sendKeys({"key", "space"});
    const QImage closed = camera.still();
    EXPECT_EQ(0, greenPixels(closed));

    display.sendKeys({"key", "grave"});
    const QImage open = camera.greenerThan(0);
    EXPECT_NE(closed, open);

    display.sendKeys({"type", "help"});
    display.sendKeys({"key", "Return"});
    const QImage helped = camera.greenerThan(2 * greenPixels(open));
    EXPECT_NE(open, helped);

    display.sendKeys({"type", "wind set 5 5"});
    display.sendKeys({"key", "Escape", "ctrl+a", "Return"});
    display.sendKeys({"key", "grave"});
    EXPECT_NE(closed, camera.withoutGreen()); // the wind is another one

    display.sendKeys({"key", "grave"});
    display.sendKeys({"type", "quit"});
    display.sendKeys({"key", "Return"});
    const Ended ended = program.end();
    EXPECT_EQ(0, ended.exitCode) << ended.err;
    EXPECT_EQ("Zephyr Console:\n"
              "\n"
              ">> help\n"
              "Registered Commands:\n"
              "    alias\n"
              "    help\n"
              "    particles\n"
              "    quit\n"
              "    run\n"
              "    sim\n"
              "    wind\n"
              "\n"
              "Aliases:\n"
              "\n"
              ">> wind set 5 5\n"
              "    Wind: 5 m/s, heading 5 degrees, gust 0 m/s.\n"
              "\n"
              ">> quit\n",
              ended.out);
}

} // namespace
} // namespace zephyr::test
