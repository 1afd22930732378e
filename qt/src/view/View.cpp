#include "View.h"

#include "../Gui.h"
#include "../KeyPress.h"
#include "EntryText.h"
#include "RowLayout.h"
#include "ViewKeys.h"
#include "zephyr/console/Console.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QStyleHints>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

namespace {

constexpr int kSearchMs = 8;           // of a frame, for the search of a long log
constexpr std::size_t kMostOffers = 8; // in view
constexpr double kZoomStep = 1.1;
constexpr int kMostZoom = 20; // steps either way
constexpr double kMinPointSize = 1.0;
constexpr int kLeastFlashTime = 2; // milliseconds; below it, Qt's own text fields have a steady cursor

/// Whether the person at the desktop, or the program, wants cursors that don't blink.
bool isCursorSteady()
{
    return hasGui() && QGuiApplication::styleHints()->cursorFlashTime() < kLeastFlashTime;
}

ViewAction actionOf(const KeyPress& press)
{
    return press.text.empty() ? viewActionOf(press.key, static_cast<Qt::KeyboardModifiers>(press.modifiers))
                              : ViewAction::None;
}

} // namespace

View::View(QObject& context, std::shared_ptr<ConsoleLender> console, Host host)
    : mConsole(std::move(console)), mHost(std::move(host))
{
    mSearch.setInterval(0);
    mShare.setState(std::make_shared<const ViewState>(state()));
    if (hasGui()) {
        QObject::connect(QGuiApplication::styleHints(), &QStyleHints::cursorFlashTimeChanged, &context,
                         [this] { mHost.onTimer([this] { publish(); }); });
    }
    QObject::connect(&mSearch, &QTimer::timeout, &context, [this] {
        mHost.onTimer([this] {
            try {
                searchOn();
            } catch (const std::bad_alloc&) {
                mSearch.stop(); // the next key of the bar goes on
            }
        });
    });
}

// Keys

bool View::wants(int key, int modifiers) const
{
    if (mFind.isOpen() && FindBar::wants(key, modifiers)) {
        return true;
    }
    const ViewAction action = viewActionOf(key, static_cast<Qt::KeyboardModifiers>(modifiers));
    return action == ViewAction::Copy ? !mSelection.range().isEmpty() : action != ViewAction::None;
}

bool View::actsAtOnce(const KeyPress& press) const
{
    switch (actionOf(press)) {
    case ViewAction::Copy:
    case ViewAction::Find:
    case ViewAction::PageUp:
    case ViewAction::PageDown:
    case ViewAction::ZoomIn:
    case ViewAction::ZoomOut:
    case ViewAction::ZoomToNormal: return true;
    case ViewAction::Leave: return mFind.isOpen() || !mSelection.range().isEmpty();
    default: return mFind.isOpen();
    }
}

bool View::press(Console& console, const KeyPress& press, bool isLate)
{
    if (mRecall.isOpen() && pressOnRecallBar(console, press)) {
        return true;
    }
    const bool isForFindBar = mFind.isOpen() && !isLate;
    if (isForFindBar && pressOnFindBar(press)) {
        return true;
    }
    const ViewAction action = actionOf(press);
    switch (action) {
    case ViewAction::Leave: leave(console); return true;
    case ViewAction::Copy: copySelection(false); return true;
    case ViewAction::Find: openFindBar(); return true;
    case ViewAction::Recall: openRecallBar(console); return true;
    case ViewAction::PageUp: page(1); return true;
    case ViewAction::PageDown: page(-1); return true;
    case ViewAction::ZoomIn: zoom(1); return true;
    case ViewAction::ZoomOut: zoom(-1); return true;
    case ViewAction::ZoomToNormal: zoom(-mZoom); return true;
    default: break;
    }
    if (isForFindBar) {
        return true; // a key that would change the line, which is not what the user looks at
    }
    if (!mFind.isOpen()) {
        mScroll.follow();
        mSelection.clear();
        publish();
    }
    if (action == ViewAction::Paste) {
        mHost.press({Qt::Key_V, Qt::ControlModifier, {}});
    }
    return action == ViewAction::Paste;
}

/// What is on top is left first. An open console with an empty line is left last.
void View::leave(Console& console)
{
    if (mFind.isOpen()) {
        mFind.close();
        mSearch.stop();
    } else if (mOffers.isShown()) {
        mOffers.dismiss();
    } else if (!mSelection.range().isEmpty()) {
        mSelection.clear();
    } else if (console.activeInput().empty()) {
        console.close();
    }
    publish();
}

