// A console over a main window: menus, a tool bar, and an editor that has the focus.

#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QToolBar>

using namespace zephyr::console;

class MainWindow : public QMainWindow
{
public:
    MainWindow()
    {
        setCentralWidget(mEditor);
        QMenu* file = menuBar()->addMenu("&File");
        QAction* clear =
            file->addAction("&Clear", QKeySequence("Ctrl+L"), this, [this] { mEditor->clear(); });
        file->addAction("&Quit", QKeySequence("Ctrl+Q"), this, &QWidget::close);
        addToolBar("Tools")->addAction(clear);
    }

private:
    QPlainTextEdit* const mEditor = new QPlainTextEdit("Press the key left of 1.");
    widgets::ConsoleOverlay mOverlay{this};
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    MainWindow window;
    window.setWindowTitle("Main window");
    window.resize(640, 400);
    window.show();
    return QApplication::exec();
}
