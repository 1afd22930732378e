#ifndef ZEPHYR_SANDBOX_PROBE_KEYREPORT_H
#define ZEPHYR_SANDBOX_PROBE_KEYREPORT_H

#include <QString>

class QKeyEvent;

namespace zephyr::sandbox {

// What a keyboard sends, as lines of plain ASCII for people to read. From any thread.

/// A key press: the key by name and number, its text, modifiers and scan code, and whether it opens or closes the
/// console.
QString pressReport(const QKeyEvent& event);

/// The release of a key whose press was not delivered: an input method keeps the press of a dead key. If such a key
/// toggles the console, its release closes an open one.
QString strayReleaseReport(const QKeyEvent& event);

/// A text that an input method commits.
QString commitReport(const QString& text);

} // namespace zephyr::sandbox

#endif
