// A console in windows with widgets and items of their own, which have the focus, take clicks and get the keys.

#include "qt/HostedConsole.h"
#include "qt/NearPixels.h"
#include "zephyr/common/Assert.h"

#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

namespace zephyr::test {
namespace {

const QSize kSize(320, 200);

/// Makes `widget` the window that gets the keys.
bool activate(QWidget& widget)
{
    widget.activateWindow();
    return QTest::qWaitFor([&] { return QGuiApplication::focusWindow() == widget.windowHandle(); }, 60000);
}

/// A form with an editor that has the focus and a button, and the picture that the console is painted on.
class AForm : public testing::Test
{
protected:
    AForm()
    {
        auto* layout = new QVBoxLayout(&form);
        layout->addWidget(&editor);
        layout->addWidget(&button);
        layout->addWidget(&picture, 1);
        form.resize(kSize);
    }

    void show()
    {
        form.show();
        editor.setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        ASSERT_EQ(&editor, QApplication::focusWidget());
    }

    /// Presses a key as the window system does: the window gets it first.
    void key(int code, const QString& text = {}, Qt::KeyboardModifiers modifiers = {})
    {
        QWindow* const window = QGuiApplication::focusWindow();
        ASSERT_NE(nullptr, window);
        sendKey(*window, QEvent::KeyPress, code, modifiers, text);
        sendKey(*window, QEvent::KeyRelease, code, modifiers, text);
    }

    void openByKey() { key(Qt::Key_QuoteLeft, "`"); }

    QPoint middleOf(const QWidget& widget) { return widget.mapTo(&form, widget.rect().center()); }

    void click(const QWidget& widget)
    {
        QTest::mouseClick(form.windowHandle(), Qt::LeftButton, {}, middleOf(widget));
    }

