#include "History.h"

#include "AssertReport.h"
#include "SplitString.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace zephyr::console {

namespace {

constexpr char32_t kWordDelimiter = U' ';

} // namespace

void History::record(const ConsoleCommand* command, std::u32string line)
{
    maskQuoted(line, kWordDelimiter); // Up recalls the masked line: oddity 3
    mHistoryIndex = kNoRecord;
    mCmdBuffer.push_back({command, std::move(line)});
}

std::optional<std::u32string_view> History::navigate(int direction)
{
    if (direction != 1 && direction != -1) {
        reportVerification("Console", 570, "direction == 1 || direction == -1");
        return std::nullopt;
    }
    if (mCmdBuffer.empty()) {
        return std::nullopt;
    }
    if (direction == 1) {
        const auto oldest = static_cast<std::int32_t>(mCmdBuffer.size() - 1);
        mHistoryIndex = std::min(oldest, mHistoryIndex + 1);
        return selected();
    }
    if (mHistoryIndex == kNoRecord) {
        return std::nullopt;
    }
    --mHistoryIndex;
    return mHistoryIndex == kNoRecord ? std::u32string_view() : selected();
}

std::optional<std::u32string_view> History::selected() const
{
    const std::size_t cmdBuffSize = mCmdBuffer.size();
    const std::size_t prevCmdIdx = cmdBuffSize - 1 - static_cast<std::size_t>(mHistoryIndex);
    if (prevCmdIdx >= cmdBuffSize) {
        reportVerification("Console", 599, "prevCmdIdx < cmdBuffSize");
        return std::nullopt;
    }
    return mCmdBuffer[prevCmdIdx].line;
}

std::vector<std::u32string> History::lines() const
{
    std::vector<std::u32string> typed;
    typed.reserve(mCmdBuffer.size());
    for (const CommandRecord& record : mCmdBuffer) {
        typed.push_back(record.line);
        unmaskQuoted(typed.back(), kWordDelimiter);
    }
    return typed;
}

} // namespace zephyr::console
