#include "Selection.h"

#include "CodePoints.h"
#include "EntryText.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/Texts.h"

#include <QTextBoundaryFinder>

#include <string>
#include <string_view>

namespace zephyr::console::qt {

namespace {

// Code points on each side in which the end of a unit is looked for.
constexpr std::size_t kReach = 4096; // of a word, and at a time of a line
constexpr std::size_t kLineReach = 256 * kReach;

/// The text that places of `entry` count in.
std::u32string read(std::size_t entry, std::size_t first, std::size_t count, const Console& console,
                    const ConsoleInput& input)
{
    if (entry != kInputLine) {
        return EntryText(console, entry).read(first, count);
    }
    const std::u32string line = kPrompt + input.text;
    return first < line.size() ? line.substr(first, count) : std::u32string();
}

/// Looks for the beginning of the line that holds an offset of an entry.
std::size_t lineBegin(std::size_t entry, std::size_t offset, const Console& console,
                      const ConsoleInput& input)
{
    const std::size_t least = offset - std::min(offset, kLineReach);
    while (offset > least) {
        const std::size_t first = std::max(least, offset - std::min(offset, kReach));
        const std::size_t feed = read(entry, first, offset - first, console, input).rfind(U'\n');
        if (feed != std::u32string::npos) {
            return first + feed + 1;
        }
        offset = first;
    }
    return least;
}

/// Looks for the end of the line that holds an offset of an entry.
std::size_t lineEnd(std::size_t entry, std::size_t offset, const Console& console, const ConsoleInput& input)
{
    for (const std::size_t most = offset + kLineReach; offset < most;) {
        const std::u32string text = read(entry, offset, kReach, console, input);
        const std::size_t feed = std::min(text.find(U'\n'), text.size());
        offset += feed;
        if (feed < kReach) {
            break;
        }
    }
    return offset;
}

/// The word of a text that the code point `index` is in, as half-open offsets.
std::pair<std::size_t, std::size_t> wordAround(std::u32string_view text, std::size_t index)
{
    const LaidOutText laidOut(text);
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, laidOut.text());
    words.setPosition(laidOut.unitAt(index));
    if (!words.isAtBoundary()) {
        words.toPreviousBoundary();
    }
    const auto begin = static_cast<int>(words.position());
    words.toNextBoundary();
    const auto end = words.position() < 0 ? laidOut.text().size() : words.position();
    return {laidOut.indexAt(begin), laidOut.indexAt(static_cast<int>(end))};
}

} // namespace

QString textOf(const TextRange& range, const Console& console, const ConsoleInput& input)
{
    std::u32string text;
    const std::size_t size = console.logSize();
    for (TextPlace place = range.from; place < range.to;) {
        const bool isLast = place.entry == range.to.entry;
        const std::size_t count = isLast ? range.to.offset - place.offset : std::u32string::npos;
        text += read(place.entry, place.offset, count, console, input);
        if (isLast) {
            break;
        }
        text += U'\n';
        place = {place.entry + 1 < size ? place.entry + 1 : kInputLine, 0};
    }
    return LaidOutText(text).text();
}

TextRange unitAround(TextPlace place, Unit unit, const Console& console, const ConsoleInput& input)
{
    if (unit == Unit::Grapheme) {
        return {place, place};
    }
    const std::size_t begin = place.offset - std::min(place.offset, kReach);
    const std::u32string text = read(place.entry, begin, 2 * kReach, console, input);
    const std::size_t index = std::min(place.offset - begin, text.size());
    if (unit == Unit::Line) {
        const std::size_t offset = begin + index;
        return {{place.entry, lineBegin(place.entry, offset, console, input)},
                {place.entry, lineEnd(place.entry, offset, console, input)}};
    }
    const std::size_t first = index == 0 ? 0 : text.rfind(U'\n', index - 1) + 1; // 0 where there is none
    const std::size_t last = std::min(text.find(U'\n', index), text.size());
    if (index == last) {
        return {{place.entry, begin + index}, {place.entry, begin + index}};
    }
    const auto [from, to] = wordAround(std::u32string_view(text).substr(first, last - first), index - first);
    return {{place.entry, begin + first + from}, {place.entry, begin + first + to}};
}

} // namespace zephyr::console::qt
