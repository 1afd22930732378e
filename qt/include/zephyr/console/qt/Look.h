#ifndef ZEPHYR_CONSOLE_QT_LOOK_H
#define ZEPHYR_CONSOLE_QT_LOOK_H

#include <QColor>
#include <QString>

namespace zephyr::console::qt {

/// How a console looks. The defaults are the colours and the font of Console, so that it looks as ConsoleRenderer draws
/// it.
struct Look
{
    /// What part of its object a console covers.
    enum class Part
    {
        Whole,    ///< All of it.
        UpperHalf ///< The upper half. Below it, the mouse is the host's.
    };

    QString fontFamily = QStringLiteral("Consolas"); ///< Or the system's monospaced font where there is none.
    double fontSize = 10.0;                          ///< In points; taken as at least 1.
    QColor text = QColor(0, 255, 0);                 ///< Of what commands and the program wrote.
    QColor input = QColor(0, 255, 0);                ///< Of the line being typed and of those that were run.
    QColor background = QColor(0, 0, 0, 204); ///< Its alpha decides how much of the host's picture shows.
    QColor warning = QColor(255, 200, 0);     ///< Of Qt's warnings, where Qt's messages are captured.
    QColor error = QColor(255, 90, 80);       ///< Of Qt's graver messages, where Qt's messages are captured.
    Part part = Part::Whole;                  ///< What is covered.
};

/// Whether two consoles look the same.
inline bool operator==(const Look& a, const Look& b)
{
    return a.fontFamily == b.fontFamily && a.fontSize == b.fontSize && a.text == b.text &&
           a.input == b.input && a.background == b.background && a.warning == b.warning &&
           a.error == b.error && a.part == b.part;
}

/// Whether two consoles look different.
inline bool operator!=(const Look& a, const Look& b) { return !(a == b); }

} // namespace zephyr::console::qt

#endif