    QWidget form;
    QLineEdit editor{&form};
    QPushButton button{"Go", &form};
    QWidget picture{&form};
    std::shared_ptr<Console> console = std::make_shared<Console>();
};

TEST_F(AForm, OpensFromTheEditorAndGivesTheFocusBack)
{
    ConsoleHost host(console, &picture);
    show();
    key(Qt::Key_A, "a");
    openByKey();
    ASSERT_TRUE(host.isOpen());
    key(Qt::Key_B, "b");
    key(Qt::Key_Backspace, "\b");
    key(Qt::Key_C, "c");
    EXPECT_EQ(U"c", console->activeInput());
    EXPECT_EQ(&editor, QApplication::focusWidget()) << "the console takes the focus from nobody";
    openByKey();
    ASSERT_FALSE(host.isOpen());
    key(Qt::Key_D, "d");
    EXPECT_EQ("ad", editor.text());
}

TEST_F(AForm, MayGetItsConsoleBeforeOrAfterItIsShown)
{
    show();
    ConsoleHost host(console, &picture);
    openByKey();
    EXPECT_TRUE(host.isOpen());
}

TEST_F(AForm, TypesIntoTheConsoleAlsoWhereTheKeysAreSentToTheEditorItself)
{
    ConsoleHost host(console, &form);
    show();
    QTest::keyClick(&editor, Qt::Key_QuoteLeft);
    QTest::keyClicks(&editor, "help");
    EXPECT_EQ(U"help", console->activeInput());
    EXPECT_EQ("", editor.text());
}

TEST_F(AForm, KeepsTheKeysWhateverIsClicked)
{
    ConsoleHost host(console, &form);
    show();
    QSignalSpy clicks(&button, &QPushButton::clicked);
    openByKey();
    click(button);
    click(editor);
    EXPECT_EQ(0, clicks.size()) << "the console lies above the button";
    host.setMouse(ConsoleHost::Mouse::Host);
    click(button);
    EXPECT_EQ(1, clicks.size());
    EXPECT_EQ(&button, QApplication::focusWidget());
    key(Qt::Key_X, "x");
    EXPECT_EQ(U"x", console->activeInput());
    openByKey();
    EXPECT_EQ(&editor, QApplication::focusWidget()) << "who had the focus";
}

TEST_F(AForm, LeavesTheMouseOutsideTheObjectToTheHost)
{
    ConsoleHost host(console, &picture);
    show();
    QSignalSpy clicks(&button, &QPushButton::clicked);
    openByKey();
    click(button);
    EXPECT_EQ(1, clicks.size());
    key(Qt::Key_X, "x");
    EXPECT_EQ(U"x", console->activeInput());
    openByKey();
    EXPECT_EQ(&editor, QApplication::focusWidget());
}

TEST_F(AForm, ReleasesAButtonThatWasPressedBeforeTheConsoleOpened)
{
    ConsoleHost host(console, &form);
    show();
    QSignalSpy releases(&button, &QPushButton::released);
    QTest::mousePress(form.windowHandle(), Qt::LeftButton, {}, middleOf(button));
    openByKey();
    QTest::mouseRelease(form.windowHandle(), Qt::LeftButton, {}, middleOf(button));
    EXPECT_EQ(1, releases.size());
}

TEST_F(AForm, KeepsTheReleaseOfAButtonThatWasPressedOnTheConsole)
{
    ConsoleHost host(console, &form);
    show();
    QSignalSpy releases(&button, &QPushButton::released);
    QSignalSpy presses(&button, &QPushButton::pressed);
    openByKey();
    QTest::mousePress(form.windowHandle(), Qt::LeftButton, {}, middleOf(button));
    openByKey();
    ASSERT_FALSE(host.isOpen());
    QTest::mouseRelease(form.windowHandle(), Qt::LeftButton, {}, middleOf(button));
    EXPECT_EQ(0, presses.size() + releases.size());
    click(button);
    EXPECT_EQ(1, releases.size());
}

TEST_F(AForm, GivesUpAFocusThatIsGone)
{
    ConsoleHost host(console, &form);
    show();
    auto* const passing = new QLineEdit(&form);
    passing->show();
    passing->setFocus();
    openByKey();
    delete passing;
    openByKey();
    EXPECT_FALSE(host.isOpen());
}

TEST_F(AForm, LeavesDialogsTheirKeys)
{
    ConsoleHost host(console, &form);
    show();
    QDialog dialog(&form);
    QLineEdit name(&dialog);
    addCommand(*console, U"ask").onExecute = [&](const console::ConsoleArgs&, Console&) {
        QTimer::singleShot(0, &dialog, [&] {
            ASSERT_TRUE(activate(dialog));
            name.setFocus();
            key(Qt::Key_N, "n");
            key(Qt::Key_Return, "\r");
            dialog.accept();
        });
        dialog.exec();
    };
    openByKey();
    for (const QChar c : QString("ask")) {
        key(Qt::Key_unknown, c);
    }
    key(Qt::Key_Return, "\r");
    EXPECT_EQ("n", name.text());
    EXPECT_EQ(U"", console->activeInput());
    ASSERT_TRUE(activate(form));
    key(Qt::Key_X, "x");
    EXPECT_EQ(U"x", console->activeInput());
}

TEST_F(AForm, LeavesOpenMenusTheirKeysAndClicks)
{
    ConsoleHost host(console, &form);
    show();
    openByKey();
    QMenu menu(&form);
    QSignalSpy triggered(menu.addAction("Do it"), &QAction::triggered);
    menu.popup(form.mapToGlobal(QPoint(10, 10)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
    QTest::keyClick(form.windowHandle(), Qt::Key_X);
    EXPECT_EQ(U"", console->activeInput());
    QTest::keyClick(form.windowHandle(), Qt::Key_Down);
    QTest::keyClick(form.windowHandle(), Qt::Key_Return);
    EXPECT_EQ(1, triggered.size());
    EXPECT_TRUE(host.isOpen());
}

TEST_F(AForm, LeavesOtherWindowsTheirKeys)
{
    ConsoleHost host(console, &form);
    show();
    openByKey();
    QLineEdit other;
    other.show();
    ASSERT_TRUE(activate(other));
    key(Qt::Key_A, "a");
    key(Qt::Key_QuoteLeft, "`");
    EXPECT_EQ("a`", other.text());
    EXPECT_TRUE(host.isOpen());
}

TEST_F(AForm, FollowsTheObjectIntoAnotherWindowAndBack)
{
    ConsoleHost host(console, &picture);
    show();
    picture.setParent(nullptr); // as a dock widget does that is undocked
    picture.show();
    ASSERT_TRUE(activate(picture));
    openByKey();
    EXPECT_TRUE(host.isOpen());
    openByKey();
    EXPECT_FALSE(host.isOpen());
    ASSERT_TRUE(activate(form));
    openByKey();
    EXPECT_FALSE(host.isOpen()) << "the object isn't in this window";
    EXPECT_EQ("`", editor.text());
    form.layout()->addWidget(&picture);
    ASSERT_TRUE(activate(form));
    openByKey();
    EXPECT_TRUE(host.isOpen());
}

TEST_F(AForm, GoesOnWhenTheObjectIsDestroyed)
{
    auto doomed = std::make_unique<QWidget>(&form);
    ConsoleHost host(console, doomed.get());
    show();
    openByKey();
    doomed.reset();
    key(Qt::Key_A, "a");
    EXPECT_EQ("a", editor.text());
    host.setOpen(false);
    EXPECT_FALSE(host.isOpen());
}

/// A key that the host opens the console with is passed on by Qt as the same event.
TEST_F(AForm, TypesNoKeyThatOpenedItByTheHost)
{
    class Opener : public QWidget
    {
    public:
        using QWidget::QWidget;
        ConsoleHost* host = nullptr;

    protected:
        void keyPressEvent(QKeyEvent* event) override
        {
            host->setOpen(true);
            QWidget::keyPressEvent(event);
        }
    };
    ConsoleHost host(console, &form);
    Opener opener(&form);
    opener.host = &host;
    show();
    opener.show();
    opener.setFocus();
    key(Qt::Key_C, "c");
    EXPECT_TRUE(host.isOpen());
    EXPECT_EQ(U"", console->activeInput());
}

TEST_F(AForm, ForgetsNoHeldKeyWhereItGivesTheFocusBack)
{
    picture.setFocusPolicy(Qt::StrongFocus);
    ConsoleHost host(console, &picture);
    show();
    openByKey();
    picture.setFocus();
    openByKey();
    EXPECT_FALSE(host.isOpen());
    EXPECT_EQ(&editor, QApplication::focusWidget());
    EXPECT_EQ("", editor.text());
}

TEST_F(AForm, LeavesTheHostItsShortcuts)
{
    ConsoleHost host(console, &form);
    QShortcut fullScreen(Qt::Key_F11, &form);
    QShortcut quit(Qt::CTRL | Qt::Key_Q, &form);
    QShortcut plain(Qt::Key_Q, &form);
    QSignalSpy fullScreens(&fullScreen, &QShortcut::activated);
    QSignalSpy quits(&quit, &QShortcut::activated);
    QSignalSpy plains(&plain, &QShortcut::activated);
    show();
    openByKey();
    QTest::keyClick(form.windowHandle(), Qt::Key_F11);
    QTest::keyClick(form.windowHandle(), Qt::Key_Q, Qt::ControlModifier);
    QTest::keyClick(form.windowHandle(), Qt::Key_Q);
    EXPECT_EQ(1, fullScreens.size());
    EXPECT_EQ(1, quits.size());
    EXPECT_EQ(0, plains.size());
    EXPECT_EQ(U"q", console->activeInput());
}

TEST_F(AForm, IsRepaintedWithoutAConnection)
{
    class Picture : public QWidget
    {
    public:
        using QWidget::QWidget;
        int paints = 0;

    protected:
        void paintEvent(QPaintEvent*) override { ++paints; }
    };
    Picture painted(&form);
    painted.resize(50, 50);
    ConsoleHost host(console, &painted);
    show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return painted.paints > 0; }, 60000));
    const int before = painted.paints;
    host.setOpen(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return painted.paints > before; }, 60000));
}

