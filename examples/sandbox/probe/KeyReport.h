#ifndef ZEPHYR_SANDBOX_PROBE_KEYREPORT_H
#define ZEPHYR_SANDBOX_PROBE_KEYREPORT_H

#include <QString>

class QKeyEvent;

namespace zephyr::sandbox {

/// \file What a keyboard sends, each in one line of plain ASCII for a person. Any thread may call these.

/// A press: its key by name and number, text, modifiers and scan code, and whether it opens or closes the console.
QString pressReport(const QKeyEvent& event);

/// The release of a key whose press was not delivered, as an input method keeps a dead key's. An open console closes by
/// it all the same if it is one that toggles.
QString unheardReport(const QKeyEvent& event);

/// What an input method commits.
QString commitReport(const QString& text);

} // namespace zephyr::sandbox

#endif
