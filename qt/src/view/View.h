#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEW_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEW_H

#include "../ConsoleLender.h"
#include "FindBar.h"
#include "LogRows.h"
#include "OfferWindow.h"
#include "Offers.h"
#include "RecallBar.h"
#include "RowScroll.h"
#include "Selection.h"
#include "ViewShare.h"
#include "ViewState.h"
#include "zephyr/console/qt/Look.h"

#include <QPointF>
#include <QRectF>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class QObject;

namespace zephyr::console::qt {

struct KeyPress;

/// What a person sees of a console and does with it beyond the console's own input line: where the view stands in the
/// log, what is selected, what is looked for, and how it looks. For the host's thread, but for share().
class View
{
public:
    /// What the view asks of the host.
    struct Host
    {
        std::function<void(const KeyPress&)> press; ///< Presses a key on the console.
        std::function<void()> changed;              ///< What a frame shows changed.
    };

    /// Timers run as long as `context` lives.
    View(QObject& context, std::shared_ptr<ConsoleLender> console, Host host);

    /// What the thread that paints and this object tell each other.
    ViewShare& share() { return mShare; }
    const ViewShare& share() const { return mShare; }

    // Keys

    /// Whether an open console's view has a use for a key that types nothing.
    bool wants(int key, int modifiers) const;

    /// Whether a key acts at once, while a line runs too, since it doesn't touch the console.
    bool actsAtOnce(const KeyPress& press) const;

    /// Handles a key. `isLate`: whether it waited for the end of a line, so that a find bar which was opened meanwhile
    /// is not what it was meant for. \return whether it was one for the view; else it is the console's.
    bool press(Console& console, const KeyPress& press, bool isLate = false);

    /// Presses a key on the console that press() left to it. Tab does what the list of offers promises.
    void pressOnConsole(Console& console, const KeyPress& press);

    /// Must be called after something was done with the console: offers what fits its line now.
    void afterConsoleActed(Console& console);

    /// Puts an offer on the input line. `index` counts the offers of the last state.
    void pickOffer(std::size_t index);

    // Scrolling, in rows towards older ones

    void scrollBy(std::int64_t rows);

    /// Puts what is at a share of the log at the top, from 0 to 1.
    void scrollToShare(double share);

    /// Shows the newest rows.
    void showNewest();

    // Selecting, by places in logical pixels of the last frame

    /// The text at or nearest to a place; none if no frame was painted.
    std::optional<TextPlace> placeNear(QPointF point);

    /// Where a code point stands in the last frame; none if that doesn't show it.
    std::optional<QRectF> areaOf(TextPlace place);

    /// Selects a range of the text.
    void select(const TextRange& range);

    /// Selects the unit at a place.
    void select(TextPlace place, Unit unit);

    /// Extends what is selected up to the unit at a place. Where nothing is selected, it begins where the last
    /// selection began.
    void extendTo(TextPlace place);

    /// Selects nothing.
    void selectNothing();

    /// Puts what is selected on the clipboard, or into X11's primary selection.
    void copySelection(bool toPrimary);

    // The rest

    /// Sets what an input method composes.
    void setComposition(const QString& text);

    /// How it looks, without the zoom of the session.
    const Look& look() const { return mLook; }
    void setLook(const Look& look);

    /// Hides what the log holds so far.
    void clear();

    /// Closes bars and selection and shows the newest rows, for a console that opens or closes.
    void reset();

    /// Must be called when the log may have grown.
    void onLogGrown();

    /// Searches for some milliseconds for what the find bar asks for. A timer calls it as long as there is more to
    /// search. \return whether there is.
    bool searchOn();

private:
    bool pressOnFindBar(const KeyPress& press);
    bool pressOnRecallBar(Console& console, const KeyPress& press);
    void leave(Console& console);
    void openFindBar();
    void openRecallBar(Console& console);
    void takeRecalled(Console& console);
    void zoom(int steps);
    void revealHit(const Console& console);
    void page(int direction);
    std::optional<RowScroll::Log> logOf(const Console& console, const FramePlan& plan);
    std::shared_ptr<const ViewFont> fontFor(const Look& look);
    Look zoomedLook() const;
    PressKey presser() const;
    ViewState::List offers(Console& console);
    ViewState state();
    void publish();

    const std::shared_ptr<ConsoleLender> mConsole;
    const Host mHost;
    ViewShare mShare;

    Look mLook;
    int mZoom = 0; // steps
    std::size_t mFirstEntry = 0;
    QString mComposition;
    RowScroll mScroll;
    Selection mSelection;
    FindBar mFind;
    RecallBar mRecall;
    Offers mOffers;
    OfferWindow mOfferWindow;
    QTimer mSearch;

    std::shared_ptr<const ViewFont> mFont; // of the host's thread
    LogRows mRows;
};

} // namespace zephyr::console::qt

#endif
