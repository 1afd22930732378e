#ifndef ZEPHYR_CONSOLE_WIDGETS_COVER_H
#define ZEPHYR_CONSOLE_WIDGETS_COVER_H

#include <QObject>
#include <QPointer>
#include <QWidget>

class QEvent;

namespace zephyr::console::widgets {

/// Keeps a widget over the whole of its parent: in the parent's rectangle, and above all of the parent's other children.
class Cover : public QObject
{
public:
    explicit Cover(QWidget& widget);

    /// Covers the parent, and keeps it covered until end(). The parent may change meanwhile.
    void begin();

    /// Leaves the widget where it is, and watches no events any more.
    void end();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchParent();
    void unwatchParent();
    void afterOwnEvent(const QEvent& event);
    void afterParentEvent(QEvent& event);
    void fill();
    void raise();

    QWidget& mWidget;
    QPointer<QWidget> mParent; // that is watched
    bool mIsRaising = false;
};

} // namespace zephyr::console::widgets

#endif
