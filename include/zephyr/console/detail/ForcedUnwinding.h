#ifndef ZEPHYR_CONSOLE_DETAIL_FORCEDUNWINDING_H
#define ZEPHYR_CONSOLE_DETAIL_FORCEDUNWINDING_H

// What a function needs that catches everything host code may throw: pthread_exit() unwinds the stack by an exception
// that ends the program where it isn't let through.

#if defined(__GLIBCXX__) && __has_include(<cxxabi.h>)
#include <cxxabi.h>

/// A handler that lets a thread end. It stands before `catch (...)`.
#define ZEPHYR_LET_FORCED_UNWINDING_THROUGH                                                                  \
    catch (const abi::__forced_unwind&) { throw; }

/// Marks a function with such a handler, whose reference is bound to no object: the undefined-behaviour sanitizer takes
/// it for a null reference.
#define ZEPHYR_CATCHES_FORCED_UNWINDING __attribute__((no_sanitize("null")))
#else
#define ZEPHYR_LET_FORCED_UNWINDING_THROUGH
#define ZEPHYR_CATCHES_FORCED_UNWINDING
#endif

#endif
