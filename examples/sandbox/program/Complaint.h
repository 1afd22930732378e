#ifndef ZEPHYR_SANDBOX_PROGRAM_COMPLAINT_H
#define ZEPHYR_SANDBOX_PROGRAM_COMPLAINT_H

#include <QString>

#include <string>

namespace zephyr::sandbox {

/// Writes `what` to standard error as one line that begins with the program's name. Line feeds become spaces.
void complain(const QString& what);

/// Complains that standard output can't be written. `why` is the reason in the system's words.
void complainAboutOutput(const std::string& why);

} // namespace zephyr::sandbox

#endif
