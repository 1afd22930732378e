#ifndef ZEPHYR_CONSOLE_COMMANDS_FAILURE_H
#define ZEPHYR_CONSOLE_COMMANDS_FAILURE_H

#include "zephyr/console/commands/detail/Export.h"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::commands {

/// Ends the command that throws it, or Value::read(), with one line for the user. It never leaves Console::execute().
class ZEPHYR_CONSOLE_COMMANDS_EXPORT CommandError : public std::runtime_error
{
public:
    /// \param line what the user reads, a whole sentence.
    explicit CommandError(const std::u32string& line);

    /// \param line what the user reads, a whole sentence in UTF-8.
    explicit CommandError(const std::string& line);

    /// Copies the error. Copying never throws, so that it can be thrown on.
    CommandError(const CommandError&) = default;

    /// Copies the error.
    CommandError& operator=(const CommandError&) = default;

    ~CommandError() override;
};

/// Ends the command that calls it with `line`, a whole sentence: throws CommandError.
[[noreturn]] ZEPHYR_CONSOLE_COMMANDS_EXPORT void fail(const std::u32string& line);

/// As fail() of code points, for UTF-8.
[[noreturn]] ZEPHYR_CONSOLE_COMMANDS_EXPORT void fail(const std::string& line);

/// Counts the commands of this library that fail on one console while the counter lives, so that a batch run can end
/// with an error: those that fail() or throw CommandError, and those whose words are refused. A line whose first word is
/// no command is not counted, since it reaches none.
///
/// - Threads: create, ask and destroy it on the console's thread.
/// - Ownership: it holds no console, and sees those failures only that happen during its life.
class FailureCounter
{
public:
    /// Begins to count on `console`.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT explicit FailureCounter(const Console& console);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT ~FailureCounter();

    FailureCounter(const FailureCounter&) = delete;
    FailureCounter& operator=(const FailureCounter&) = delete;
    FailureCounter(FailureCounter&&) = delete;
    FailureCounter& operator=(FailureCounter&&) = delete;

    /// The number of commands that failed since the counter was made.
    std::size_t count() const { return mCount; }

    /// What the command that failed last answered, or an empty text.
    const std::u32string& lastLine() const { return mLastLine; }

private:
    friend class FailureNotice; // tells the counters of a failure

    const Console* mConsole;
    FailureCounter* mOuter; // the next older counter of this thread
    std::size_t mCount = 0;
    std::u32string mLastLine;
};

} // namespace zephyr::console::commands

#endif
