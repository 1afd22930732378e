#include "EntryText.h"

#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSnapshot.h"
#include "zephyr/console/Texts.h"

#include <algorithm>
#include <string_view>

namespace zephyr::console::qt {

namespace {

constexpr std::u32string_view kPromptText(kPrompt);

std::size_t promptSize(ConsoleMessageType type) { return type == Input ? kPromptText.size() : 0; }

} // namespace

EntryText::EntryText(const Console& console, std::size_t index) : mConsole(console), mIndex(index)
{
    const LogPart part = console.readLogPart(index, 0, 0);
    mType = part.type;
    mIndent = part.indent;
    mSize = promptSize(part.type) + part.length;
}

std::u32string EntryText::read(std::size_t first, std::size_t count) const
{
    const std::size_t prompt = promptSize(mType);
    const std::size_t begin = std::min(first, mSize);
    const std::size_t end = begin + std::min(count, mSize - begin);
    std::u32string text;
    if (begin < prompt) {
        text = kPromptText.substr(begin, std::min(end, prompt) - begin);
    }
    if (end > prompt) {
        const std::size_t from = std::max(begin, prompt);
        text += mConsole.readLogPart(mIndex, from - prompt, end - from).text;
    }
    return text;
}

} // namespace zephyr::console::qt
