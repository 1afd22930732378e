#ifndef ZEPHYR_CONSOLE_REMOTE_SERVER_PEERUSER_H
#define ZEPHYR_CONSOLE_REMOTE_SERVER_PEERUSER_H

#include <QtGlobal>

namespace zephyr::console::remote {

/// Whether the process at the other end of a local socket belongs to the user of this one, by what the system knows of
/// it. No if the system can't tell.
bool isOwnUser(qintptr socket);

} // namespace zephyr::console::remote

#endif
