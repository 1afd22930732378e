#ifndef ZEPHYR_CONSOLE_CONSOLEARGS_H
#define ZEPHYR_CONSOLE_CONSOLEARGS_H

#include "zephyr/console/detail/Export.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zephyr::console {

/// The words of one console line as a command sees them, with a trailing output redirection cut off.
///
/// The console splits the line into words; quote characters stay in them. A missing word reads as the empty
/// string, and only cmd() without any word reports an assertion. References that the class returns live as
/// long as the object. It is a plain value: several threads may read one object at once.
///
/// | words | arguments | redirectTarget() | hasRedirectOpen() |
/// |---|---|---|---|
/// | `cmd a` | `cmd` `a` | empty | false |
/// | `cmd > f` | `cmd` | `f` | false |
/// | `cmd >! f` | `cmd` | `f` | true |
/// | `cmd a > f1 f2` | `cmd` `a` | `f2` | false |
/// | `cmd >!` | `cmd` | empty | true |
/// | `cmd >> f` | `cmd` `>>` `f` | empty | false |
class ConsoleArgs
{
public:
    /// Takes the words of a line, command word first, and cuts the redirection off. The first word that is
    /// exactly `>` or `>!` starts it; the last other word after that is the target (docs/decisions.md,
    /// oddity 17); a `>!` anywhere from there on asks for the target to be opened.
    ZEPHYR_CONSOLE_EXPORT ConsoleArgs(std::vector<std::u32string> words);

    /// As above, for a line that is being completed: `endsWithBlank` says whether a space stands at its end, which the
    /// words don't show.
    ConsoleArgs(std::vector<std::u32string> words, bool endsWithBlank) : ConsoleArgs(std::move(words))
    {
        mEndsWithBlank = endsWithBlank;
    }

    /// The command word (index 0). Without any word it reports the assertion `!mArgs.empty()` and returns an
    /// empty string that lives as long as the program.
    ZEPHYR_CONSOLE_EXPORT const std::u32string& cmd() const;

    /// The sub-command word (index 1), or an empty string when there is none.
    ZEPHYR_CONSOLE_EXPORT const std::u32string& subCmd() const;

    /// The number of words, the command word included; the redirection is not counted.
    ZEPHYR_CONSOLE_EXPORT unsigned argCount() const;

    /// Whether any word, the command word included, equals `word`. Case matters.
    ZEPHYR_CONSOLE_EXPORT bool isAnyArg(std::u32string_view word) const;

    /// Whether a redirect target was named.
    ZEPHYR_CONSOLE_EXPORT bool hasRedirect() const;

    /// Whether `>!` asked for the target to be opened in its application, even if no target was named.
    ZEPHYR_CONSOLE_EXPORT bool hasRedirectOpen() const;

    /// A copy of the redirect target, empty when there is none.
    ZEPHYR_CONSOLE_EXPORT std::u32string redirectTarget() const;

    /// A copy of the word at `index` (0-based, 0 is the command word), or an empty string when `index` is
    /// greater than argCount(). Never pass `argCount()` itself, which is outside the contract
    /// (docs/decisions.md, oddity 15).
    std::u32string arg(unsigned index) const
    {
        return index < mArgs.size() ? mArgs[index] : std::u32string();
    }

    /// Whether the line that is being completed ends with a space, so that its last word is finished and the
    /// candidates are for one more. False for a line that runs.
    bool endsWithBlank() const { return mEndsWithBlank; }

private:
    std::vector<std::u32string> mArgs;
    bool mRedirectOpen = false;
    bool mEndsWithBlank = false;
    std::u32string mRedirectTarget;
};

} // namespace zephyr::console

#endif
