#ifndef ZEPHYR_TESTS_QT_VIEW_VIEWTESTTEXT_H
#define ZEPHYR_TESTS_QT_VIEW_VIEWTESTTEXT_H

#include "view/CodePoints.h"
#include "view/LogRows.h"
#include "view/ViewFont.h"
#include "zephyr/console/Console.h"

#include <QTextBoundaryFinder>

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h> // needs the header above

#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace zephyr::test {

using console::Console;
using console::qt::LaidOutText;
using console::qt::LogRows;
using console::qt::Row;
using console::qt::ViewFont;

/// Every console writes two entries at its start.
constexpr std::size_t kFirstEntry = 2;

/// A text that a failing test can print: what isn't printable ASCII as its number.
inline std::string printable(std::u32string_view text)
{
    std::string shown;
    for (const char32_t c : text) {
        if (c >= U' ' && c <= U'~' && c != U'\\') {
            shown.push_back(static_cast<char>(c));
        } else {
            shown += "\\" + std::to_string(static_cast<std::uint32_t>(c)) + ";";
        }
    }
    return shown;
}

/// A row as a text: its entry, its offsets, where it begins and what it shows.
inline std::string describe(const Row& row)
{
    return std::to_string(row.entry) + ":" + std::to_string(row.begin) + "-" + std::to_string(row.end) +
           " x " + std::to_string(row.x) + " tone " + std::to_string(static_cast<int>(row.tone)) + " \"" +
           printable(row.text) + "\"";
}

inline std::vector<std::string> describe(const std::vector<Row>& rows)
{
    std::vector<std::string> texts;
    for (const Row& row : rows) {
        texts.push_back(describe(row));
    }
    return texts;
}

/// What the rows show.
inline std::vector<std::u32string> textsOf(const std::vector<Row>& rows)
{
    std::vector<std::u32string> texts;
    for (const Row& row : rows) {
        texts.push_back(row.text);
    }
    return texts;
}

inline std::shared_ptr<const ViewFont> monospaced(double pointSize = 10.0)
{
    return std::make_shared<const ViewFont>(QStringLiteral("DejaVu Sans Mono"), pointSize);
}

inline std::shared_ptr<const ViewFont> proportional(double pointSize = 10.0)
{
    return std::make_shared<const ViewFont>(QStringLiteral("DejaVu Sans"), pointSize);
}

/// The width of `count` columns of a monospaced font, with a little more against rounding.
inline double columns(const ViewFont& font, int count) { return font.spaceWidth() * count + 0.5; }

/// All rows from the entry `first` on, one after the other.
inline std::vector<Row> rowsForwards(LogRows& rows, const Console& console, std::size_t first = 0)
{
    std::vector<Row> all;
    std::optional<Row> row = rows.rowAt(console, {first, 0});
    while (row) {
        all.push_back(*row);
        row = rows.rowAfter(console, *row);
        if (row && row->place() <= all.back().place()) {
            ADD_FAILURE() << describe(*row) << " follows " << describe(all.back());
            break;
        }
    }
    return all;
}

/// All rows from the entry `first` on, found from the last one to the first one.
inline std::vector<Row> rowsBackwards(LogRows& rows, const Console& console, std::size_t first = 0)
{
    std::vector<Row> all;
    std::optional<Row> row = rows.lastRow(console, first);
    while (row) {
        all.push_back(*row);
        row = rows.rowBefore(console, *row, first);
        if (row && row->place() >= all.back().place()) {
            ADD_FAILURE() << describe(*row) << " precedes " << describe(all.back());
            break;
        }
    }
    return {all.rbegin(), all.rend()};
}

/// The offsets between graphemes in a text of one line, in code points: 0 and its size among them.
inline std::vector<std::size_t> graphemeBoundaries(std::u32string_view line)
{
    const LaidOutText laidOut(line);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, laidOut.text());
    std::vector<std::size_t> boundaries = {0};
    for (int unit = static_cast<int>(finder.toNextBoundary()); unit > 0;
         unit = static_cast<int>(finder.toNextBoundary())) {
        boundaries.push_back(laidOut.indexAt(unit));
    }
    return boundaries;
}

/// A text that RapidCheck made.
struct MixedText
{
    std::u32string text;

    friend void showValue(const MixedText& mixed, std::ostream& stream)
    {
        stream << '"' << printable(mixed.text) << '"';
    }
};

/// What mixed texts are made of: scripts, graphemes of several code points, controls, and what is no character.
inline const std::vector<std::u32string> kPieces = {
    U"a",
    U"hello",
    U"Wo",
    U" ",
    U"    ",
    U"-",
    U"/usr/lib",
    U"1.5,",
    U"\t",
    U"\n",
    U"\n\n",
    U"\u00E9",
    U"e\u0301",
    U"\u0301\u0302",
    U"\u4E2D\u6587",
    U"\u65E5\u672C\u3002",
    U"\u0627\u0644\u0639\u0631\u0628\u064A\u0629",
    U"\u05E9\u05DC\u05D5\u05DD",
    U"\u0644\u0627",
    U"\U0001F600",
    U"\U0001F468\u200D\U0001F469\u200D\U0001F467",
    U"\U0001F44D\U0001F3FD",
    U"\U0001F1E9\U0001F1EA",
    U"\u0915\u094D\u0937\u093F",
    U"\u0E01\u0E33",
    U"\u1112\u1161\u11AB",
    U"\u200D",
    U"\u200B",
    U"\u00AD",
    U"\u00A0",
    U"\u202E",
    U"\u2067",
    U"\u2069",
    U"\uFEFF",
    U"\uFFFC",
    U"\uFFFF",
    std::u32string(1, U'\0'),
    U"\r",
    U"\v",
    U"\f",
    U"\u0085",
    U"\u2028",
    U"\u2029",
    std::u32string(1, char32_t(0xD83D)),
    std::u32string(1, char32_t(0xDE00)),
    std::u32string(1, char32_t(0x110000)),
    std::u32string(1, char32_t(0xFFFFFFFF)),
};

/// A text of at most `most` pieces.
inline rc::Gen<MixedText> mixedText(int most = 30, const std::vector<std::u32string>& pieces = kPieces)
{
    const auto picks = rc::gen::container<std::vector<std::u32string>>(rc::gen::elementOf(pieces));
    return rc::gen::map(rc::gen::resize(most, picks), [](const std::vector<std::u32string>& picked) {
        return MixedText{std::accumulate(picked.begin(), picked.end(), std::u32string())};
    });
}

/// Like mixedText(), but of one line.
inline rc::Gen<MixedText> mixedLine(int most = 30)
{
    return rc::gen::map(mixedText(most), [](MixedText mixed) {
        std::erase(mixed.text, U'\n');
        return mixed;
    });
}

/// A font of a kind and size that a user may choose.
inline std::shared_ptr<const ViewFont> anyFont()
{
    const double pointSize = *rc::gen::inRange(6, 41);
    return *rc::gen::arbitrary<bool>() ? monospaced(pointSize) : proportional(pointSize);
}

/// A width of rows, mostly one that a few words fill.
inline double anyWidth()
{
    return *rc::gen::oneOf(rc::gen::inRange(1, 40), rc::gen::inRange(40, 400), rc::gen::inRange(400, 2001));
}

/// Writes an entry of any kind.
inline void writeAnything(Console& console, const std::u32string& text)
{
    const auto type = *rc::gen::element(console::Input, console::Output, console::Prompt);
    console.writeIndented(text, type, *rc::gen::element(0U, 0U, 2U, 4U, 8U, 60U));
}

} // namespace zephyr::test

#endif
