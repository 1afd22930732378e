// A console over a QWidget.

#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>

#include <memory>
#include <string>

using namespace zephyr::console;

class GreetCommand : public ConsoleCommand
{
public:
    std::u32string name() const override { return U"greet"; } // greet NAME

    void execute(const ConsoleArgs& args, Console& console) override
    {
        console.writeIndented(U"Hello, " + args.subCmd() + U".", 4);
    }
};

class Widget : public QWidget
{
public:
    Widget()
    {
        setWindowTitle("Widget");
        mOverlay.console()->registerCommand(std::make_unique<GreetCommand>());
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(40, 80, 120));
        painter.drawText(rect(), Qt::AlignCenter, "Press the key left of 1.");
    }

private:
    widgets::ConsoleOverlay mOverlay{this};
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    Widget widget;
    widget.resize(640, 400);
    widget.show();
    return QApplication::exec();
}