bool View::pressOnFindBar(const KeyPress& press)
{
    if (!mFind.press(press)) {
        return false;
    }
    mSearch.start();
    searchOn();
    if (const BorrowedConsole console(mConsole); console) {
        revealHit(*console); // which the key may have stepped to
        publish();
    }
    return true;
}

void View::openFindBar()
{
    mRecall.close();
    if (!mFind.isOpen()) {
        const std::shared_ptr<const FramePlan> plan = mShare.plan();
        const bool hasRows = mScroll.top() && plan && !plan->log.empty();
        const TextPlace from = hasRows ? TextPlace{plan->log.back().row.entry, plan->log.back().row.end}
                                       : TextPlace{kInputLine, 0};
        mFind.open(from, mFirstEntry);
    }
    publish();
}

bool View::searchOn()
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return false;
    }
    const auto before = mFind.find().current;
    QElapsedTimer clock;
    clock.start();
    bool isMore = true;
    while (isMore && clock.elapsed() < kSearchMs) {
        isMore = mFind.search(*console);
    }
    if (!isMore) {
        mSearch.stop();
    }
    if (mFind.find().current != before) {
        revealHit(*console);
    }
    publish();
    return isMore;
}

/// Scrolls to the hit that is the current one now.
void View::revealHit(const Console& console)
{
    const std::optional<TextPlace> current = mFind.find().current;
    const std::shared_ptr<const FramePlan> plan = mShare.plan();
    std::optional<RowScroll::Log> log = plan ? logOf(console, *plan) : std::nullopt;
    if (current && log) {
        log->page = std::max(1, log->page - (plan->bar.isEmpty() ? 1 : 0)); // the bar takes a row
        mScroll.reveal(*current, *log);
    }
}

bool View::pressOnRecallBar(Console& console, const KeyPress& press)
{
    if (actionOf(press) == ViewAction::Leave) {
        mRecall.close();
        publish();
        return true;
    }
    switch (mRecall.press(press)) {
    case RecallBar::Result::Stays: publish(); return true;
    case RecallBar::Result::Taken: takeRecalled(console); return press.key == Qt::Key_Tab;
    default: return actionOf(press) == ViewAction::None;
    }
}

void View::openRecallBar(Console& console)
{
    mFind.close();
    mScroll.follow();
    mRecall.open(console.history());
    publish();
}

/// Puts the line that was found on the input line, where the key that took it acts next.
void View::takeRecalled(Console& console)
{
    mRecall.close();
    if (const std::optional<std::size_t> record = mRecall.record()) {
        recallRecord(console, *record, [this](Qt::Key key) { mHost.press({key, Qt::NoModifier, {}}); });
    }
    publish();
}

void View::returnToLine(Console& console)
{
    mFind.close();
    mSearch.stop();
    if (mRecall.isOpen()) {
        takeRecalled(console);
    }
    mScroll.follow();
    mSelection.clear();
    publish();
}

PressKey View::presser() const
{
    return
        [this](int key, int modifiers, const std::u32string& text) { mHost.press({key, modifiers, text}); };
}

void View::pressOnConsole(Console& console, const KeyPress& press)
{
    mOffers.pressKey(console, press.key, press.modifiers, press.text, presser());
}

void View::afterConsoleActed(Console& console)
{
    mOffers.update(console);
    publish();
}

void View::pickOffer(Console& console, const std::u32string& text)
{
    const std::shared_ptr<const ViewState> shown = mShare.state();
    const std::vector<ViewState::Offer>& offers = shown->list.offers;
    const auto found = std::find_if(offers.begin(), offers.end(),
                                    [&](const ViewState::Offer& offer) { return offer.text == text; });
    if (found != offers.end()) {
        mScroll.follow();
        mSelection.clear();
        mOffers.pick(console, mOfferWindow.first() + static_cast<std::size_t>(found - offers.begin()),
                     presser());
        publish();
    }
}

/// The part of the offers that a frame may show.
ViewState::List View::offers(Console& console)
{
    ViewState::List list;
    if (!mOffers.isShown() || mFind.isOpen() || mRecall.isOpen()) {
        return list;
    }
    mOfferWindow.follow(mOffers.count(), mOffers.selected(), kMostOffers);
    for (std::size_t i = 0; i < mOfferWindow.size(); ++i) {
        Offer offer = mOffers.at(console, mOfferWindow.first() + i);
        list.offers.push_back({std::move(offer.text), std::move(offer.description)});
    }
    list.first = mOfferWindow.first();
    list.count = mOffers.count();
    list.areSuggestions = mOffers.areSuggestions();
    if (const std::optional<std::size_t> selected = mOffers.selected()) {
        list.selected = *selected - list.first;
    }
    return list;
}

