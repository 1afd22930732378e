#ifndef ZEPHYR_COMMON_ASSERT_H
#define ZEPHYR_COMMON_ASSERT_H

#include "zephyr/common/Export.h"

#include <functional>

namespace zephyr {

/// One programming error, as Assert's handler gets it. The texts are UTF-8 and valid only while the handler
/// runs.
struct AssertFailure
{
    const char* source;     ///< The file or class that found it, as the caller wrote it. May be null.
    int line;               ///< The line in it, as the caller wrote it.
    const char* expression; ///< What should have been true, as source text. May be null.
    const char* message;    ///< An explanation for people, often empty. May be null.
    bool canContinue;       ///< Whether the caller can go on without harm.
};

/// The place to report programming errors. The process has one handler that decides what to do about them;
/// the default logs a warning through Qt. Nothing here stops the program.
///
/// - Threads: all functions may be called from several threads at once. No lock is held while the handler
///   runs, so it may report an error itself, or replace itself.
/// - Ownership: the handler is kept until it is replaced, even past the end of `main`; what it refers to must
///   live as long.
/// - Failure: what a handler throws reaches the caller of notifyAssert().
struct Assert
{
    /// Decides about a failure: `true` to go on, `false` to have the caller raise the platform's own
    /// assertion. It is called on the thread that found the failure, and so perhaps on several threads at
    /// once.
    using Handler = std::function<bool(const AssertFailure&)>;

    /// Reports that `expression` was false in `line` of `source`, and returns what the handler answers:
    /// `true` when the caller is to go on, `false` when it is to raise the platform's own assertion.
    ///
    /// Without a handler it logs `source:line: assertion failed: expression` through `qWarning`, followed by
    /// `: message` if there is a message, and returns `true`.
    ZEPHYR_COMMON_EXPORT static bool notifyAssert(const char* source, int line, const char* expression,
                                                  const char* message, bool canContinue);

    /// Sets the handler and returns a copy of the previous one. An empty handler stands for the default, both
    /// as argument and as result, so passing the result back restores the previous state. A call of the
    /// previous handler on another thread may still be running when this returns.
    ZEPHYR_COMMON_EXPORT static Handler setHandler(Handler handler);

    /// Whether to report failures of checks that only matter to testers of the program. Code that makes such
    /// a check asks this first. `true` at start.
    ZEPHYR_COMMON_EXPORT static bool showQAVerify();

    /// Sets what showQAVerify() answers, for all threads.
    ZEPHYR_COMMON_EXPORT static void setShowQAVerify(bool show);
};

} // namespace zephyr

#endif
