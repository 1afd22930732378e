#include "Form.h"

#include "Words.h"
#include "zephyr/common/StringUtil.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace zephyr::console::commands::detail {

namespace {

std::u32string labelOf(const Parameter& parameter)
{
    return parameter.form() == Parameter::Form::Argument ? parameter.name() : U"/" + parameter.name();
}

[[noreturn]] void refuse(const Parameter& parameter, const char* why)
{
    throw std::invalid_argument(StringUtil::toString(labelOf(parameter)) + why);
}

/// Arguments for the parameters that the host didn't describe, named after their types.
std::vector<Parameter> withUndescribed(std::vector<Parameter> described, const std::vector<Shape>& shapes)
{
    const auto first = shapes.begin() + static_cast<std::ptrdiff_t>(described.size());
    for (std::size_t i = described.size(); i < shapes.size(); ++i) {
        const std::u32string name(lastWord(shapes[i].type->name));
        const auto isAlike = [&](const Shape& shape) { return lastWord(shape.type->name) == name; };
        const auto here = shapes.begin() + static_cast<std::ptrdiff_t>(i);
        const auto before = static_cast<std::uint64_t>(std::count_if(first, here, isAlike));
        const bool isOnly = std::count_if(first, shapes.end(), isAlike) == 1;
        described.push_back(argument(isOnly ? name : name + writeUnsigned(before + 1)));
    }
    return described;
}

/// Refuses a default that a user couldn't type.
void checkDefault(const Parameter& described, const Shape& shape, const ValueRules& rules)
{
    if (shape.need != Need::Required || described.form() == Parameter::Form::Flag) {
        refuse(described, " has no use for a default");
    }
    rules.checkDefault(*described.defaultText());
}

FormParameter bind(const Parameter& described, const Shape& shape)
{
    requireName(described.name(), "a parameter");
    if (described.name().find(U'=') != std::u32string::npos) {
        refuse(described, " can't have an equals sign in its name");
    }
    if (described.form() == Parameter::Form::Flag && (!shape.type->isBool || shape.need != Need::Required)) {
        refuse(described, " is a flag, whose parameter must be a bool");
    }
    if (described.form() == Parameter::Form::Option && shape.need == Need::Rest) {
        refuse(described, " is an option, and can't take several words");
    }
    if (described.isNamed() && shape.need == Need::Rest) {
        refuse(described, " takes several words, and can't be typed by its name");
    }
    FormParameter parameter{described, shape.need,
                            ValueRules(*shape.type, described.data(), labelOf(described))};
    if (described.defaultText()) {
        checkDefault(described, shape, parameter.rules);
    }
    return parameter;
}

/// The words are dealt out in order, so whoever may get none comes after whoever must get one.
void checkOrder(const std::vector<FormParameter>& parameters)
{
    const FormParameter* missable = nullptr;
    for (const FormParameter& parameter : parameters) {
        if (!parameter.isArgument()) {
            continue;
        }
        if (missable != nullptr && (!parameter.canBeMissing() || missable->need == Need::Rest)) {
            refuse(parameter.described, " stands behind an argument that may be missing, or takes all words");
        }
        missable = parameter.canBeMissing() ? &parameter : missable;
    }
}

void checkNames(const std::vector<FormParameter>& parameters)
{
    for (auto one = parameters.begin(); one != parameters.end(); ++one) {
        const auto isSame = [&](const FormParameter& other) {
            return other.rules.label() == one->rules.label();
        };
        if (std::any_of(one + 1, parameters.end(), isSame)) {
            refuse(one->described, " is described twice");
        }
    }
}

} // namespace

bool FormParameter::canBeMissing() const
{
    return need != Need::Required || described.defaultText().has_value() || isFlag();
}

std::u32string FormParameter::usage() const
{
    std::u32string text = isArgument() ? capitals(described.name()) : byName();
    if (need == Need::Rest) {
        text += U"...";
    }
    return canBeMissing() ? U"[" + text + U"]" : text;
}

std::u32string FormParameter::help() const
{
    std::u32string text = isArgument() ? capitals(described.name()) : rules.label();
    text += (isArgument() && isSwitch() ? U" or " + byName() : U"") + U": " + expected();
    if (described.defaultText()) {
        text += U", by default " + rules.withUnit(quoted(*described.defaultText()));
    }
    text += U".";
    return described.description().empty() ? text : text + U" " + described.description();
}

Form::Form(std::u32string formName, std::u32string formDescription, Function function,
           std::vector<Parameter> described)
    : name(std::move(formName)), description(std::move(formDescription)), call(std::move(function.call))
{
    const std::vector<Parameter> all = withUndescribed(std::move(described), function.shapes);
    for (std::size_t i = 0; i < all.size(); ++i) {
        parameters.push_back(bind(all[i], function.shapes[i]));
    }
    checkOrder(parameters);
    checkNames(parameters);
}

bool Form::hasSwitches() const
{
    return std::any_of(parameters.begin(), parameters.end(),
                       [](const FormParameter& parameter) { return parameter.isSwitch(); });
}

std::optional<std::size_t> Form::switchNamed(const std::u32string& switchName) const
{
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i].isSwitch() && parameters[i].described.name() == switchName) {
            return i;
        }
    }
    return std::nullopt;
}

std::u32string Form::usage(const std::u32string& command) const
{
    std::u32string text = name.empty() ? command : command + U" " + name;
    std::u32string switches;
    for (const FormParameter& parameter : parameters) {
        (parameter.isArgument() ? text : switches) += U" " + parameter.usage();
    }
    return text + switches;
}

std::vector<std::u32string> Form::parameterHelp() const
{
    std::vector<std::u32string> lines;
    std::transform(parameters.begin(), parameters.end(), std::back_inserter(lines),
                   [](const FormParameter& parameter) { return parameter.help(); });
    return lines;
}

} // namespace zephyr::console::commands::detail
