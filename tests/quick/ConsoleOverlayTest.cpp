#include "minimal/ConsolePicture.h"
#include "quick/Scene.h"
#include "support/PlainRenderer.h"
#include "support/TemporaryDirectory.h"

#include <QClipboard>
#include <QFile>
#include <QFontMetrics>
#include <QSignalSpy>

namespace zephyr::test {
namespace {

using Lines = std::vector<std::string>;

const QColor kRed(100, 0, 0);

/// Whether `picture` shows the open console over one dark colour, with its cursor or without.
bool showsConsole(const QImage& picture, const Console& console, QColor behind, int scale)
{
    QImage expected(picture.size(), QImage::Format_RGB32);
    expected.setDevicePixelRatio(scale);
    expected.fill(behind);
    {
        QPainter painter(&expected);
        PlainRenderer().render(0.0, console.snapshot(), painter);
    }
    const int lineHeight = QFontMetrics(*console.snapshot().font()).height();
    return showsTheSameText(expected, picture, scale * lineHeight, 0.01) &&
           expected.pixel(expected.width() - 1, expected.height() - 1) ==
               picture.pixel(picture.width() - 1, picture.height() - 1);
}

class ConsoleOverlayItem : public Scene
{
protected:
    void showOverRed(const QByteArray& overlayProperties = {})
    {
        show("ConsoleOverlay { objectName: 'overlay'; plain: true; " + overlayProperties + " }\n" +
             "Rectangle { anchors.fill: parent; color: '#640000' }");
    }

    /// How many of the display's pixels make one of the window's; a picture of the software renderer doesn't say.
    int scale() const { return qRound(window.effectiveDevicePixelRatio()); }

    /// Waits for a picture that shows the console, since the cursor blinks.
    bool comesToShowConsole()
    {
        return QTest::qWaitFor([this] { return showsConsole(picture(), console(), kRed, scale()); });
    }

    bool showsRedOnly()
    {
        QImage red = picture();
        red.fill(kRed);
        return picture() == red;
    }
};

TEST_F(ConsoleOverlayItem, FillsItsParentAndFollowsItsSize)
{
    show("Item { objectName: 'pane'; width: 100; height: 50; ConsoleOverlay { objectName: 'overlay' } }");
    EXPECT_EQ(QSizeF(100, 50), overlay().size());
    find("pane").setSize({200, 150});
    EXPECT_EQ(QSizeF(200, 150), overlay().size());
    overlay().setParentItem(window.contentItem());
    EXPECT_EQ(window.contentItem()->size(), overlay().size());
    find("pane").setSize({30, 20});
    EXPECT_EQ(window.contentItem()->size(), overlay().size());
}

TEST_F(ConsoleOverlayItem, KeepsTheSizeAndTheAnchorsThatItIsGiven)
{
    show("ConsoleOverlay { objectName: 'sized'; width: 90; height: 40 }\n"
         "ConsoleOverlay { objectName: 'half'; height: parent.height / 2 }\n"
         "ConsoleOverlay { objectName: 'anchored'; anchors.fill: parent; anchors.margins: 10 }");
    EXPECT_EQ(QSizeF(90, 40), find("sized").size());
    EXPECT_EQ(QSizeF(320, 100), find("half").size());
    EXPECT_EQ(QSizeF(300, 180), find("anchored").size());
    rootItem().setSize({160, 100});
    EXPECT_EQ(QSizeF(90, 40), find("sized").size());
    EXPECT_EQ(QSizeF(160, 50), find("half").size());
    EXPECT_EQ(QSizeF(140, 80), find("anchored").size());
}

TEST_F(ConsoleOverlayItem, DrawsTheOpenConsoleOverSiblingsThatComeLater)
{
    showOverRed();
    EXPECT_TRUE(showsRedOnly());
    open();
    console().write("a line of the log", console::Output);
    EXPECT_TRUE(comesToShowConsole());
    overlay().setProperty("open", false);
    EXPECT_TRUE(showsRedOnly());
}

TEST_F(ConsoleOverlayItem, DrawsItsWholeSizeAfterAResize)
{
    showOverRed("open: true");
    ASSERT_TRUE(comesToShowConsole());
    window.resize(400, 240);
    rootItem().setSize({400, 240});
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.size() == QSize(400, 240); }));
    EXPECT_TRUE(comesToShowConsole());
}

TEST_F(ConsoleOverlayItem, DrawsOnlyItsOwnPart)
{
    show("ConsoleOverlay { objectName: 'overlay'; height: 100; open: true }\n"
         "Rectangle { anchors.fill: parent; color: '#640000' }");
    const QImage shown = picture();
    EXPECT_EQ(window.size() * scale(), shown.size());
    EXPECT_NE(kRed, shown.pixelColor(310 * scale(), 99 * scale()));
    EXPECT_EQ(kRed, shown.pixelColor(310 * scale(), 101 * scale()));
}

TEST_F(ConsoleOverlayItem, DrawsNothingWhileItIsInvisible)
{
    showOverRed("open: true; visible: false");
    EXPECT_TRUE(showsRedOnly());
    overlay().setVisible(true);
    EXPECT_TRUE(comesToShowConsole());
}

TEST_F(ConsoleOverlayItem, CostsNoFrameWhileItIsClosed)
{
    showOverRed();
    open();
    ASSERT_TRUE(comesToShowConsole());
    overlay().setProperty("open", false);
    ASSERT_TRUE(showsRedOnly());
    QTest::qWait(100);
    QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
    console().write("unseen", console::Output);
    QTest::qWait(400); // more than two blinks of the cursor
    EXPECT_EQ(0, frames.count());
}