TEST_F(AForm, MayHaveAConsoleOfTheHostsOwn)
{
    ConsoleHost host(&form);
    ASSERT_NE(nullptr, host.console());
    show();
    openByKey();
    key(Qt::Key_A, "a");
    EXPECT_EQ(U"a", host.console()->activeInput());
}

TEST(AGraphicsView, IsScrolledByItsConsole)
{
    QGraphicsScene scene(0, 0, 2000, 2000);
    QGraphicsView view(&scene);
    view.resize(kSize);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    const auto console = std::make_shared<Console>();
    for (int i = 0; i < 100; ++i) {
        console->newline();
    }
    ConsoleHost host(console, &view);
    host.setPlain(true);
    const int before = view.verticalScrollBar()->value();
    const QPoint middle = view.viewport()->rect().center();
    const auto turn = [&](QObject& receiver) {
        QWheelEvent event(middle, view.viewport()->mapToGlobal(middle), {}, {0, 120}, {}, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&receiver, &event);
    };
    host.setOpen(true);
    turn(*view.windowHandle());
    EXPECT_EQ(2u, console->snapshot().scrollOffset());
    turn(*view.viewport());
    EXPECT_EQ(4u, console->snapshot().scrollOffset());
    EXPECT_EQ(before, view.verticalScrollBar()->value());
    QTest::keyClick(view.viewport(), Qt::Key_Down);
    EXPECT_EQ(before, view.verticalScrollBar()->value());
    host.setOpen(false);
    turn(*view.windowHandle());
    EXPECT_NE(before, view.verticalScrollBar()->value());
}

