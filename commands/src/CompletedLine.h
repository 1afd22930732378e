#ifndef ZEPHYR_CONSOLE_COMMANDS_COMPLETEDLINE_H
#define ZEPHYR_CONSOLE_COMMANDS_COMPLETEDLINE_H

#include "zephyr/console/ConsoleArgs.h"

#include <string>
#include <vector>

namespace zephyr::console::commands {

/// A word that Tab may offer.
struct Offer
{
    std::u32string head;  ///< What stands before the value, such as `/speed=`.
    std::u32string value; ///< Without quotes.
    bool needsQuotes;     ///< Whether the command would read the value as something else without them.
};

/// A line that is being completed: the words behind the command word that are finished, and the beginning of the last.
///
/// The console divides such a line at every blank, and puts a candidate in place of what stands behind the last one. Here
/// words in quotes are whole again, and a candidate for one is the rest of it.
class CompletedLine
{
public:
    explicit CompletedLine(const ConsoleArgs& args);

    /// Whether nothing can be offered: the command word isn't finished, or the last word names a redirection's file.
    bool isClosed() const { return mIsClosed; }

    /// The finished words, with their quotes.
    const std::vector<std::u32string>& finished() const { return mFinished; }

    /// The last word, with its quotes; empty behind a blank.
    const std::u32string& last() const { return mLast; }

    /// The candidates for the console: those offers that begin with the last word and add to it, each once.
    std::vector<std::u32string> candidates(const std::vector<Offer>& offers) const;

private:
    std::vector<std::u32string> mFinished;
    std::u32string mLast;
    bool mIsClosed;
};

} // namespace zephyr::console::commands

#endif
