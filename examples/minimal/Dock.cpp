// A console over a picture in a dock widget, which is a window of its own until it is docked.

#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QPainter>
#include <QPlainTextEdit>

class Picture : public QWidget
{
public:
    Picture() { setMinimumSize(320, 200); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(40, 80, 120));
        painter.drawText(rect(), Qt::AlignCenter, "Press the key left of 1.");
    }

private:
    zephyr::console::widgets::ConsoleOverlay mOverlay{this};
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QPlainTextEdit("Nothing is here."));
    auto* dock = new QDockWidget("Picture", &window);
    dock->setWidget(new Picture);
    window.addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->setFloating(true);
    dock->setGeometry(700, 100, 480, 320);

    window.setWindowTitle("Dock");
    window.resize(640, 400);
    window.show();
    return QApplication::exec();
}