// Scrolling

std::optional<RowScroll::Log> View::logOf(const Console& console, const FramePlan& plan)
{
    if (console.logSize() <= mFirstEntry) {
        return std::nullopt;
    }
    mRows.setFormat(fontFor(zoomedLook()), rowWidth(plan.size));
    return RowScroll::Log{console, mRows, mFirstEntry, std::max(1, plan.page)};
}

std::shared_ptr<const ViewFont> View::fontFor(const Look& look)
{
    const double size = std::max(kMinPointSize, look.fontSize);
    if (mFont == nullptr || !mFont->isMadeOf(look.fontFamily, size)) {
        mFont = std::make_shared<const ViewFont>(look.fontFamily, size);
    }
    return mFont;
}

void View::scrollBy(std::int64_t rows)
{
    const BorrowedConsole console(mConsole);
    const std::shared_ptr<const FramePlan> plan = mShare.plan();
    if (!console || !plan) {
        return;
    }
    if (const auto log = logOf(*console, *plan)) {
        mScroll.scrollBy(rows, *log);
    }
    publish();
}

/// A page is a row less than what is in view, so that no row is skipped.
void View::page(int direction)
{
    if (const std::shared_ptr<const FramePlan> plan = mShare.plan()) {
        scrollBy(std::int64_t{direction} * std::max(1, plan->page - 1));
    }
}

void View::scrollToShare(double share)
{
    const BorrowedConsole console(mConsole);
    const std::shared_ptr<const FramePlan> plan = mShare.plan();
    if (!console || !plan) {
        return;
    }
    if (const auto log = logOf(*console, *plan)) {
        if (share >= 1.0) {
            mScroll.follow();
        } else {
            mScroll.showAtTop(placeAtShare(share, mFirstEntry, *console), *log);
        }
    }
    publish();
}

/// Follows the newest row again where its end came into view, as in a window that became larger.
void View::followFromEnd()
{
    if (mScroll.top() && mScroll.top() == mShare.topAtEnd()) {
        showNewest();
    }
}

void View::showNewest()
{
    mScroll.follow();
    publish();
}

// Selecting

std::optional<TextPlace> View::placeNear(QPointF point, Unit unit)
{
    const std::shared_ptr<const FramePlan> plan = mShare.plan();
    const FramePlan::PlacedRow* const placed =
        plan ? plan->rowNear(static_cast<int>(std::floor(point.y()))) : nullptr;
    if (placed == nullptr) {
        return std::nullopt;
    }
    const RowLayout layout(placed->row.text, *fontFor(zoomedLook()));
    const double x = point.x() - placed->row.x;
    std::size_t offset =
        placed->row.begin + (unit == Unit::Grapheme ? layout.indexNear(x) : layout.indexAt(x));
    if (placed->row.entry == kInputLine && offset > plan->composition) { // which is no part of the line
        offset -= std::min(offset, plan->cursor) - plan->composition;
    }
    return TextPlace{placed->row.entry, offset};
}

std::optional<QRectF> View::areaOf(TextPlace place)
{
    const std::shared_ptr<const FramePlan> plan = mShare.plan();
    if (!plan) {
        return std::nullopt;
    }
    const bool isInput = place.entry == kInputLine;
    if (isInput && place.offset >= plan->composition) { // which is no part of the line
        place.offset += plan->cursor - plan->composition;
    }
    const std::vector<FramePlan::PlacedRow>& rows = isInput ? plan->input : plan->log;
    const auto behind = std::find_if(rows.begin(), rows.end(), [&](const FramePlan::PlacedRow& placed) {
        return placed.row.place() > place;
    });
    if (behind == rows.begin() || std::prev(behind)->row.entry != place.entry) {
        return std::nullopt;
    }
    const FramePlan::PlacedRow& placed = *std::prev(behind);
    if (place.offset > placed.row.end) {
        return std::nullopt; // further down in the entry than the frame reaches
    }
    const std::shared_ptr<const ViewFont> font = fontFor(zoomedLook());
    const RowLayout layout(placed.row.text, *font);
    const std::size_t index = place.offset - placed.row.begin;
    const double left = layout.xOf(index);
    const double right = index < placed.row.text.size() ? layout.xOf(layout.nextGrapheme(index)) : left;
    return QRectF(placed.row.x + std::min(left, right), placed.top, std::abs(right - left),
                  font->lineHeight());
}

