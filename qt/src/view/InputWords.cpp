#include "InputWords.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

namespace {

constexpr char32_t kSpace = U' ';

std::vector<std::u32string> splitAtSpaces(std::u32string_view line)
{
    std::vector<std::u32string> words;
    while (!line.empty()) {
        const std::u32string_view word = firstWord(line);
        words.emplace_back(word);
        line.remove_prefix(word.size() == line.size() ? word.size() : word.size() + 1);
    }
    return words;
}

} // namespace

std::u32string_view firstWord(std::u32string_view line) { return line.substr(0, line.find(kSpace)); }

ConsoleArgs completionArgs(std::u32string_view line)
{
    return {splitAtSpaces(line), !line.empty() && line.back() == kSpace};
}

std::u32string completionHead(std::u32string_view line)
{
    const std::size_t space = line.rfind(kSpace);
    return space == std::u32string_view::npos ? std::u32string(1, kSpace)
                                              : std::u32string(line.substr(0, space + 1));
}

} // namespace zephyr::console::qt
