#ifndef ZEPHYR_CONSOLE_QT_PAINTERSTATE_H
#define ZEPHYR_CONSOLE_QT_PAINTERSTATE_H

#include <QPainter>

namespace zephyr::console::qt {

/// Saves a painter's state, and restores it at the end of the scope. The painter must outlive it.
class PainterState
{
public:
    explicit PainterState(QPainter& painter) : mPainter(painter) { mPainter.save(); }
    ~PainterState() { mPainter.restore(); }
    PainterState(const PainterState&) = delete;
    PainterState& operator=(const PainterState&) = delete;

private:
    QPainter& mPainter;
};

} // namespace zephyr::console::qt

#endif
