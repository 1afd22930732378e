// Paints the pictures of the view that the documentation shows: ViewPictures FOLDER

#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleArgs.h"
#include "zephyr/console/ConsoleCommand.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QPainter>
#include <QString>
#include <QTest>
#include <QWindow>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

using zephyr::console::Console;
using zephyr::console::ConsoleArgs;
using zephyr::console::Output;
using zephyr::console::qt::ConsoleHost;

constexpr QSize kSize(720, 330);

class WindCommand : public zephyr::console::ConsoleCommand
{
public:
    WindCommand()
    {
        const auto nothing = [](const ConsoleArgs&, Console&) {};
        registerArgHandler(U"set", nothing, U"Sets the wind's speed and heading.", U"");
        registerArgHandler(U"show", nothing, U"Shows the wind.", U"");
        registerArgHandler(U"still", nothing, U"Ends all wind.", U"");
    }

    std::u32string name() const override { return U"wind"; }

    std::vector<std::u32string> getAutoCompleteResults(const ConsoleArgs&) override
    {
        return {U"set", U"show", U"still"};
    }
};

/// A console in a window that is never shown, and its pictures.
class Scene
{
public:
    Scene()
    {
        mWindow.resize(kSize);
        mConsole->registerCommand(std::make_unique<WindCommand>());
        mHost.setOpen(true);
    }

    void write(const std::u32string& text) { mConsole->write(text, Output); }

    void writeIndented(const std::u32string& text) { mConsole->writeIndented(text, 4); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&mWindow, key, modifiers);
    }

    void type(const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(&mWindow, &event);
    }

    void compose(const QString& text)
    {
        QInputMethodEvent event(text, {});
        QCoreApplication::sendEvent(&mWindow, &event);
    }

    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(&mWindow, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(&mWindow, to);
        QTest::mouseRelease(&mWindow, Qt::LeftButton, Qt::NoModifier, to);
    }

    QImage picture(double ratio = 1.0)
    {
        QImage image(kSize * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        painter.fillRect(QRect(QPoint(0, 0), kSize), QColor(70, 110, 170)); // a sky
        painter.fillRect(QRect(0, kSize.height() * 2 / 3, kSize.width(), kSize.height()),
                         QColor(150, 140, 90));
        mHost.paint(painter);
        return image;
    }

private:
    std::shared_ptr<Console> mConsole = std::make_shared<Console>();
    QWindow mWindow;
    ConsoleHost mHost{mConsole, &mWindow};
};

QImage wrapping(double ratio)
{
    Scene scene;
    scene.write(U"A line that is longer than the window is wide goes on in the next row, wrapped at its "
                U"words, and is "
                U"copied as the one line that it is.");
    scene.writeIndented(
        U"An answer stands behind its indent, and so do the rows in which a long one goes on, to the "
        U"last.");
    scene.write(
        U"Wide \u6f22\u5b57\u304b\u306a \ud55c\uad6d\uc5b4, from the right "
        U"\u0627\u0644\u0633\u0644\u0627\u0645 \u05e9\u05dc\u05d5\u05dd, marks e\u0301 a\u0308\u0323, signs "
        U"\u2211 \u263a, emoji \U0001F680 \U0001F469\u200D\U0001F52C, a tab\there.");
    scene.write(U"Qt warning: the texture is larger than the card can hold");
    scene.write(U"Qt critical: the file of the scene can't be read");
    scene.type("wind set a line being typed that wraps as well, with the cursor always in sight at its end");
    scene.press(Qt::Key_Escape);
    return scene.picture(ratio);
}

Scene& withTallAnswer(Scene& scene)
{
    for (int i = 1; i <= 200; ++i) {
        scene.write(QStringLiteral("particle %1: speed %2 m/s").arg(i).arg(i % 17).toStdU32String());
    }
    scene.picture(); // the view scrolls by what was painted
    return scene;
}

QImage scrolled()
{
    Scene scene;
    withTallAnswer(scene).press(Qt::Key_PageUp);
    scene.write(U"written meanwhile");
    scene.write(U"and this");
    return scene.picture();
}

QImage selected()
{
    Scene scene;
    withTallAnswer(scene).drag({60, 80}, {150, 200});
    return scene.picture();
}

QImage found()
{
    Scene scene;
    withTallAnswer(scene).press(Qt::Key_F, Qt::ControlModifier);
    scene.type("Speed 12");
    QTest::qWait(100);
    scene.press(Qt::Key_Return);
    return scene.picture();
}

QImage offered()
{
    Scene scene;
    withTallAnswer(scene).type("wind s");
    scene.press(Qt::Key_Tab);
    scene.press(Qt::Key_Tab);
    return scene.picture();
}

QImage recalled()
{
    Scene scene;
    for (const char* const line : {"wind set 4 90", "wind show", "help"}) {
        scene.type(line);
        scene.press(Qt::Key_Return);
    }
    scene.press(Qt::Key_R, Qt::ControlModifier);
    scene.type("set");
    return scene.picture();
}

QImage composed()
{
    Scene scene;
    scene.type("wind show ");
    scene.press(Qt::Key_Escape);
    scene.compose(QString::fromUtf8("\u306b\u307b\u3093"));
    return scene.picture();
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argc > 1 ? argv[1] : ".");
    bool isSaved = true;
    const auto save = [&](const QImage& image, const char* name) {
        isSaved = image.save(folder + "/view-" + name + ".png") && isSaved;
    };
    save(wrapping(1.0), "wrapping");
    save(wrapping(1.25), "wrapping-1.25");
    save(wrapping(1.5), "wrapping-1.5");
    save(wrapping(2.0), "wrapping-2");
    save(scrolled(), "scrolled");
    save(selected(), "selected");
    save(found(), "found");
    save(offered(), "offered");
    save(recalled(), "recalled");
    save(composed(), "composed");
    if (!isSaved) {
        std::fprintf(stderr, "a picture can't be written\n");
    }
    return isSaved ? 0 : 1;
}
