#include "AccessibleText.h"

#include "../view/CodePoints.h"
#include "../view/EntryText.h"
#include "../view/InputRows.h"
#include "../view/ViewState.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSnapshot.h"
#include "zephyr/console/Texts.h"

#include <QStringView>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr QChar kLineFeed = u'\n';

/// Text for Qt, in which each code point has units of its own.
QString toText(std::u32string_view codePoints) { return LaidOutText(codePoints).text(); }

std::size_t codePointsIn(QStringView text) { return static_cast<std::size_t>(text.toUcs4().size()); }

/// The number of code units that the first `codePoints` code points of `text` take, or none if it has fewer.
std::optional<qsizetype> unitsOf(QStringView text, std::size_t codePoints)
{
    qsizetype units = 0;
    for (; codePoints > 0 && units < text.size(); --codePoints) {
        units += text[units].isHighSurrogate() ? 2 : 1;
    }
    return codePoints == 0 ? std::optional(units) : std::nullopt;
}

qsizetype commonBegin(QStringView a, QStringView b)
{
    return std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
}

/// The change from `before` to `after`, which stand at `position`, cut down to where they differ.
AccessibleText::Change changeOf(QStringView before, QStringView after, qsizetype position)
{
    qsizetype begin = commonBegin(before, after);
    if (begin > 0 && before[begin - 1].isHighSurrogate()) {
        --begin; // no letter is cut
    }
    before = before.sliced(begin);
    after = after.sliced(begin);
    qsizetype end = 0;
    const qsizetype shorter = std::min(before.size(), after.size());
    while (end < shorter && before[before.size() - 1 - end] == after[after.size() - 1 - end]) {
        ++end;
    }
    if (end > 0 && before[before.size() - end].isLowSurrogate()) {
        --end;
    }
    return {static_cast<int>(position + begin), before.chopped(end).toString(), after.chopped(end).toString(),
            false};
}

} // namespace

void AccessibleText::clear() { *this = {}; }

std::vector<AccessibleText::Change> AccessibleText::update(const Console& console, const ViewState& state)
{
    std::vector<Change> changes;
    updateLog(console, state.firstEntry, changes);
    updateLines(console, state, changes);
    return changes;
}

/// The entries from `first` up to `size`, or as many of the newest of them as half of the text has room for. Of an entry
/// that alone is longer its end is read.
AccessibleText::Added AccessibleText::readNew(const Console& console, std::size_t first, std::size_t size)
{
    constexpr std::size_t kRoom = kMostUnits / 4; // code points, each of which may take two units
    constexpr std::size_t kEntries = kMostEntries / 2;
    std::vector<std::u32string> texts; // newest first
    Added added{{}, {}, true};
    std::size_t room = kRoom;
    std::size_t entry = size;
    while (entry > first && texts.size() < kEntries) {
        const EntryText text(console, entry - 1);
        if (text.size() >= room && !texts.empty()) {
            break;
        }
        --entry;
        const std::size_t offset = text.size() - std::min(text.size(), room);
        texts.push_back(text.read(offset, text.size() - offset));
        added.pieces.push_back({entry, offset, 0});
        room -= std::min(room, texts.back().size() + 1);
    }
    added.isAll = entry == first;
    std::reverse(added.pieces.begin(), added.pieces.end());
    for (Piece& piece : added.pieces) {
        piece.begin = added.text.size();
        added.text += toText(texts.back()) + kLineFeed;
        texts.pop_back();
    }
    return added;
}

void AccessibleText::updateLog(const Console& console, std::size_t firstEntry, std::vector<Change>& changes)
{
    const std::size_t size = console.logSize();
    const Added added = readNew(console, std::max(mLogSize, firstEntry), size);
    const auto shown = std::find_if(mPieces.begin(), mPieces.end(),
                                    [&](const Piece& piece) { return piece.entry >= firstEntry; });
    dropBefore(added.isAll ? static_cast<std::size_t>(shown - mPieces.begin()) : mPieces.size(), changes);
    mLogSize = size;
    if (added.pieces.empty()) {
        return;
    }
    for (Piece piece : added.pieces) {
        piece.begin += mLogEnd;
        mPieces.push_back(piece);
    }
    mText.insert(mLogEnd, added.text);
    changes.push_back({static_cast<int>(mLogEnd), {}, added.text, true});
    mLogEnd += added.text.size();
    mInputEnd += added.text.size();
    dropBefore(piecesTooMany(), changes);
}

