#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWSTATE_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWSTATE_H

#include "Selection.h"
#include "TextPlace.h"
#include "zephyr/console/qt/Look.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {

/// What a frame shows beside the log and the input line: plain values that the host's thread makes and any thread may
/// copy and paint.
struct ViewState
{
    /// A line of its own below the input line.
    struct Bar
    {
        std::u32string label;
        std::u32string text;        ///< What is typed into it.
        std::size_t cursor = 0;     ///< Index into text.
        std::u32string status;      ///< At the right.
        std::u32string composition; ///< What an input method composes at the cursor.

        bool operator==(const Bar&) const = default;
    };

    /// What is looked for in the log, of which every hit is marked.
    struct Find
    {
        std::u32string query; ///< Empty for nothing.
        bool matchesCase = false;
        std::optional<TextPlace> current; ///< Where the hit begins that was stepped to.

        bool operator==(const Find&) const = default;
    };

    /// A line of a list of offers.
    struct Offer
    {
        std::u32string text;
        std::u32string description;

        bool operator==(const Offer&) const = default;
    };

    /// The offers for the input line, as far as they may be in view.
    struct List
    {
        std::vector<Offer> offers;           ///< Empty for no list.
        std::optional<std::size_t> selected; ///< Index into offers.
        std::size_t first = 0;               ///< The index of the first one among all.
        std::size_t count = 0;               ///< How many there are in all.
        bool areSuggestions = false;         ///< Whether they are what may have been meant, as nothing fits.

        bool operator==(const List&) const = default;
    };

    Look look; ///< Zoomed already.
    double blinkRate =
        0.0; ///< How often a second the cursor changes between shown and hidden; 0 shows it always.
    std::size_t firstEntry = 0;   ///< Earlier ones are hidden.
    std::optional<TextPlace> top; ///< The first row in view; none while the newest row is followed.
    std::size_t sizeSeen = 0;     ///< Of the log, when its end was last in view.
    TextRange selection;
    QString composition; ///< What an input method composes at the cursor.
    Find find;
    std::optional<Bar> bar;
    std::optional<std::u32string> recalled; ///< Shown in place of the input line.
    List list;

    bool operator==(const ViewState&) const = default;
};

} // namespace zephyr::console::qt

#endif
