#include "SortedWords.h"

#include "ArgumentError.h"
#include "zephyr/console/commands/detail/Call.h"

namespace zephyr::console::commands::detail {

namespace {

const std::u32string kGiven = U"on"; // of a flag
const std::u32string kNotGiven = U"off";

std::vector<std::u32string> switchLabels(const Form& form)
{
    std::vector<std::u32string> labels;
    for (const FormParameter& parameter : form.parameters) {
        if (parameter.isSwitch()) {
            labels.push_back(U"/" + parameter.described.name());
        }
    }
    return labels;
}

[[noreturn]] void refuseMissing(const FormParameter& parameter)
{
    throw ArgumentError{parameter.rules.label() + U": nothing given; expected " + parameter.rules.expected() +
                        U"."};
}

[[noreturn]] void refuseSwitch(const Form& form, const SwitchWord& word, const std::u32string& usageName)
{
    throw ArgumentError{usageName + U": '/" + word.name + U"' is not " + orList(switchLabels(form)) + U"."};
}

[[noreturn]] void refuseSurplus(const std::u32string& usageName, const std::u32string& word,
                                const std::u32string& why)
{
    throw ArgumentError{usageName + U": '" + unquoted(word) + U"' is one word too many" + why + U"."};
}

std::u32string sinceGivenByName(const std::vector<std::u32string>& names)
{
    return U", since " + andList(names) + (names.size() == 1 ? U" is" : U" are") + U" given by name";
}

/// The arguments that a switch gives.
std::vector<std::u32string> givenByName(const Form& form,
                                        const std::vector<std::optional<std::u32string>>& given)
{
    std::vector<std::u32string> names;
    for (std::size_t i = 0; i < given.size(); ++i) {
        if (given[i] && form.parameters[i].isArgument()) {
            names.push_back(form.parameters[i].rules.label());
        }
    }
    return names;
}

/// What to add to the complaint about `words[surplus]`, which is too many. `last` is the parameter of the last word by
/// place, if there was one.
std::u32string hintToQuote(const Form& form, const std::vector<std::u32string>& words, std::size_t surplus,
                           const FormParameter* last)
{
    if (surplus == 0) {
        return {};
    }
    const std::u32string& before = words[surplus - 1];
    const std::optional<SwitchWord> read = readSwitch(form, before, std::nullopt);
    if (const std::optional<std::size_t> index = read ? form.switchNamed(read->name) : std::nullopt) {
        return read->value ? form.parameters[*index].rules.hintToQuote(*read->value, words[surplus])
                           : std::u32string();
    }
    return last == nullptr ? std::u32string() : last->rules.hintToQuote(before, words[surplus]);
}

} // namespace

std::optional<SwitchWord> readSwitch(const Form& form, const std::u32string& word,
                                     std::optional<std::size_t> next)
{
    if (!form.hasSwitches()) {
        return std::nullopt;
    }
    std::optional<SwitchWord> read = switchWord(word);
    const bool isFile =
        read && next && form.parameters[*next].rules.type().isPath && !form.switchNamed(read->name);
    return isFile ? std::nullopt : read;
}

SortedWords::SortedWords(const Form& form, const std::vector<std::u32string>& words, std::size_t first,
                         const std::u32string& usageName)
    : given(form.parameters.size())
{
    std::vector<std::size_t> others;
    others.reserve(words.size());
    for (std::size_t i = first; i < words.size(); ++i) {
        const std::optional<SwitchWord> read = readSwitch(form, words[i], std::nullopt);
        if (const std::optional<std::size_t> index = read ? form.switchNamed(read->name) : std::nullopt) {
            addSwitch(form.parameters[*index], *read, given[*index]);
        } else {
            others.push_back(i);
        }
    }
    addArguments(form, words, others, usageName);
}

void SortedWords::addSwitch(const FormParameter& parameter, const SwitchWord& word,
                            std::optional<std::u32string>& value)
{
    const std::u32string& label = parameter.rules.label();
    if (value) {
        throw ArgumentError{label + U": given twice."};
    }
    if (parameter.isFlag() && word.value) {
        throw ArgumentError{label + U": '" + unquoted(*word.value) +
                            U"' is not expected; the flag takes no value."};
    }
    if (!parameter.isFlag() && !word.value) {
        refuseMissing(parameter);
    }
    value = word.value ? unquoted(*word.value) : kGiven;
}

void SortedWords::addArguments(const Form& form, const std::vector<std::u32string>& words,
                               const std::vector<std::size_t>& indices, const std::u32string& usageName)
{
    const std::vector<std::u32string> named = givenByName(form, given);
    const FormParameter* last = nullptr;
    for (const std::size_t index : indices) {
        const std::u32string& word = words[index];
        const std::optional<std::size_t> next =
            form.nextArgument([this](std::size_t i) { return given[i].has_value(); });
        if (const std::optional<SwitchWord> read = readSwitch(form, word, next)) {
            refuseSwitch(form, *read, usageName);
        }
        if (!next) {
            refuseSurplus(usageName, word,
                          named.empty() ? hintToQuote(form, words, index, last) : sinceGivenByName(named));
        }
        last = &form.parameters[*next];
        if (last->need == Need::Rest) {
            rest.push_back(unquoted(word));
        } else {
            given[*next] = unquoted(word);
        }
    }
}

void Call::read(void* optional)
{
    const FormParameter& parameter = mForm.parameters[mParameter];
    const std::optional<std::u32string>& word = mWords.given[mParameter];
    ++mParameter;
    if (word) {
        parameter.rules.read(*word, optional);
    } else if (parameter.isFlag()) {
        parameter.rules.read(kNotGiven, optional);
    } else if (parameter.described.defaultText()) {
        parameter.rules.read(*parameter.described.defaultText(), optional);
    } else if (!parameter.canBeMissing()) {
        refuseMissing(parameter);
    }
}

bool Call::readOneMore(void* optional)
{
    if (mWords.readFromRest == mWords.rest.size()) {
        ++mParameter;
        return false;
    }
    mForm.parameters[mParameter].rules.read(mWords.rest[mWords.readFromRest], optional);
    ++mWords.readFromRest;
    return true;
}

} // namespace zephyr::console::commands::detail
