#include "FormCompletion.h"

#include "SortedWords.h"
#include "Words.h"

#include <algorithm>

namespace zephyr::console::commands {

using detail::Form;
using detail::FormParameter;

namespace {

/// The words of a line that are finished, as far as further ones depend on them.
struct Progress
{
    Progress(const Form& form, const std::vector<std::u32string>& finished, std::size_t first)
        : isGiven(form.parameters.size())
    {
        for (std::size_t i = first; i < finished.size(); ++i) {
            const std::optional<SwitchWord> word = detail::readSwitch(form, finished[i], arguments);
            if (!word) {
                if (const std::optional<std::size_t> index = form.argumentAfter(arguments)) {
                    isGiven[*index] = true;
                }
                ++arguments;
            } else if (const std::optional<std::size_t> index = form.switchNamed(word->name)) {
                isGiven[*index] = true;
            }
        }
    }

    std::vector<bool> isGiven;
    std::size_t arguments = 0;
};

void addValues(const FormParameter& parameter, const std::u32string& head, const std::u32string& typed,
               std::vector<Offer>& offers)
{
    for (std::u32string& value : parameter.rules.candidates(typed)) {
        offers.push_back({head, std::move(value)});
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
            bare.push_back({parameter.switchHead(), {}});
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
    const std::optional<SwitchWord> word = detail::readSwitch(form, last, progress.arguments);
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
    if (const auto index = form.argumentAfter(progress.arguments);
        index && (!progress.isGiven[*index] || form.parameters[*index].need == detail::Need::Rest)) {
        addValues(form.parameters[*index], {}, typed, offers);
    }
    return offers;
}

} // namespace zephyr::console::commands
