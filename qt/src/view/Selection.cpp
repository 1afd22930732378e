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

constexpr std::size_t kReach = 4096; // code points on each side in which the end of a unit is looked for

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
    const std::size_t lineBegin = index == 0 ? 0 : text.rfind(U'\n', index - 1) + 1; // 0 where there is none
    const std::size_t lineEnd = std::min(text.find(U'\n', index), text.size());
    if (unit == Unit::Line || index == lineEnd) {
        const bool takesAll = unit == Unit::Line;
        return {{place.entry, begin + (takesAll ? lineBegin : index)}, {place.entry, begin + lineEnd}};
    }
    const auto [from, to] =
        wordAround(std::u32string_view(text).substr(lineBegin, lineEnd - lineBegin), index - lineBegin);
    return {{place.entry, begin + lineBegin + from}, {place.entry, begin + lineBegin + to}};
}

} // namespace zephyr::console::qt
