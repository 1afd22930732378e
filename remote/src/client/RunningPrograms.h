#ifndef ZEPHYR_CONSOLE_REMOTE_CLIENT_RUNNINGPROGRAMS_H
#define ZEPHYR_CONSOLE_REMOTE_CLIENT_RUNNINGPROGRAMS_H

#include "protocol/SocketPlace.h"

#include <QString>
#include <QtGlobal>

#include <chrono>
#include <vector>

namespace zephyr::console::remote {

/// The number of programs that are found at most.
inline constexpr qsizetype kMaxFound = 256;

/// A program that serves its console.
struct RunningProgram
{
    QString name;
    qint64 pid = 0;
    bool answers = false; ///< Whether it greeted, in this version of the protocol, before the time was up.

    bool operator==(const RunningProgram&) const = default;
};

/// The programs that listen in a place, sorted by name, kMaxFound at most; sockets that a program left behind are skipped.
/// Asks so many at once, and waits for those that don't answer until `limit` is over. Runs an event loop.
std::vector<RunningProgram> runningPrograms(const SocketPlace& place, std::chrono::milliseconds limit);

} // namespace zephyr::console::remote

#endif