/// Drops the pieces before an index.
void AccessibleText::dropBefore(std::size_t piece, std::vector<Change>& changes)
{
    if (piece == 0) {
        return;
    }
    const qsizetype length = endOf(piece - 1);
    changes.push_back({0, mText.first(length), {}, true});
    mText.remove(0, length);
    mPieces.erase(mPieces.begin(), mPieces.begin() + static_cast<std::ptrdiff_t>(piece));
    for (Piece& left : mPieces) {
        left.begin -= length;
    }
    mLogEnd -= length;
    mInputEnd -= length;
}

/// How many of the oldest pieces are to be dropped: once there are too many, as many as leave half of the room, so that
/// not every new entry drops one.
std::size_t AccessibleText::piecesTooMany() const
{
    if (mLogEnd <= kMostUnits && mPieces.size() <= kMostEntries) {
        return 0;
    }
    const std::size_t tooMany = mPieces.size() - std::min(mPieces.size(), kMostEntries / 2);
    const auto kept =
        std::lower_bound(mPieces.begin(), mPieces.end(), mLogEnd - kMostUnits / 2,
                         [](const Piece& piece, qsizetype offset) { return piece.begin < offset; });
    const auto tooLong = static_cast<std::size_t>(kept - mPieces.begin());
    return std::min(mPieces.size() - 1, std::max(tooMany, tooLong));
}

/// Brings what follows the log up to date.
void AccessibleText::updateLines(const Console& console, const ViewState& state, std::vector<Change>& changes)
{
    ConsoleInput input = console.readInput();
    if (state.recalled) {
        input = {*state.recalled, static_cast<std::uint32_t>(state.recalled->size())};
    }
    const std::size_t cursor = std::min<std::size_t>(input.cursor, input.text.size());
    const QString head = toText(kPrompt + withSigns(input.text.substr(0, cursor)));
    QString lines = head + toText(withSigns(input.text.substr(cursor)));
    const qsizetype inputSize = lines.size();
    qsizetype place = head.size();
    if (state.bar) {
        const QString label = kLineFeed + toText(state.bar->label);
        place = lines.size() + label.size() + toText(state.bar->text.substr(0, state.bar->cursor)).size();
        lines += label + toText(state.bar->text);
        lines += state.bar->status.empty() ? QString() : QChar(u' ') + toText(state.bar->status);
    }
    const QStringView before = QStringView(mText).sliced(mLogEnd);
    if (before != lines) {
        changes.push_back(changeOf(before, lines, mLogEnd));
        mText.truncate(mLogEnd);
        mText += lines;
    }
    mInputEnd = mLogEnd + inputSize;
    mCursor = static_cast<int>(mLogEnd + place);
}

qsizetype AccessibleText::endOf(std::size_t piece) const
{
    return piece + 1 < mPieces.size() ? mPieces[piece + 1].begin : mLogEnd;
}

std::optional<TextPlace> AccessibleText::placeAt(int offset) const
{
    if (offset < 0 || offset > mInputEnd) {
        return std::nullopt;
    }
    const QStringView text(mText);
    if (offset >= mLogEnd) {
        return TextPlace{kInputLine, codePointsIn(text.sliced(mLogEnd, offset - mLogEnd))};
    }
    const auto after = std::upper_bound(mPieces.begin(), mPieces.end(), offset,
                                        [](int at, const Piece& piece) { return at < piece.begin; });
    const Piece& piece = *std::prev(after);
    return TextPlace{piece.entry,
                     piece.offset + codePointsIn(text.sliced(piece.begin, offset - piece.begin))};
}

std::optional<int> AccessibleText::offsetOf(TextPlace place) const
{
    const QStringView text(mText);
    if (place.entry == kInputLine) {
        const auto units = unitsOf(text.sliced(mLogEnd, mInputEnd - mLogEnd), place.offset);
        return units ? std::optional(static_cast<int>(mLogEnd + *units)) : std::nullopt;
    }
    const auto found =
        std::lower_bound(mPieces.begin(), mPieces.end(), place.entry,
                         [](const Piece& piece, std::size_t entry) { return piece.entry < entry; });
    if (found == mPieces.end() || found->entry != place.entry || place.offset < found->offset) {
        return std::nullopt;
    }
    const qsizetype end =
        endOf(static_cast<std::size_t>(found - mPieces.begin())) - 1; // without the line feed
    const auto units = unitsOf(text.sliced(found->begin, end - found->begin), place.offset - found->offset);
    return units ? std::optional(static_cast<int>(found->begin + *units)) : std::nullopt;
}

} // namespace zephyr::console::qt
