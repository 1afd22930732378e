#ifndef ZEPHYR_SANDBOX_PROGRAM_POSIXPROCESS_H
#define ZEPHYR_SANDBOX_PROGRAM_POSIXPROCESS_H

namespace zephyr::sandbox {

/// Makes a closed pipe a failed write, which is reported, and names a UTF-8 locale in the environment if it names another
/// one, none, or one that is not installed: Qt would take one by itself, but complain on standard error. Call this before the
/// application object is made, with no other thread.
void preparePosixProcess();

} // namespace zephyr::sandbox

#endif
