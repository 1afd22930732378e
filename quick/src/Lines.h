#ifndef ZEPHYR_CONSOLE_QUICK_LINES_H
#define ZEPHYR_CONSOLE_QUICK_LINES_H

#include <QString>
#include <QStringList>

namespace zephyr::console::quick {

/// The lines of `text`, each of which becomes an entry of the log. A line feed at the end begins no further line.
inline QStringList linesOf(QString text)
{
    text.replace("\r\n", "\n");
    if (text.endsWith('\n')) {
        text.chop(1);
    }
    return text.split('\n');
}

} // namespace zephyr::console::quick

#endif