TEST_F(ConsoleOverlayItem, BlinksWhileItIsOpen)
{
    showOverRed();
    open();
    QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
    EXPECT_TRUE(QTest::qWaitFor([&] { return frames.count() >= 3; }));
}

TEST_F(ConsoleOverlayItem, IsOpenFromTheStartIfTheQmlSaysSo)
{
    showOverRed("open: true");
    EXPECT_TRUE(console().isOpen());
    EXPECT_TRUE(overlay().property("open").toBool());
}

TEST_F(ConsoleOverlayItem, FollowsAndAnnouncesTheConsolesOpenState)
{
    showOverRed("property int changes: 0; onOpenChanged: ++changes");
    EXPECT_FALSE(overlay().property("open").toBool());
    open();
    EXPECT_TRUE(console().isOpen());
    EXPECT_EQ(1, overlay().property("changes").toInt());
    console().close();
    EXPECT_TRUE(QTest::qWaitFor([this] { return overlay().property("changes").toInt() == 2; }));
    EXPECT_FALSE(overlay().property("open").toBool());
}

TEST_F(ConsoleOverlayItem, KeepsWhatIsTypedIfItIsOpenedAgain)
{
    showOverRed();
    open();
    console().keyPressed(0, 0, U"x");
    open();
    EXPECT_EQ(U"x", console().activeInput());
}

TEST_F(ConsoleOverlayItem, WritesEachLineAsAnEntryOfItsOwn)
{
    showOverRed();
    QMetaObject::invokeMethod(&overlay(), "write", Q_ARG(QString, "one\ntwo\r\n\nfour\n"));
    EXPECT_EQ((Lines{"one", "two", "", "four"}), log());
}

TEST_F(ConsoleOverlayItem, ExecutesALineWithoutRecordingIt)
{
    showOverRed();
    QMetaObject::invokeMethod(&overlay(), "execute", Q_ARG(QString, "nonsense"));
    EXPECT_EQ((Lines{"nonsense",
                     "'nonsense' is not a recognized command.  Type 'help' to list available commands.", ""}),
              log());
    EXPECT_TRUE(console().history().empty());
}

TEST_F(ConsoleOverlayItem, CopiesTheLog)
{
    showOverRed();
    QMetaObject::invokeMethod(&overlay(), "write", Q_ARG(QString, "a line"));
    QMetaObject::invokeMethod(&overlay(), "copyLog");
    EXPECT_EQ("Zephyr Console:\n\na line\n", QGuiApplication::clipboard()->text());
}

TEST_F(ConsoleOverlayItem, MirrorsTheLogInAFile)
{
    const TemporaryDirectory directory;
    const QString path = QString::fromStdString((directory.path() / "log.txt").string());
    showOverRed("mirrorFile: '" + path.toUtf8() + "'");
    EXPECT_EQ(path, overlay().property("mirrorFile").toString());
    console().write("mirrored", console::Output);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray contents;
    EXPECT_TRUE(QTest::qWaitFor([&] { return (contents += file.readAll()).contains("mirrored\n"); }));

    overlay().setProperty("mirrorFile", "");
    console().write("kept", console::Output);
    QTest::qWait(50);
    EXPECT_FALSE((contents += file.readAll()).contains("kept"));
    EXPECT_TRUE(warnings.empty());
}

TEST_F(ConsoleOverlayItem, WarnsOfAMirrorThatCanNotBeWritten)
{
    showOverRed("mirrorFile: '/nowhere/log.txt'");
    EXPECT_EQ(Lines{"qrc:/Scene.qml:3:1: QML ConsoleOverlay: the log can't be written to /nowhere/log.txt"},
              warnings);
}

TEST_F(ConsoleOverlayItem, KeepsTheHistoryInAFile)
{
    const TemporaryDirectory directory;
    const QString path = QString::fromStdString(directory.write("history", "one\n").string());
    showOverRed("historyFile: '" + path.toUtf8() + "'");
    EXPECT_EQ(path, overlay().property("historyFile").toString());
    EXPECT_EQ(std::vector<std::u32string>{U"one"}, console().history());

    overlay().setProperty("historyFile", "/nowhere/history");
    overlay().setProperty("historyFile", "");
    EXPECT_TRUE(log().empty()) << "nothing was typed";
    EXPECT_TRUE(warnings.empty());
}

TEST_F(ConsoleOverlayItem, CapturesQtsMessagesIfAsked)
{
    showOverRed();
    qInfo("unheard");
    overlay().setProperty("captureQtMessages", true);
    qInfo("heard");
    EXPECT_TRUE(QTest::qWaitFor([this] { return log() == Lines{"Qt info: heard"}; }));
    overlay().setProperty("captureQtMessages", false);
    qInfo("unheard");
    QTest::qWait(50);
    EXPECT_EQ(Lines{"Qt info: heard"}, log());
}

/// The property `console` hides the object of that name in the overlay's own handlers, and only there.
TEST_F(ConsoleOverlayItem, LogsByPrintAndItsCommandsByTheConsoleObjectToo)
{
    showOverRed("captureQtMessages: true; Component.onCompleted: print('hello')\n"
                "Item { Component.onCompleted: console.log('hello') }");
    EXPECT_TRUE(QTest::qWaitFor([this] { return log() == Lines{"Qt debug: hello", "Qt debug: hello"}; }));
    EXPECT_TRUE(warnings.empty());
}

} // namespace
} // namespace zephyr::test