TEST(AWidgetWithAFont, KeepsItFromTheConsole)
{
    class Painted : public QWidget
    {
    public:
        Painted()
        {
            resize(kSize);
            host.setOpen(true);
        }

    protected:
        void paintEvent(QPaintEvent*) override
        {
            QPainter painter(this);
            host.paint(painter);
        }

    private:
        ConsoleHost host{this};
    };
    Painted plain;
    Painted italic;
    QFont font;
    font.setItalic(true);
    font.setUnderline(true);
    italic.setFont(font);
    EXPECT_TRUE(nearPixels(plain.grab().toImage(), italic.grab().toImage()));
}

TEST(ADockWidget, KeepsItsConsoleWhenItIsUndocked)
{
    QMainWindow window;
    QLineEdit editor;
    window.setCentralWidget(&editor);
    QDockWidget dock("Picture", &window);
    auto* const picture = new QWidget;
    dock.setWidget(picture);
    window.addDockWidget(Qt::LeftDockWidgetArea, &dock);
    ConsoleHost host(picture);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto toggle = [] { QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_QuoteLeft); };
    toggle();
    EXPECT_TRUE(host.isOpen());
    dock.setFloating(true);
    ASSERT_TRUE(activate(dock));
    toggle();
    EXPECT_FALSE(host.isOpen());
    toggle();
    EXPECT_TRUE(host.isOpen());
    dock.setFloating(false);
    ASSERT_TRUE(activate(window));
    toggle();
    EXPECT_FALSE(host.isOpen());
    editor.setParent(nullptr);
    dock.setParent(nullptr);
}

/// A Qt Quick window with an item that has the focus, and one that the console is on.
class AQuickWindow : public testing::Test
{
protected:
    class Item : public QQuickItem
    {
    public:
        explicit Item(QQuickItem* parent) : QQuickItem(parent)
        {
            setAcceptedMouseButtons(Qt::AllButtons);
            setSize(kSize);
        }

