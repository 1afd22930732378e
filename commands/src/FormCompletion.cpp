#include "FormCompletion.h"

#include "SortedWords.h"
#include "Words.h"

#include <algorithm>

namespace zephyr::console::commands {

using detail::Form;
using detail::FormParameter;

namespace {

/// What the finished words of a line give, as far as further ones depend on it.
struct Progress
{
    Progress(const Form& form, const std::vector<std::u32string>& finished, std::size_t first)
        : isGiven(form.parameters.size()), next(nextOf(form))
    {
        for (std::size_t i = first; i < finished.size(); ++i) {
            const std::optional<SwitchWord> read = detail::readSwitch(form, finished[i], next);
            if (const std::optional<std::size_t> index = read ? form.switchNamed(read->name) : next) {
                isGiven[*index] = true;
                next = nextOf(form);
            }
        }
    }

    std::optional<std::size_t> nextOf(const Form& form) const
    {
        return form.nextArgument([this](std::size_t index) { return isGiven[index]; });
    }

    std::vector<bool> isGiven;       ///< For each parameter.
    std::optional<std::size_t> next; ///< The argument that a word without a switch is for.
};

void addValues(const FormParameter& parameter, const std::u32string& head, const std::u32string& typed,
               std::vector<Offer>& offers)
{
    for (std::u32string& value : parameter.rules.candidates(typed)) {
        offers.push_back({head, std::move(value), false});
    }
}

void addNextArgument(const Form& form, std::size_t next, const std::u32string& typed,
                     std::vector<Offer>& offers)
{
    for (std::u32string& value : form.parameters[next].rules.candidates(typed)) {
        const bool needsQuotes = detail::readSwitch(form, value, next).has_value();
        offers.push_back({{}, std::move(value), needsQuotes});
    }
}

/// The switches that begin with `typed` and aren't there yet: bare, and then with their values, since further presses of
/// Tab only step through the first offer.
std::vector<Offer> switchOffers(const Form& form, const Progress& progress, const std::u32string& typed)
{
    std::vector<Offer> bare;
    std::vector<Offer> valued;
    for (std::size_t i = 0; i < form.parameters.size(); ++i) {
        const FormParameter& parameter = form.parameters[i];
        if (parameter.isSwitch() && !progress.isGiven[i] && parameter.switchHead().starts_with(typed)) {
            bare.push_back({parameter.switchHead(), {}, false});
            if (!parameter.isFlag()) {
                addValues(parameter, parameter.switchHead(), {}, valued);
            }
        }
    }
    if (bare.size() == 1 && !valued.empty()) { // a bare switch alone would waste a press
        bare.clear();
    }
    bare.insert(bare.end(), valued.begin(), valued.end());
    return bare;
}

} // namespace

std::vector<Offer> offersFor(const Form& form, const std::vector<std::u32string>& finished, std::size_t first,
                             const std::u32string& last)
{
    const Progress progress(form, finished, first);
    const std::u32string typed = unquoted(last);
    const std::optional<SwitchWord> word = detail::readSwitch(form, last, progress.next);
    std::vector<Offer> offers;
    if (word && word->value) {
        if (const auto index = form.switchNamed(word->name); index && !progress.isGiven[*index]) {
            addValues(form.parameters[*index], form.parameters[*index].switchHead(), unquoted(*word->value),
                      offers);
        }
        return offers;
    }
    if (last.empty() || last.front() == U'/') {
        offers = switchOffers(form, progress, typed);
    }
    if (progress.next) {
        addNextArgument(form, *progress.next, typed, offers);
    }
    return offers;
}

} // namespace zephyr::console::commands