void View::select(const TextRange& range)
{
    const BorrowedConsole console(mConsole);
    if (console) {
        mSelection.begin(range, Unit::Grapheme);
        mSizeSelected = console->logSize();
        publish();
    }
}

void View::select(TextPlace place, Unit unit)
{
    const BorrowedConsole console(mConsole);
    if (console) {
        mSelection.begin(unitAround(place, unit, *console, console->readInput()), unit);
        mSizeSelected = console->logSize();
        publish();
    }
}

void View::extendTo(TextPlace place)
{
    const BorrowedConsole console(mConsole);
    if (console) {
        mSelection.extendTo(unitAround(place, mSelection.unit(), *console, console->readInput()));
        mSizeSelected = console->logSize();
        publish();
    }
}

/// Keeps entries that have come since out of a selection that reaches from the log into the input line, below them.
void View::cutSelection(const Console& console)
{
    const TextRange& range = mSelection.range();
    const bool spansEnd = range.from.entry < mSizeSelected && range.to.entry == kInputLine;
    if (spansEnd && console.logSize() > mSizeSelected) {
        const std::size_t last = mSizeSelected - 1;
        mSelection.cutAt({last, EntryText(console, last).size()});
        publish();
    }
}

void View::selectNothing()
{
    mSelection.clear();
    publish();
}

void View::copySelection(bool toPrimary)
{
    const BorrowedConsole console(mConsole);
    QClipboard* const clipboard = QGuiApplication::clipboard();
    if (console) {
        cutSelection(*console);
    }
    if (!console || mSelection.range().isEmpty() || (toPrimary && !clipboard->supportsSelection())) {
        return;
    }
    clipboard->setText(textOf(mSelection.range(), *console, console->readInput()),
                       toPrimary ? QClipboard::Selection : QClipboard::Clipboard);
}

// The rest

void View::setComposition(const QString& text)
{
    if (std::exchange(mComposition, text) != text) {
        publish();
    }
}

void View::setLook(const Look& look)
{
    mLook = look;
    publish();
}

Look View::zoomedLook() const
{
    Look look = mLook;
    look.fontSize = std::max(kMinPointSize, mLook.fontSize * std::pow(kZoomStep, mZoom));
    return look;
}

void View::zoom(int steps)
{
    mZoom = std::clamp(mZoom + steps, -kMostZoom, kMostZoom);
    publish();
}

void View::clear()
{
    const BorrowedConsole console(mConsole);
    if (console) {
        mFirstEntry = console->logSize();
        mScroll.follow();
        mSelection.clear();
        mFind.close();
        publish();
    }
}

void View::reset()
{
    mFind.close();
    mRecall.close();
    mSearch.stop();
    mSelection.clear();
    mScroll.follow();
    mComposition.clear();
    if (const BorrowedConsole console(mConsole); console) {
        mOffers.update(*console); // of a closed console, or of an empty line
    }
    publish();
}

void View::onLogGrown()
{
    followFromEnd();
    if (const BorrowedConsole console(mConsole); console) {
        cutSelection(*console);
    }
    if (mFind.isOpen()) {
        mSearch.start();
    }
}

ViewState View::state()
{
    ViewState state;
    state.look = zoomedLook();
    if (const BorrowedConsole console(mConsole); console) {
        state.blinkRate = isCursorSteady() ? 0.0 : console->cursorBlinkRate();
        state.list = offers(*console);
    }
    state.firstEntry = mFirstEntry;
    state.top = mScroll.top();
    state.sizeSeen = mScroll.sizeSeen();
    state.selection = mSelection.range();
    state.composition = mComposition;
    if (mFind.isOpen()) {
        state.find = mFind.find();
        state.bar = mFind.bar();
    } else if (mRecall.isOpen()) {
        state.bar = mRecall.bar();
        state.recalled = mRecall.line();
    }
    if (state.bar) {
        state.bar->composition = std::exchange(state.composition, {}).toStdU32String();
    }
    return state;
}

/// Shows the next frame what there is now.
void View::publish()
{
    ViewState now = state();
    if (now != *mShare.state()) {
        mShare.setState(std::make_shared<const ViewState>(std::move(now)));
        mHost.changed();
    }
}

} // namespace zephyr::console::qt
