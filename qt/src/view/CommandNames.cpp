#include "CommandNames.h"

#include "EditDistance.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/detail/ForcedUnwinding.h"

#include <QChar>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <new>
#include <optional>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr std::size_t kGreatestDistance = 3;
constexpr std::size_t kBeginsWith = 0; // ranks, between which distances come
constexpr std::size_t kContains = kGreatestDistance + 1;

std::u32string folded(std::u32string_view text)
{
    std::u32string result(text);
    for (char32_t& c : result) {
        c = QChar::toCaseFolded(c);
    }
    return result;
}

/// The command's name, or nothing if it throws: it is host code.
ZEPHYR_CATCHES_FORCED_UNWINDING std::u32string nameOf(const ConsoleCommand& command)
{
    try {
        return command.name();
    } catch (const std::bad_alloc&) {
        throw;
    }
    ZEPHYR_LET_FORCED_UNWINDING_THROUGH
    catch (...) { return {}; }
}

/// How well `name` fits what was meant by `word`, both folded: 0 is best; nothing if it doesn't.
std::optional<std::size_t> rankOf(std::u32string_view name, std::u32string_view word)
{
    if (name.starts_with(word)) {
        return kBeginsWith;
    }
    if (const auto distance = editDistance(name, word, std::min(word.size() / 3, kGreatestDistance))) {
        return distance;
    }
    return name.find(word) != std::u32string_view::npos ? std::optional(kContains) : std::nullopt;
}

} // namespace

void CommandNames::read(Console& console)
{
    std::vector<std::u32string> commands;
    std::vector<std::u32string> aliases;
    const auto add = [](std::vector<std::u32string>& to, std::u32string name) {
        if (!name.empty() && name.find(U' ') == std::u32string::npos) {
            to.push_back(std::move(name));
        }
    };
    console.forEachCommand([&](const ConsoleCommand& command) { add(commands, nameOf(command)); });
    if (!std::is_sorted(commands.begin(),
                        commands.end())) { // they are by the names that they were registered under
        std::sort(commands.begin(), commands.end());
    }
    console.forEachAlias([&](const std::u32string& name, const auto&) { add(aliases, name); });
    std::vector<std::u32string> names;
    names.reserve(commands.size() + aliases.size());
    std::merge(std::move_iterator(commands.begin()), std::move_iterator(commands.end()),
               std::move_iterator(aliases.begin()), std::move_iterator(aliases.end()),
               std::back_inserter(names));
    names.erase(std::unique(names.begin(), names.end()), names.end());
    mNames = SharedTexts(std::move(names));
    mFolded.clear();
    mIsRead = true;
}

SharedTexts CommandNames::beginningWith(std::u32string_view word) const
{
    const auto first = std::lower_bound(mNames.begin(), mNames.end(), word);
    const auto last = std::partition_point(
        first, mNames.end(), [word](const std::u32string& name) { return name.starts_with(word); });
    return mNames.part(static_cast<std::size_t>(first - mNames.begin()),
                       static_cast<std::size_t>(last - first));
}

SharedTexts CommandNames::closeTo(std::u32string_view word)
{
    if (mFolded.empty()) {
        mFolded.reserve(mNames.size());
        std::transform(mNames.begin(), mNames.end(), std::back_inserter(mFolded),
                       [](const std::u32string& name) { return folded(name); });
    }
    const std::u32string wanted = folded(word);
    std::vector<std::pair<std::size_t, std::size_t>> ranked; // rank and index
    for (std::size_t i = 0; i < mFolded.size(); ++i) {
        if (const std::optional<std::size_t> rank = rankOf(mFolded[i], wanted)) {
            ranked.emplace_back(*rank, i);
        }
    }
    std::sort(ranked.begin(), ranked.end());
    std::vector<std::u32string> names;
    names.reserve(ranked.size());
    for (const auto& [rank, index] : ranked) {
        names.push_back(mNames[index]);
    }
    return SharedTexts(std::move(names));
}

} // namespace zephyr::console::qt
