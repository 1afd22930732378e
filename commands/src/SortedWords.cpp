#include "SortedWords.h"

#include "ArgumentError.h"
#include "zephyr/console/commands/detail/Call.h"

#include <algorithm>

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

/// The value that `word` gives to `parameter`.
std::u32string valueOf(const FormParameter& parameter, const SwitchWord& word)
{
    if (parameter.isFlag() && word.value) {
        throw ArgumentError{parameter.rules.label() + U": '" + unquoted(*word.value) +
                            U"' is not expected; the flag takes no value."};
    }
    if (!parameter.isFlag() && !word.value) {
        refuseMissing(parameter);
    }
    return word.value ? unquoted(*word.value) : kGiven;
}

/// The index of the option or flag that `word` gives, if it gives one.
std::optional<std::size_t> switchIn(const Form& form, const std::u32string& word)
{
    const std::optional<SwitchWord> read = readSwitch(form, word, std::nullopt);
    return read ? form.switchNamed(read->name) : std::nullopt;
}

/// Whether a switch among `words` gives the parameter.
bool isGivenByName(const Form& form, const std::vector<std::u32string>& words, std::size_t parameter)
{
    return std::any_of(words.begin(), words.end(),
                       [&](const std::u32string& word) { return switchIn(form, word) == parameter; });
}

/// `before` are the words before the switch.
[[noreturn]] void refuseTwice(const Form& form, const std::vector<std::u32string>& before,
                              std::size_t parameter)
{
    const std::u32string how =
        isGivenByName(form, before, parameter) ? U"" : U", by its place and by its name";
    throw ArgumentError{form.parameters[parameter].rules.label() + U": given twice" + how + U"."};
}

/// The names of the arguments that switches among `words` give.
std::vector<std::u32string> givenByName(const Form& form, const std::vector<std::u32string>& words)
{
    std::vector<std::u32string> names;
    for (std::size_t i = 0; i < form.parameters.size(); ++i) {
        if (form.parameters[i].isArgument() && isGivenByName(form, words, i)) {
            names.push_back(form.parameters[i].described.name());
        }
    }
    return names;
}

/// Whether quotes would help where `surplus` is a word too many behind `before`: what to say then, or nothing.
std::u32string hintToQuote(const Form& form, const std::u32string& before, const std::u32string& surplus)
{
    if (const std::optional<std::size_t> index = switchIn(form, before)) {
        const std::optional<std::u32string> value = switchWord(before)->value;
        return value ? form.parameters[*index].rules.hintToQuote(*value, surplus) : std::u32string();
    }
    const auto last = std::find_if(form.parameters.rbegin(), form.parameters.rend(),
                                   [](const FormParameter& parameter) { return parameter.isArgument(); });
    return last == form.parameters.rend() ? std::u32string() : last->rules.hintToQuote(before, surplus);
}

/// Why `surplus` is a word too many behind `before`, or how it would be none: the end of a sentence, or nothing.
std::u32string whyTooMany(const Form& form, const std::vector<std::u32string>& before,
                          const std::u32string& surplus)
{
    if (const std::vector<std::u32string> names = givenByName(form, before); !names.empty()) {
        return U", since " + andList(names) + (names.size() == 1 ? U" is" : U" are") + U" given by name";
    }
    return before.empty() ? std::u32string() : hintToQuote(form, before.back(), surplus);
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
    for (std::size_t i = first; i < words.size(); ++i) {
        const auto before = [&] {
            return std::vector(words.begin() + static_cast<std::ptrdiff_t>(first),
                               words.begin() + static_cast<std::ptrdiff_t>(i));
        };
        const std::optional<std::size_t> next =
            form.nextArgument([this](std::size_t index) { return given[index].has_value(); });
        if (const std::optional<SwitchWord> read = readSwitch(form, words[i], next)) {
            const std::optional<std::size_t> index = form.switchNamed(read->name);
            if (!index) {
                refuseSwitch(form, *read, usageName);
            }
            if (given[*index]) {
                refuseTwice(form, before(), *index);
            }
            given[*index] = valueOf(form.parameters[*index], *read);
        } else if (!next) {
            throw ArgumentError{usageName + U": '" + unquoted(words[i]) + U"' is one word too many" +
                                whyTooMany(form, before(), words[i]) + U"."};
        } else if (form.parameters[*next].need == Need::Rest) {
            rest.push_back(unquoted(words[i]));
        } else {
            given[*next] = unquoted(words[i]);
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