        std::string typed;
        int clicks = 0;

    protected:
        void keyPressEvent(QKeyEvent* event) override { typed += event->text().toStdString(); }
        void mousePressEvent(QMouseEvent*) override
        {
            ++clicks;
            forceActiveFocus();
        }
    };

    void SetUp() override
    {
        window.resize(kSize);
        window.show();
        field->setFocus(true);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QQuickWindow window;
    Item* const field = new Item(window.contentItem());
    Item* const above = new Item(window.contentItem()); // which clicks meet
    std::shared_ptr<Console> console = std::make_shared<Console>();
    ConsoleHost host{console, above};
};

TEST_F(AQuickWindow, OpensFromAnyFocusAndSurvivesClicks)
{
    QTest::keyClick(&window, Qt::Key_A);
    EXPECT_EQ("a", field->typed);
    QTest::keyClick(&window, Qt::Key_QuoteLeft);
    ASSERT_TRUE(host.isOpen());
    QTest::mouseClick(&window, Qt::LeftButton, {}, {100, 100});
    EXPECT_EQ(0, above->clicks);
    QTest::keyClick(&window, Qt::Key_B);
    EXPECT_EQ(U"b", console->activeInput());
    EXPECT_EQ(field, window.activeFocusItem());

    host.setMouse(ConsoleHost::Mouse::Host);
    QTest::mouseClick(&window, Qt::LeftButton, {}, {100, 100});
    EXPECT_EQ(1, above->clicks);
    EXPECT_EQ(above, window.activeFocusItem());
    QTest::keyClick(&window, Qt::Key_QuoteLeft);
    EXPECT_EQ(field, window.activeFocusItem());
    QTest::keyClick(&window, Qt::Key_C);
    EXPECT_EQ("ac", field->typed);
    QTest::mouseClick(&window, Qt::LeftButton, {}, {100, 100});
    EXPECT_EQ(2, above->clicks);
}

TEST_F(AQuickWindow, LosesItsConsoleToAnotherWindow)
{
    QQuickWindow other;
    other.resize(kSize);
    above->setParentItem(other.contentItem());
    QTest::keyClick(&window, Qt::Key_QuoteLeft);
    EXPECT_FALSE(host.isOpen());
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    QTest::keyClick(&other, Qt::Key_QuoteLeft);
    EXPECT_TRUE(host.isOpen());
    above->setParentItem(nullptr);
    QTest::keyClick(&other, Qt::Key_QuoteLeft);
    EXPECT_TRUE(host.isOpen());
}

TEST(ConsoleHostWithNulls, ReportsThemByNameAndDoesNothing)
{
    std::vector<std::string> reported;
    const Assert::Handler before = Assert::setHandler([&](const AssertFailure& failure) {
        reported.emplace_back(failure.expression);
        return true;
    });
    QWindow window;
    const auto console = std::make_shared<Console>();
    {
        ConsoleHost withoutConsole(nullptr, &window);
        withoutConsole.setOpen(true);
        sendKey(window, QEvent::KeyPress, Qt::Key_QuoteLeft, {}, "`");
        EXPECT_FALSE(withoutConsole.isOpen());
        EXPECT_EQ(nullptr, withoutConsole.console());
        ConsoleHost withoutObject(console, nullptr);
        sendKey(window, QEvent::KeyPress, Qt::Key_QuoteLeft, {}, "`");
        EXPECT_FALSE(withoutObject.isOpen());
        QImage frame(64, 64, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&frame);
        withoutConsole.paint(painter);
        withoutObject.setOpen(true);
        withoutObject.paint(painter);
        const ConsoleHost neither(nullptr, nullptr);
    }
    Assert::setHandler(before);
    EXPECT_EQ((std::vector<std::string>{"console", "object", "console", "object"}), reported);
}

} // namespace
} // namespace zephyr::test
