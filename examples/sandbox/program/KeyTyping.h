#ifndef ZEPHYR_SANDBOX_PROGRAM_KEYTYPING_H
#define ZEPHYR_SANDBOX_PROGRAM_KEYTYPING_H

#include <QString>

class QObject;

namespace zephyr::sandbox {

/// Types `text` into `window` as a person would: sends a key press and a key release for each code point. A line feed,
/// or a backslash followed by the letter n, is Enter.
void typeInto(QObject& window, const QString& text);

} // namespace zephyr::sandbox

#endif
