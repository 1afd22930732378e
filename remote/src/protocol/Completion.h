#ifndef ZEPHYR_CONSOLE_REMOTE_PROTOCOL_COMPLETION_H
#define ZEPHYR_CONSOLE_REMOTE_PROTOCOL_COMPLETION_H

#include <QStringList>
#include <QtGlobal>

namespace zephyr::console::remote {

/// What may stand at the end of a line.
struct Completion
{
    QStringList candidates; ///< Words, in the order in which they are offered.
    qsizetype from =
        0; ///< Where the word begins that one of them replaces, in UTF-16 code units of the line.

    bool operator==(const Completion&) const = default;
};

} // namespace zephyr::console::remote

#endif
