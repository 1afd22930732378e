#ifndef ZEPHYR_COMMON_ASSERT_H
#define ZEPHYR_COMMON_ASSERT_H

#include "zephyr/common/Export.h"

#include <functional>

namespace zephyr {

/// One programming error, as it is handed to Assert's handler. The texts are UTF-8, belong to the caller, and
/// are valid only while the handler runs.
struct AssertFailure
{
    const char* source;     ///< Where it was found: a file or class name as the caller wrote it. May be null.
    int line;               ///< The line in it, as the caller wrote it.
    const char* expression; ///< What should have been true, as source text. May be null.
    const char* message;    ///< More words for a person, often empty. May be null.
    bool canContinue;       ///< Whether the caller has a harmless way on.
};

/// Where programming errors are reported, and who decides what becomes of them.
///
/// - It is: one handler for the process, with a warning in Qt's log as the default. It is not: a macro; it
///   never stops the program itself.
/// - Threads: any, all at once. No lock is held while the handler runs, so it may report, or replace itself.
/// - Ownership: the handler is kept until it is replaced, and past the end of `main`; what it refers to must
///   live as long.
/// - Failure: none of its own; what a handler throws goes to the caller of notifyAssert().
struct Assert
{
    /// Decides about a failure: `true` to go on, `false` to have the caller raise the platform's own
    /// assertion. It is called on the thread that found the failure, and by several threads at once when
    /// several find one.
    using Handler = std::function<bool(const AssertFailure&)>;

    /// Reports that `expression` was false in `line` of `source`, and returns what the handler answers:
    /// `true` when it is handled and the caller goes on, `false` when the caller is to raise the platform's
    /// own assertion.
    ///
    /// Without a handler it logs `source:line: assertion failed: expression`, and `: message` behind it where
    /// there is one, through `qWarning` and returns `true`.
    ZEPHYR_COMMON_EXPORT static bool notifyAssert(const char* source, int line, const char* expression,
                                                  const char* message, bool canContinue);

    /// Replaces the handler and returns a copy of the one before; an empty one stands for the default in both
    /// directions, so that passing the answer back restores what was. A call of the handler before that
    /// another thread has begun may still run when this returns.
    ZEPHYR_COMMON_EXPORT static Handler setHandler(Handler handler);

    /// Whether checks that only matter to those who test the program are to be reported too; who makes such a
    /// check asks this first. `true` at start.
    ZEPHYR_COMMON_EXPORT static bool showQAVerify();

    /// Sets what showQAVerify() answers, for all threads.
    ZEPHYR_COMMON_EXPORT static void setShowQAVerify(bool show);
};

} // namespace zephyr

#endif
