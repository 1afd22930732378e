#include "Offers.h"

#include "../ConsoleKeys.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/InputWords.h"

#include <Qt>

#include <algorithm>
#include <utility>

namespace zephyr::console::qt {

namespace {

bool isSame(const ConsoleInput& a, const ConsoleInput& b) { return a.text == b.text && a.cursor == b.cursor; }

/// Whether a key other than Tab ended a completion, as an insertion and an erasure do.
bool endsCompletion(int key, const ConsoleInput& before, const ConsoleInput& after)
{
    switch (key) {
    case Qt::Key_Backspace: return before.cursor > 0;
    case Qt::Key_Delete: return before.cursor != before.text.size();
    case Qt::Key_Up:
    case Qt::Key_Down: return false;
    default: return !runsLine(key) && before.text != after.text;
    }
}

} // namespace

/// Keeps what is called meanwhile from a second go at the list.
class Offers::Busy
{
public:
    explicit Busy(Offers& offers) : mFlag(offers.mIsBusy) { mFlag = true; }
    ~Busy() { mFlag = false; }

    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    bool& mFlag;
};

/// A press of Tab or Backtab that is to be dealt with.
struct Offers::Tab
{
    const PressKey& press;
    int key;
    int modifiers;
    const std::u32string& text;

    bool isBackwards() const { return key == Qt::Key_Backtab; }
    void passOn() const { press(key, modifiers, text); }
};

Offers::Offers(CompletionSource::Clock clock) : mSource(std::move(clock)) {}

void Offers::update(Console& console)
{
    if (mIsBusy) {
        return;
    }
    if (console.isOpen()) { // a closed one that is opened has an empty line
        const ConsoleInput input = console.readInput();
        if (mSeen && isSame(*mSeen, input)) {
            return;
        }
        noticeOtherEdits(input);
    }
    refresh(console);
}

void Offers::pressKey(Console& console, int key, int modifiers, const std::u32string& text,
                      const PressKey& press)
{
    if (mIsBusy) {
        press(key, modifiers, text);
        return;
    }
    if (!console.isOpen()) {
        press(key, modifiers, text);
        update(console);
        return;
    }
    noticeOtherEdits(console.readInput());
    if (completesLine(key)) {
        pressTab(console, {press, key, modifiers, text});
    } else {
        pressOther(console, key, modifiers, text, press);
    }
    refresh(console);
}

void Offers::pick(Console& console, std::size_t index, const PressKey& press)
{
    update(console); // a line that changed has another list
    if (mIsBusy || !isShown() || index >= count()) {
        return;
    }
    if (mKind == Kind::Candidates) {
        pickCandidate(console, index, press);
    } else {
        pickName(console, index, press);
    }
    refresh(console);
}

void Offers::dismiss()
{
    mSteps.end();
    mIsDismissed = true;
}

Offer Offers::at(Console& console, std::size_t index) const
{
    const std::u32string& text = mTexts[index];
    if (mKind == Kind::Candidates) {
        return {text, mArguments.description(text)};
    }
    if (const auto* lines = console.lookupAlias(text)) { // which runs although a command has the name too
        return {text, aliasSummary(*lines)};
    }
    const ConsoleCommand* const command = console.lookupCommand(text);
    return {text, command == nullptr ? std::u32string() : argumentSummary(*command)};
}

/// Notices a line that was changed by other than pressKey(). What empties it, such as a line that runs, leaves a
/// completion in progress; the rest is taken for an edit.
void Offers::noticeOtherEdits(const ConsoleInput& input)
{
    if (!input.text.empty() && (!mSeen || mSeen->text != input.text)) {
        mCompletion.end();
        mSteps.end();
    }
}

void Offers::refresh(Console& console)
{
    if (mIsBusy) {
        return;
    }
    const Busy busy(*this);
    const ConsoleInput input = console.readInput();
    if (mSeen && mSeen->text != input.text) {
        mIsDismissed = false;
    }
    makeList(console, input);
    mSeen = input;
    if (!console.isOpen() || !isSame(console.readInput(), input)) { // host code did that meanwhile
        clearList();
        mSeen.reset();
    }
}

void Offers::makeList(Console& console, const ConsoleInput& input)
{
    const std::u32string word(firstWord(input.text));
    const bool isBehindWord = input.cursor > word.size();
    if (!console.isOpen() || input.text.empty()) {
        clearList();
        mNames.forget();
        mArguments.forget();
    } else if (mSteps.isAt(console)) {
        showSteps();
    } else if (mCompletion.isInProgress()) {
        showCompletion(console, input);
    } else if (isBehindWord && console.lookupCommand(word) != nullptr) {
        showCandidates(console, word, input.text);
    } else if (word.empty() || (isBehindWord && console.lookupAlias(word) != nullptr)) {
        clearList();
    } else {
        showNames(console, word);
    }
}

void Offers::clearList()
{
    mKind = Kind::Names;
    mTexts = {};
    mSelected.reset();
    mMadeFor.reset();
}

void Offers::showSteps()
{
    mTexts = mSteps.names();
    mSelected = mSteps.index();
    mMadeFor.reset();
}

void Offers::showCompletion(Console& console, const ConsoleInput& input)
{
    clearList();
    mKind = Kind::Candidates;
    mTexts = mCompletion.candidates();
    mSelected = mCompletion.standing(input);
    mArguments.read(console, std::u32string(firstWord(mCompletion.head())));
}

void Offers::showNames(Console& console, const std::u32string& word)
{
    if (mKind != Kind::Candidates && mMadeFor == word) {
        return; // the rest of the line changed
    }
    if (!mNames.isRead()) {
        mNames.read(console);
    }
    clearList();
    mTexts = mNames.beginningWith(word);
    if (mTexts.empty()) {
        mTexts = mNames.closeTo(word);
        mKind = Kind::Suggestions;
    }
    mMadeFor = word;
}

void Offers::showCandidates(Console& console, const std::u32string& word, const std::u32string& line)
{
    if (mKind == Kind::Candidates && mMadeFor == line) {
        return; // the cursor moved
    }
    clearList();
    if (mSource.isSlow(word)) {
        return;
    }
    if (const std::optional<SharedTexts> candidates = mSource.ask(console, line)) {
        mKind = Kind::Candidates;
        mTexts = *candidates;
        mMadeFor = line;
        mArguments.read(console, word);
    }
}

void Offers::pressOther(Console& console, int key, int modifiers, const std::u32string& text,
                        const PressKey& press)
{
    mSteps.end();
    const ConsoleInput before = console.readInput();
    const std::optional<ConsoleInput> spaced = std::exchange(mSpaced, std::nullopt);
    if (text == U" " && spaced && isSame(*spaced, before)) {
        return; // typed by habit: a second one would make an empty word
    }
    if (runsLine(key)) {
        mIsDismissed = true; // also where the line stays, as its command threw
        press(key, modifiers, text);
    } else {
        const Busy busy(*this);
        press(key, modifiers, text);
    }
    if (endsCompletion(key, before, console.readInput())) {
        mCompletion.end();
    }
}

void Offers::pressTab(Console& console, const Tab& tab)
{
    const Busy busy(*this);
    mIsDismissed = false;
    if (mSteps.isAt(console)) {
        mSteps.step(console, tab.isBackwards(), tab.press);
        return;
    }
    mSteps.end();
    const ConsoleInput input = console.readInput();
    const std::u32string word(firstWord(input.text));
    const bool mayDoMore = !mCompletion.isInProgress() && !input.text.empty();
    if (mayDoMore && console.lookupCommand(word) == nullptr) {
        const bool isForAlias = input.cursor > word.size() && console.lookupAlias(word) != nullptr;
        isForAlias ? tab.passOn() : stepNames(console, word, tab);
    } else if (mayDoMore && input.text == word) {
        pressTabBehindName(console, word, tab);
    } else {
        completeInConsole(console, tab);
    }
}

/// Begins a completion of the arguments of the command `name`, which is all of the line. The console would put the
/// candidate in the name's place.
void Offers::pressTabBehindName(Console& console, const std::u32string& name, const Tab& tab)
{
    const std::u32string base = name + U" ";
    const std::optional<SharedTexts> candidates = mSource.ask(console, base);
    if (!candidates || console.readInput().text != name) {
        tab.passOn(); // the console reports what the completion throws
        return;
    }
    if (candidates->empty()) {
        stepNames(console, name, tab);
        return;
    }
    tab.press(Qt::Key_End, Qt::NoModifier, {});
    tab.press(0, Qt::NoModifier, U" ");
    if (console.readInput().text != base) {
        return; // the line is full
    }
    clearList();
    mKind = Kind::Candidates;
    mTexts = *candidates;
    mMadeFor = base;
    completeInConsole(console, tab);
}

void Offers::stepNames(Console& console, const std::u32string& word, const Tab& tab)
{
    mNames.read(console);
    SharedTexts names = mNames.beginningWith(word);
    const bool isFitting = !names.empty();
    if (!isFitting) {
        names = mNames.closeTo(word);
    }
    if (names.empty() || word.empty()) {
        tab.passOn();
        return;
    }
    mKind = isFitting ? Kind::Names : Kind::Suggestions;
    mSteps.begin(console, names, isFitting);
    if (mSteps.step(console, tab.isBackwards(), tab.press)) {
        mSpaced = console.readInput();
    }
}

/// Lets the console complete, and follows what it did.
void Offers::completeInConsole(Console& console, const Tab& tab)
{
    const ConsoleInput before = console.readInput();
    const bool isInProgress = mCompletion.isInProgress();
    tab.passOn();
    const ConsoleInput after = console.readInput();
    if (isInProgress) {
        mCompletion.step(tab.isBackwards(), after);
    } else if (!before.text.empty()) {
        followBegun(console, before.text, tab.isBackwards(), after);
    }
}

/// Follows a Tab that began a completion of the line `base`. The command is asked once more, unless it was for the list.
void Offers::followBegun(Console& console, const std::u32string& base, bool backwards,
                         const ConsoleInput& after)
{
    if (mKind == Kind::Candidates && mMadeFor == base) {
        mCompletion.begin(base, mTexts, backwards, after);
        if (!mCompletion.isInProgress() || !mCompletion.candidates().empty()) {
            return;
        }
    }
    const SharedTexts candidates = mSource.ask(console, base).value_or(SharedTexts());
    mCompletion.begin(base, candidates, backwards, after);
}

void Offers::pickName(Console& console, std::size_t index, const PressKey& press)
{
    const Busy busy(*this);
    if (!mSteps.isAt(console)) {
        mSteps.begin(console, mTexts, mKind == Kind::Names);
    }
    if (mSteps.goTo(console, index, press)) {
        mSpaced = console.readInput();
    }
}

/// Presses Tab or Backtab until the candidate stands on the line, the shorter way round.
void Offers::pickCandidate(Console& console, std::size_t index, const PressKey& press)
{
    const Busy busy(*this);
    if (mSelected == index) {
        return;
    }
    const std::size_t size = count();
    const std::optional<std::size_t> from = mCompletion.index();
    const std::size_t forwards = from ? (index + size - *from - 1) % size + 1 : index + 1;
    const std::size_t backwards = from ? (*from + size - index - 1) % size + 1 : size - index;
    const std::u32string noText;
    const Tab tab{press, forwards <= backwards ? Qt::Key_Tab : Qt::Key_Backtab, Qt::NoModifier, noText};
    for (std::size_t i = 0; i < std::min(forwards, backwards); ++i) {
        completeInConsole(console, tab);
        if (!mCompletion.index()) {
            return; // the console was given others
        }
    }
}

} // namespace zephyr::console::qt
