#ifndef ZEPHYR_CONSOLE_QT_VIEW_OFFERS_H
#define ZEPHYR_CONSOLE_QT_VIEW_OFFERS_H

#include "ArgumentTexts.h"
#include "CommandNames.h"
#include "CompletionSource.h"
#include "NameSteps.h"
#include "SharedTexts.h"
#include "TabCompletion.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// One line of the list of offers.
struct Offer
{
    std::u32string text;        ///< What goes on the input line.
    std::u32string description; ///< One short line; may be empty.

    bool operator==(const Offer&) const = default;
};

/// The list of what fits a console's input line, and what Tab does to the line. It draws nothing.
///
/// While the cursor is in the first word, or behind one that names nothing, the list holds the names of commands and
/// aliases that begin with it, in ascending order of code points; where there are none, suggestions of what may have
/// been meant. Behind a command's name it holds the command's own completions, in the command's order. Once Tab has
/// begun a completion, it holds the candidates that Tab steps through, until the next insertion or erasure.
///
/// - Threads: the console's own thread makes all calls, for one and the same console.
/// - Completions are host code. They run inside update(), pressKey() and pick(), which pass on nothing that they throw.
///   A command that took longer than 30 ms is asked only by Tab from then on. Whatever they call meanwhile, the console
///   and this object must outlive the call. Calls of this object from inside of them do nothing but press keys.
/// - Keys must go through pressKey(). A line that changed otherwise is noticed by the next update().
/// - Failure: throws `std::bad_alloc`, and what `press` throws.
class Offers
{
public:
    explicit Offers(CompletionSource::Clock clock = &std::chrono::steady_clock::now);

    /// Brings the list up to date; to be called after anything changed. O(length of the line) if the line and its
    /// cursor did not.
    void update(Console& console);

    /// Presses a key of the console through `press`, once or, for Tab and Backtab, as is needed to do what the list
    /// promises; then updates the list. Every other key goes to the console as it is. One that runs the line clears the
    /// list.
    void pressKey(Console& console, int key, int modifiers, const std::u32string& text,
                  const PressKey& press);

    /// Puts the offer at `index` on the line as Tab would. Does nothing if there is none, or the list isn't shown.
    void pick(Console& console, std::size_t index, const PressKey& press);

    /// Puts the list away until the line changes or Tab is pressed.
    void dismiss();

    /// Whether there is a list to show.
    bool isShown() const { return !mIsDismissed && !mTexts.empty(); }

    /// The number of offers, whether they are shown or not.
    std::size_t count() const { return mTexts.size(); }

    /// The offer at `index`, which must be less than count(). Describes a command by its arguments, an alias by its
    /// lines. O(log n), and O(number of arguments) of a command.
    Offer at(Console& console, std::size_t index) const;

    /// Whether nothing fits the line, and these are guesses at what was meant.
    bool areSuggestions() const { return mKind == Kind::Suggestions; }

    /// The index of the offer that Tab put on the line, while it stands there.
    std::optional<std::size_t> selected() const { return mSelected; }

private:
    enum class Kind
    {
        Names,
        Suggestions,
        Candidates
    };
    class Busy;
    struct Tab;

    void noticeOtherEdits(const ConsoleInput& input);
    void refresh(Console& console);
    void makeList(Console& console, const ConsoleInput& input);
    void clearList();
    void showSteps();
    void showCompletion(Console& console, const ConsoleInput& input);
    void showNames(Console& console, const std::u32string& word);
    void showCandidates(Console& console, const std::u32string& word, const std::u32string& line);

    void pressOther(Console& console, int key, int modifiers, const std::u32string& text,
                    const PressKey& press);
    void pressTab(Console& console, const Tab& tab);
    void pressTabBehindName(Console& console, const std::u32string& name, const Tab& tab);
    void stepNames(Console& console, const std::u32string& word, const Tab& tab);
    void completeInConsole(Console& console, const Tab& tab);
    void followBegun(Console& console, const std::u32string& base, bool backwards, const ConsoleInput& after);
    void pickName(Console& console, std::size_t index, const PressKey& press);
    void pickCandidate(Console& console, std::size_t index, const PressKey& press);

    CompletionSource mSource;
    CommandNames mNames;
    ArgumentTexts mArguments;
    TabCompletion mCompletion;
    NameSteps mSteps;

    Kind mKind = Kind::Names;
    SharedTexts mTexts;
    std::optional<std::size_t> mSelected;
    std::optional<std::u32string>
        mMadeFor; // the word of mTexts that are names, the line of those that are candidates
    std::optional<ConsoleInput> mSeen;   // at the last update; nothing if the console was closed
    std::optional<ConsoleInput> mSpaced; // as a name that got its space left it
    bool mIsDismissed = false;
    bool mIsBusy = false; // with keys or host code, in a function further out on the stack
};

} // namespace zephyr::console::qt

#endif
