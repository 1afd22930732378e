// A console over a form, whose widgets lie in a layout. setupUi() stands for what Qt's form compiler writes.

#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

namespace Ui {

struct Form
{
    void setupUi(QWidget* form)
    {
        auto* layout = new QFormLayout(form);
        layout->addRow("Name", name = new QLineEdit(form));
        layout->addRow("Colour", colour = new QComboBox(form));
        layout->addRow(tabs = new QTabWidget(form));
        layout->addRow(quit = new QPushButton("Quit", form));
        colour->addItems({"red", "green", "blue"});
        tabs->addTab(new QLabel("Press the key left of 1."), "First");
        tabs->addTab(new QLineEdit, "Second");
        QObject::connect(quit, &QPushButton::clicked, form, &QWidget::close);
    }

    QLineEdit* name;
    QComboBox* colour;
    QTabWidget* tabs;
    QPushButton* quit;
};

} // namespace Ui

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QWidget form;
    Ui::Form ui;
    ui.setupUi(&form);
    new zephyr::console::widgets::ConsoleOverlay(&form);
    form.setWindowTitle("Form");
    form.resize(640, 400);
    form.show();
    return QApplication::exec();
}
