#ifndef ZEPHYR_TESTS_WIDGETS_HOSTWINDOWS_H
#define ZEPHYR_TESTS_WIDGETS_HOSTWINDOWS_H

#include <QWidget>

#include <memory>
#include <ostream>
#include <vector>

namespace zephyr::test {

/// A window of a program, and the widget in it that the console is put over.
struct HostWindow
{
    std::unique_ptr<QWidget> window;
    QWidget* over;
};

/// A kind of window, by name.
struct HostKind
{
    const char* name;
    HostWindow (*make)();
};

inline void PrintTo(const HostKind& kind, std::ostream* out) { *out << kind.name; }

/// The windows that programs are made of.
std::vector<HostKind> hostKinds();

/// A form with a layout, buttons, a combo box and tabs.
void fillForm(QWidget& form);

/// A main window with menus, tool bars, a dock widget and an editor that has the focus.
std::unique_ptr<QWidget> makeMainWindow();

} // namespace zephyr::test

#endif
