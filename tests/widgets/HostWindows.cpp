#include "widgets/HostWindows.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolBox>
#include <QVBoxLayout>

namespace zephyr::test {

namespace {

constexpr QSize kSize{480, 320};

/// A picture that is painted, as a simulation's is.
class PaintedWidget : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(40, 80, 120));
        painter.fillRect(20, 20, 200, 100, QColor(200, 180, 60));
    }
};

HostWindow whole(std::unique_ptr<QWidget> window)
{
    window->resize(kSize);
    QWidget* over = window.get();
    return {std::move(window), over};
}

HostWindow plainWidget() { return whole(std::make_unique<PaintedWidget>()); }

HostWindow form()
{
    auto window = std::make_unique<QWidget>();
    fillForm(*window);
    return whole(std::move(window));
}

HostWindow partOfAForm()
{
    auto window = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(window.get());
    auto* picture = new PaintedWidget;
    layout->addWidget(new QLineEdit("before"));
    layout->addWidget(picture, 1);
    layout->addWidget(new QPushButton("After"));
    window->resize(kSize);
    return {std::move(window), picture};
}

HostWindow mainWindow() { return whole(makeMainWindow()); }

HostWindow splitter()
{
    auto window = std::make_unique<QSplitter>();
    window->addWidget(new PaintedWidget);
    window->addWidget(new QPlainTextEdit("right"));
    return whole(std::move(window));
}

HostWindow stackedWidget()
{
    auto window = std::make_unique<QStackedWidget>();
    window->addWidget(new PaintedWidget);
    window->addWidget(new QPlainTextEdit("second page"));
    return whole(std::move(window));
}

HostWindow mdiArea()
{
    auto window = std::make_unique<QMdiArea>();
    window->addSubWindow(new QLabel("first"));
    window->addSubWindow(new QLabel("second"));
    return whole(std::move(window));
}

HostWindow scrollArea()
{
    auto window = std::make_unique<QScrollArea>();
    auto* large = new PaintedWidget;
    large->resize(1000, 1000);
    window->setWidget(large);
    return whole(std::move(window));
}

HostWindow scrollingViewport()
{
    HostWindow host = scrollArea();
    host.over = static_cast<QScrollArea&>(*host.window).viewport();
    return host;
}

HostWindow toolBox()
{
    auto window = std::make_unique<QToolBox>();
    window->addItem(new PaintedWidget, "first");
    window->addItem(new QPlainTextEdit("second"), "second");
    return whole(std::move(window));
}

HostWindow tabWidget()
{
    auto window = std::make_unique<QTabWidget>();
    window->addTab(new PaintedWidget, "first");
    window->addTab(new QPlainTextEdit("second"), "second");
    return whole(std::move(window));
}

HostWindow dialog()
{
    auto window = std::make_unique<QDialog>();
    fillForm(*window);
    window->layout()->addWidget(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
    return whole(std::move(window));
}

HostWindow groupBox()
{
    auto window = std::make_unique<QGroupBox>("group");
    window->setCheckable(true);
    window->setChecked(false);
    fillForm(*window);
    return whole(std::move(window));
}

HostWindow graphicsView()
{
    auto window = std::make_unique<QGraphicsView>();
    auto* scene = new QGraphicsScene(0, 0, 1000, 1000, window.get());
    scene->addRect(50, 50, 300, 200, QPen(Qt::red), QBrush(Qt::yellow));
    scene->addText("an item");
    window->setScene(scene);
    return whole(std::move(window));
}

HostWindow floatingDock()
{
    auto window = std::make_unique<QDockWidget>("dock");
    auto* picture = new PaintedWidget;
    window->setWidget(picture);
    window->resize(kSize);
    return {std::move(window), picture};
}

HostWindow rightToLeftForm()
{
    HostWindow host = form();
    host.window->setLayoutDirection(Qt::RightToLeft);
    return host;
}

HostWindow disabledForm()
{
    HostWindow host = form();
    host.window->setEnabled(false);
    return host;
}

HostWindow styledForm()
{
    HostWindow host = form();
    host.window->setStyleSheet(
        "* { background: red; color: blue; font: italic 20pt serif; border: 3px solid; }");
    return host;
}

HostWindow translucentWindow()
{
    HostWindow host = plainWidget();
    host.window->setAttribute(Qt::WA_TranslucentBackground);
    return host;
}

} // namespace

void fillForm(QWidget& form)
{
    auto* layout = new QVBoxLayout(&form);
    auto* choice = new QComboBox;
    choice->addItems({"one", "two", "three"});
    auto* tabs = new QTabWidget;
    tabs->addTab(new PaintedWidget, "picture");
    tabs->addTab(new QLabel("label"), "text");
    layout->addWidget(new QLineEdit("a line"));
    layout->addWidget(choice);
    layout->addWidget(tabs, 1);
    layout->addWidget(new QPushButton("Press"));
}

std::unique_ptr<QWidget> makeMainWindow()
{
    auto window = std::make_unique<QMainWindow>();
    QMenu* menu = window->menuBar()->addMenu("&File");
    window->addToolBar("tools")->addAction(menu->addAction("&Save"));
    auto* dock = new QDockWidget("dock");
    dock->setWidget(new QLabel("docked"));
    window->addDockWidget(Qt::LeftDockWidgetArea, dock);
    auto* editor = new QPlainTextEdit("text");
    window->setCentralWidget(editor);
    window->statusBar()->showMessage("ready");
    editor->setFocus();
    return window;
}

std::vector<HostKind> hostKinds()
{
    return {{"PlainWidget", plainWidget},
            {"Form", form},
            {"PartOfAForm", partOfAForm},
            {"MainWindow", mainWindow},
            {"Splitter", splitter},
            {"StackedWidget", stackedWidget},
            {"MdiArea", mdiArea},
            {"ScrollArea", scrollArea},
            {"ScrollingViewport", scrollingViewport},
            {"ToolBox", toolBox},
            {"TabWidget", tabWidget},
            {"Dialog", dialog},
            {"GroupBox", groupBox},
            {"GraphicsView", graphicsView},
            {"FloatingDock", floatingDock},
            {"RightToLeftForm", rightToLeftForm},
            {"DisabledForm", disabledForm},
            {"StyledForm", styledForm},
            {"TranslucentWindow", translucentWindow}};
}

} // namespace zephyr::test
