// A console over a graphics view, whose scene can be scrolled and its items moved.

#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QGraphicsScene scene(0, 0, 1600, 1200);
    for (int i = 0; i < 10; ++i) {
        scene.addRect(100 * i, 80 * i, 90, 70, QPen(Qt::white), QBrush(QColor(40, 80, 120)))
            ->setFlag(QGraphicsItem::ItemIsMovable);
    }
    scene.addText("Press the key left of 1.");

    QGraphicsView view(&scene);
    const zephyr::console::widgets::ConsoleOverlay overlay(&view);
    view.setWindowTitle("Graphics view");
    view.resize(640, 400);
    view.show();
    return QApplication::exec();
}
