#include "zephyr/console/detail/LineCache.h"

#include "SplitString.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QString>

#include <algorithm>
#include <string>

namespace zephyr::console::detail {

namespace {

QStaticText plainText(const std::u32string& text)
{
    QStaticText line(QString::fromStdU32String(text));
    line.setTextFormat(Qt::PlainText); // or Qt would take <b> for mark-up
    return line;
}

std::vector<QStaticText> layOut(const LogEntry& entry)
{
    const std::u32string text = shownText(entry);
    if (text.empty()) {
        return {plainText(text)};
    }
    std::vector<QStaticText> lines;
    for (const std::u32string& piece : splitString(text, U'\n')) {
        // The first line's indent is part of its text.
        lines.push_back(plainText(lines.empty() ? piece : std::u32string(entry.indent, U' ') + piece));
    }
    return lines;
}

} // namespace

const std::vector<QStaticText>& LineCache::displayLines(const std::vector<LogEntry>& log, std::size_t index)
{
    std::vector<QStaticText>& lines = slot(index);
    if (lines.empty()) {
        lines = layOut(log[index]);
    }
    return lines;
}

/// The entry's place in the cache, which grows to make room for it.
std::vector<QStaticText>& LineCache::slot(std::size_t index)
{
    if (mEntries.empty()) {
        mFirst = index;
    }
    if (index < mFirst) {
        // At least doubled: the walk to older entries asks for one more at a time, and growing moves all
        // others.
        const std::size_t room = std::min(mFirst, std::max(mFirst - index, mEntries.size()));
        mEntries.insert(mEntries.begin(), room, {});
        mFirst -= room;
    }
    const std::size_t position = index - mFirst;
    if (position >= mEntries.size()) {
        mEntries.resize(position + 1);
    }
    return mEntries[position];
}

} // namespace zephyr::console::detail
