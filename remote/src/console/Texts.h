#ifndef ZEPHYR_CONSOLE_REMOTE_CONSOLE_TEXTS_H
#define ZEPHYR_CONSOLE_REMOTE_CONSOLE_TEXTS_H

#include "protocol/Entry.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QString>

#include <cstddef>
#include <string_view>

namespace zephyr::console::remote {

// Between the console's code points and Qt's UTF-16.

/// The text for Qt. A code point that is no Unicode scalar value becomes U+FFFD.
inline QString textOf(std::u32string_view text) { return QString::fromStdString(StringUtil::toString(text)); }

/// The entry of a console's log at `index`, for a connection.
inline Entry entryOf(std::size_t index, const LogEntry& entry)
{
    const Entry::Type type = entry.type == Input    ? Entry::Type::Input
                             : entry.type == Prompt ? Entry::Type::Prompt
                                                    : Entry::Type::Output;
    return {static_cast<qint64>(index), type, textOf(entry.text)};
}

} // namespace zephyr::console::remote

#endif
