#include "support/PlainRenderer.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPen>
#include <QStaticText>
#include <QString>

#include <algorithm>
#include <cmath>

namespace zephyr::test {

using console::ConsoleSnapshot;
using console::LogEntry;

namespace {

const std::u32string kPrompt = U">> ";

QColor toQColor(const Color& color)
{
    return QColor(color.red(), color.green(), color.blue(), color.alpha());
}

int logicalLength(int devicePixels, const QPaintDevice& device)
{
    return static_cast<int>(std::trunc(devicePixels / device.devicePixelRatioF()));
}

/// Splits `text` at its line feeds. Nothing follows a line feed at the end.
std::vector<std::u32string> linesOf(const std::u32string& text)
{
    std::vector<std::u32string> lines;
    std::u32string line;
    for (const char32_t c : text) {
        if (c != U'\n') {
            line += c;
            continue;
        }
        lines.push_back(line);
        line.clear();
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    return lines;
}

std::size_t firstEntry(const ConsoleSnapshot& snapshot, int lineHeight, int height)
{
    const std::vector<LogEntry>& log = snapshot.lines();
    const auto count = static_cast<std::int64_t>(log.size());
    const std::int64_t offset = snapshot.scrollOffset();
    std::int64_t used = offset == 0 ? 2 * lineHeight : 0;
    std::int64_t fitting = 0;
    for (std::int64_t i = count - offset - 1; i >= 0; --i) {
        const std::size_t lines = PlainRenderer::displayLines(log[static_cast<std::size_t>(i)]).size();
        used += lineHeight * static_cast<std::int64_t>(lines);
        if (used > height) {
            break;
        }
        ++fitting;
    }
    // An offset beyond the oldest entry shows the log from its first entry on.
    return static_cast<std::size_t>(std::max<std::int64_t>(count - (offset + fitting), 0));
}

void setUp(const ConsoleSnapshot& snapshot, QPainter& p)
{
    p.setRenderHint(QPainter::TextAntialiasing, true);
    QPen pen = p.pen();
    pen.setColor(toQColor(snapshot.textColor()));
    p.setPen(pen);
    p.setFont(*snapshot.font());
}

} // namespace

void PlainRenderer::render(double elapsedSeconds, const ConsoleSnapshot& snapshot, QPainter& p)
{
    const int width = logicalLength(p.device()->width(), *p.device());
    const int height = logicalLength(p.device()->height(), *p.device());
    p.fillRect(QRect(0, 0, width, height), toQColor(snapshot.backgroundColor()));
    setUp(snapshot, p);

    const QFontMetrics metrics(*snapshot.font());
    int y = metrics.height();
    for (std::size_t i = firstEntry(snapshot, metrics.height(), height); i < snapshot.lines().size(); ++i) {
        for (const QString& line : displayLines(snapshot.lines()[i])) {
            QStaticText text(line);
            text.setTextFormat(Qt::PlainText);
            p.drawStaticText(QPoint(0, y - metrics.ascent()), text);
            y += metrics.height();
        }
    }

    advanceBlinking(elapsedSeconds, snapshot.cursorPosition());
    p.drawText(QPoint(0, y), QString::fromStdU32String(kPrompt + inputLine(snapshot)));
}

std::vector<QString> PlainRenderer::displayLines(const LogEntry& entry)
{
    const std::u32string text = entry.type == console::Input ? kPrompt + entry.text : entry.text;
    if (text.empty()) {
        return {QString()};
    }
    std::vector<QString> lines;
    for (const std::u32string& line : linesOf(text)) {
        const std::size_t indent = lines.empty() ? 0 : entry.indent;
        lines.push_back(QString::fromStdU32String(std::u32string(indent, U' ') + line));
    }
    return lines;
}

void PlainRenderer::advanceBlinking(double elapsedSeconds, std::uint32_t cursorPosition)
{
    if (cursorPosition != mLastCursorPosition) {
        mSecondsSinceMove = 0.0;
        mLastCursorPosition = cursorPosition;
        return;
    }
    mSecondsSinceMove += elapsedSeconds;
}

std::u32string PlainRenderer::inputLine(const ConsoleSnapshot& snapshot) const
{
    std::u32string input = snapshot.activeInput();
    const auto phase = static_cast<std::int64_t>(snapshot.cursorBlinkRate() * mSecondsSinceMove);
    if (phase % 2 != 0) {
        return input;
    }
    if (mLastCursorPosition < input.size()) {
        input[mLastCursorPosition] = snapshot.cursorChar();
    } else {
        input += snapshot.cursorChar();
    }
    return input;
}

} // namespace zephyr::test
