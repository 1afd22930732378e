#include "sandbox/GreenPixels.h"
#include "sandbox/ProgramRun.h"
#include "support/VirtualDisplay.h"

#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>

namespace zephyr::test {
namespace {

/// A picture of a whole display.
QImage screenshot(const VirtualDisplay& display)
{
    const QByteArray png = display.answerOf(IMPORT_PROGRAM, {"-silent", "-window", "root", "png:-"});
    QImage image = QImage::fromData(png, "PNG");
    if (image.isNull()) {
        throw std::runtime_error("no picture of the display");
    }
    return image;
}

/// Takes pictures of a display while a program runs on it.
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
            mNow = screenshot(mDisplay);
            return isRight();
        });
        return mNow;
    }

    const VirtualDisplay& mDisplay;
    Program& mProgram;
    QImage mBefore;
    QImage mNow;
};

/// Starts the program on `display` and gives the keyboard to its window called `name`.
void startOn(const VirtualDisplay& display, Program& program, const QStringList& arguments,
             const QString& name)
{
    program.setEnvironment("DISPLAY", display.environment().value("DISPLAY"));
    program.setEnvironment("QT_QPA_PLATFORM", "xcb");
    program.setEnvironment("QT_IM_MODULE", "compose");
    program.setEnvironment("LC_ALL", "C.UTF-8");
    program.setEnvironment("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // keeps Qt from starting a message bus
    program.start(arguments);
    program.waitUntil([&] { return display.focus(name); });
}

void startSandboxOn(const VirtualDisplay& display, Program& program)
{
    startOn(display, program, {"--size", "800x600", "--no-startup", "--print-log"}, "zephyr-sandbox");
}

/// Pauses the simulation with the space bar, so that the picture stays the same until something else happens. The
/// console must be closed.
QImage pausedPicture(const VirtualDisplay& display, Camera& camera)
{
    camera.moving();
    display.send({"key", "space"});
    return camera.still();
}

TEST(X11, ShowsTheConsoleAndWhatIsTypedWithRealKeys)
{
    const VirtualDisplay display;
    Program program;
    startSandboxOn(display, program);
    Camera camera(display, program);
    const QImage closed = pausedPicture(display, camera);
    EXPECT_EQ(0, greenPixels(closed));

    display.send({"key", "grave"});
    const QImage open = camera.greenerThan(0);
    EXPECT_NE(closed, open);

    display.send({"type", "help"});
    display.send({"key", "Return"});
    const QImage helped = camera.greenerThan(greenPixels(open) + 100);
    EXPECT_NE(open, helped);

    display.send({"type", "quit"});
    display.send({"key", "Return"});
    const Ended ended = program.end();
    EXPECT_EQ(0, ended.exitCode) << ended.err;
    EXPECT_EQ("Zephyr Console:\n"
              "\n"
              ">> help\n"
              "Registered Commands:\n"
              "    alias\n"
              "    alias_save\n"
              "    clear\n"
              "    echo\n"
              "    help\n"
              "    history\n"
              "    log_save\n"
              "    obstacle\n"
              "    particles\n"
              "    quit\n"
              "    run\n"
              "    sim\n"
              "    vars\n"
              "    wind\n"
              "\n"
              "Aliases:\n"
              "\n"
              ">> quit\n",
              ended.out);
}

TEST(X11, RunsALineThatIsTypedWithRealKeys)
{
    const VirtualDisplay display;
    Program program;
    startSandboxOn(display, program);
    Camera camera(display, program);
    const QImage closed = pausedPicture(display, camera);

    display.send({"key", "grave"});
    display.send({"type", "wind set 5 5"});
    display.send({"key", "Escape", "ctrl+a", "Return"});
    camera.greenerThan(0);
    display.send({"key", "grave"});
    EXPECT_NE(closed, camera.withoutGreen()); // the HUD shows another wind

    display.send({"key", "grave"});
    display.send({"type", "quit"});
    display.send({"key", "Return"});
    const Ended ended = program.end();
    EXPECT_EQ(0, ended.exitCode) << ended.err;
    EXPECT_EQ("Zephyr Console:\n"
              "\n"
              ">> wind set 5 5\n"
              "    Wind: 5 m/s, heading 5 degrees, gust 0 m/s.\n"
              "\n"
              ">> quit\n",
              ended.out);
}

// Key codes, which stand for places on a keyboard.
const char* const kLeftOfOne = "49";
const char* const kE = "26"; // on all layouts below

/// A layout, the keys that type an accent on it, and the letter that results.
struct Layout
{
    QStringList name;   // for setxkbmap
    QStringList accent; // for xdotool
    const char* typed;
};

void PrintTo(const Layout& layout, std::ostream* out)
{
    *out << layout.name.join(QLatin1Char(' ')).toStdString();
}

class Keyboard : public testing::TestWithParam<Layout>
{
protected:
    Keyboard()
    {
        display.setLayout(GetParam().name);
        startSandboxOn(display, program);
    }

    ~Keyboard() override
    {
        program.process().kill();
        program.process().waitForFinished();
    }

    VirtualDisplay display;
    Program program;
    Camera camera{display, program};
};

TEST_P(Keyboard, OpensAndClosesTheConsoleWithTheKeyLeftOfOne)
{
    display.send({"key", kLeftOfOne});
    camera.greenerThan(0);
    display.send({"key", kLeftOfOne});
    camera.withoutGreen();
}

TEST_P(Keyboard, OpensAndClosesTheConsoleWithShiftEscape)
{
    display.send({"key", "shift+Escape"});
    camera.greenerThan(0);
    display.send({"key", "shift+Escape"});
    camera.withoutGreen();
}

TEST_P(Keyboard, TypesAccentsIntoTheConsole)
{
    display.send({"key", kLeftOfOne});
    camera.greenerThan(0);
    display.send(QStringList("key") + GetParam().accent +
                 QStringList({kE, "Return", "q", "u", "i", "t", "Return"}));
    const Ended ended = program.end();
    EXPECT_EQ(0, ended.exitCode) << ended.err;
    const std::string typed = GetParam().typed;
    EXPECT_EQ("Zephyr Console:\n\n>> " + typed + "\n'" + typed +
                  "' is not a recognized command.  Type 'help' to list available commands.\n\n>> quit\n",
              ended.out);
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, Keyboard,
    testing::Values(
        // This layout has no dead keys: accents need a Compose key.
        Layout{{"-layout", "us", "-option", "compose:ralt"}, {"108", "apostrophe"}, "\u00e9"},
        Layout{{"-layout", "de"}, {"21"}, "\u00e9"}),
    [](const testing::TestParamInfo<Layout>& tested) { return tested.param.name.at(1).toStdString(); });

/// Waits for the next line that the program prints.
std::string nextLine(Program& program)
{
    program.waitUntil([&] { return program.process().canReadLine(); });
    return program.process().readLine().chopped(1).toStdString();
}

TEST(X11, ProbesTheKeysOfAGermanKeyboard)
{
    VirtualDisplay display;
    display.setLayout({"-layout", "de"});
    Program program;
    startOn(display, program, {"--probe-keys"}, "zephyr-sandbox keys");

    const std::string toggles = ": toggles the console";
    const std::string doesNot = ": does not toggle the console";
    const std::string unheard = "release whose press went elsewhere: ";
    display.send({"key", "q"});
    EXPECT_EQ("press: key Key_Q (0x51), text \"q\", modifiers none, scan code 24" + doesNot,
              nextLine(program));

    // The input method keeps the presses of keys that it composes.
    display.send({"key", kLeftOfOne});
    EXPECT_EQ(unheard + "key Key_Dead_Circumflex (0x1001252), text \"\", modifiers none, scan code 49" +
                  toggles,
              nextLine(program));
    display.send({"key", kE});
    EXPECT_EQ("commit: text \"\\u00ea\"", nextLine(program));
    EXPECT_EQ(unheard + "key Key_E (0x45), text \"e\", modifiers none, scan code 26" + doesNot,
              nextLine(program));

    display.send({"keydown", "shift", "key", kLeftOfOne, "keyup", "shift"});
    EXPECT_EQ("press: key Key_Shift (0x1000020), text \"\", modifiers Shift, scan code 50" + doesNot,
              nextLine(program));
    EXPECT_EQ("press: key Key_degree (0xb0), text \"\\u00b0\", modifiers Shift, scan code 49" + doesNot,
              nextLine(program));

    display.send({"key", "Escape", "Escape"});
    const Ended ended = program.end();
    EXPECT_EQ(0, ended.exitCode);
    const std::string escape =
        "press: key Key_Escape (0x1000000), text \"\\u001b\", modifiers none, scan code 9" + doesNot + "\n";
    EXPECT_EQ(escape + escape, ended.out);
}

TEST(X11, ShowsTheKeysThatItProbes)
{
    const VirtualDisplay display;
    Program program;
    startOn(display, program, {"--probe-keys"}, "zephyr-sandbox keys");
    Camera camera(display, program);
    display.send({"key", "q"});
    camera.greenerThan(0);
    program.process().terminate();
    program.process().waitForFinished();
}

} // namespace
} // namespace zephyr::test
