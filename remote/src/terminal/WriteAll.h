#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_WRITEALL_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_WRITEALL_H

#include <QByteArray>

#include <cstdio>

namespace zephyr::console::remote {

/// Writes bytes to a stream, behind what its buffer holds. Waits where the descriptor doesn't block and takes no more for
/// now. A closed pipe is a failure and no signal, whatever the program does with SIGPIPE; nothing of the bytes is left in the
/// buffer, to fail again when the program exits.
/// \return 0, or the system's number of the error.
int writeAll(std::FILE* out, const QByteArray& bytes);

} // namespace zephyr::console::remote

#endif
