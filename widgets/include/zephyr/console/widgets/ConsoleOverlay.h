#ifndef ZEPHYR_CONSOLE_WIDGETS_CONSOLEOVERLAY_H
#define ZEPHYR_CONSOLE_WIDGETS_CONSOLEOVERLAY_H

#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"
#include "zephyr/console/widgets/detail/Export.h"

#include <QWidget>

#include <memory>

class QPaintEvent;

namespace zephyr::console::widgets {

/// A console over a widget of any kind: a plain widget, a form, a main window, a splitter, an OpenGL widget.
///
///     new ConsoleOverlay(&window);
///
/// - It is: a translucent child that covers the whole widget, stays above all of its other children, and is visible
///   while the console is open. It is not: a part of the widget's layout, nor a widget that takes the focus or the
///   mouse; host() sees to keys and mouse for the whole window.
/// - Threads: the application's thread only. Other threads may write to console().
/// - Ownership: the widget destroys its overlay, as it does any child, unless the overlay is destroyed first. An overlay
///   that is a member must be destroyed before the widget: a member of the widget's own class is. The overlay shares
///   the console.
/// - Failure: a null widget is reported as an assertion. The console and its host work then, but nothing is shown.
///
/// While the console is closed, the overlay is hidden and does nothing: it gets no events, paints nothing and runs no
/// timer.
class ZEPHYR_CONSOLE_WIDGETS_EXPORT ConsoleOverlay : public QWidget
{
    Q_OBJECT
    Q_CLASSINFO("ZephyrConsole", "overlay") // to assistive technology it is the console and nothing else

public:
    /// Puts `console`, or a console of its own if that is null, over `over`.
    explicit ConsoleOverlay(QWidget* over, const std::shared_ptr<Console>& console = nullptr);

    ~ConsoleOverlay() override;

    /// The console that is shown; never null.
    const std::shared_ptr<Console>& console() const;

    /// What joins the console to the window: the toggle keys, the log's services, whether the console is open.
    qt::ConsoleHost& host();

    /// Shows or hides the overlay. It stays hidden while the console is closed, so that a program which shows all
    /// children of a widget doesn't show it.
    void setVisible(bool visible) override;

protected:
    /// Keeps the font and the style of the widgets around out of the console.
    void initPainter(QPainter* painter) const override;

    /// Paints the console.
    void paintEvent(QPaintEvent* event) override;

private:
    class ZEPHYR_CONSOLE_WIDGETS_NO_EXPORT Private;

    std::unique_ptr<Private> mPrivate;
};

} // namespace zephyr::console::widgets

#endif
