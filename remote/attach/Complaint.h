#ifndef ZEPHYR_ATTACH_COMPLAINT_H
#define ZEPHYR_ATTACH_COMPLAINT_H

#include <QString>

namespace zephyr::attach {

/// Writes `what` to standard error as one line that begins with the program's name. Line feeds become spaces, and control
/// characters harmless ones.
void complain(const QString& what);

} // namespace zephyr::attach

#endif
