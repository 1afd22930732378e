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

} // namespace

std::optional<SwitchWord> readSwitch(const Form& form, const std::u32string& word, std::size_t arguments)
{
    if (!form.hasSwitches()) {
        return std::nullopt;
    }
    std::optional<SwitchWord> read = switchWord(word);
    if (read && !form.switchNamed(read->name)) {
        const std::optional<std::size_t> next = form.argumentAfter(arguments);
        if (next && form.parameters[*next].rules.type().isPath) {
            return std::nullopt;
        }
    }
    return read;
}

SortedWords::SortedWords(const Form& form, const std::vector<std::u32string>& words, std::size_t first,
                         const std::u32string& usageName)
    : given(form.parameters.size())
{
    std::size_t arguments = 0;
    for (std::size_t i = first; i < words.size(); ++i) {
        if (const std::optional<SwitchWord> read = readSwitch(form, words[i], arguments)) {
            addSwitch(form, *read, usageName);
        } else {
            addArgument(form, words[i], arguments++, usageName);
        }
    }
}

void SortedWords::addSwitch(const Form& form, const SwitchWord& word, const std::u32string& usageName)
{
    const std::optional<std::size_t> index = form.switchNamed(word.name);
    if (!index) {
        throw ArgumentError{usageName + U": '/" + word.name + U"' is not " + orList(switchLabels(form)) +
                            U"."};
    }
    const FormParameter& parameter = form.parameters[*index];
    const std::u32string& label = parameter.rules.label();
    if (given[*index]) {
        throw ArgumentError{label + U": given twice."};
    }
    if (parameter.isFlag() && word.value) {
        throw ArgumentError{label + U": '" + unquoted(*word.value) +
                            U"' is not expected; the flag takes no value."};
    }
    if (!parameter.isFlag() && !word.value) {
        refuseMissing(parameter);
    }
    given[*index] = word.value ? unquoted(*word.value) : kGiven;
}

void SortedWords::addArgument(const Form& form, const std::u32string& word, std::size_t count,
                              const std::u32string& usageName)
{
    const std::optional<std::size_t> index = form.argumentAfter(count);
    if (!index) {
        throw ArgumentError{usageName + U": '" + unquoted(word) + U"' is one word too many."};
    }
    if (given[*index]) {
        throw ArgumentError{form.parameters[*index].rules.label() + U": given twice."};
    }
    if (form.parameters[*index].need == Need::Rest) {
        rest.push_back(unquoted(word));
    } else {
        given[*index] = unquoted(word);
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
