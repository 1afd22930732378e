// A console in a QWidget.

#include "zephyr/console/qt/ConsoleHost.h"

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
        setFocusPolicy(Qt::StrongFocus); // a child widget gets no keys without it
        mConsole->registerCommand(std::make_unique<GreetCommand>());
        connect(&mHost, &qt::ConsoleHost::repaintNeeded, this, qOverload<>(&QWidget::update));
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(40, 80, 120));
        painter.drawText(rect(), Qt::AlignCenter, "Press the key left of 1.");
        mHost.paint(painter);
    }

private:
    std::shared_ptr<Console> mConsole = std::make_shared<Console>();
    qt::ConsoleHost mHost{mConsole, this};
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    Widget widget;
    widget.resize(640, 400);
    widget.show();
    return QApplication::exec();
}
