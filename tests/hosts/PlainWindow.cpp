// A QWindow that paints with a backing store of its own.

#include "zephyr/console/qt/ConsoleHost.h"

#include <QBackingStore>
#include <QGuiApplication>
#include <QPainter>
#include <QWindow>

class Window : public QWindow
{
protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest) {
            paint();
            return true;
        }
        return QWindow::event(event);
    }

    void exposeEvent(QExposeEvent*) override { paint(); }

    void resizeEvent(QResizeEvent*) override { mStore.resize(size()); }

private:
    void paint()
    {
        if (!isExposed()) {
            return;
        }
        const QRect all(QPoint(), size());
        mStore.beginPaint(all);
        QPainter painter(mStore.paintDevice());
        painter.fillRect(all, QColor(40, 80, 120));
        mConsole.paint(painter);
        painter.end();
        mStore.endPaint();
        mStore.flush(all);
    }

    QBackingStore mStore{this};
    zephyr::console::qt::ConsoleHost mConsole{this};
};

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    Window window;
    window.resize(640, 400);
    window.show();
    return QGuiApplication::exec();
}
