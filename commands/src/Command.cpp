#include "zephyr/console/commands/Command.h"

#include "AnswerTexts.h"
#include "TypedCommand.h"
#include "Words.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace zephyr::console::commands {

namespace {

/// Refuses a name that can't be typed, or that help needs. An empty one is the command's own function.
void requireSubName(const std::u32string& command, const std::u32string& name)
{
    if (name == kUsage) {
        throw std::invalid_argument(StringUtil::toString(command + U": a sub-command can't be named '" +
                                                         name + U"', which heads the command's help"));
    }
    if (!name.empty()) {
        requireName(name, (StringUtil::toString(command) + ": a sub-command").c_str());
    }
}

} // namespace

struct Command::Data
{
    std::u32string name;
    std::u32string description;
    std::vector<detail::Form> forms;
};

Command::Command(std::u32string name, std::u32string description)
{
    requireName(name, "a command");
    mData = std::make_unique<Data>(Data{std::move(name), std::move(description), {}});
}

Command::Command(const Command& other) : mData(std::make_unique<Data>(*other.mData)) {}
Command::Command(Command&& other) noexcept = default;
Command& Command::operator=(Command&& other) noexcept = default;
Command::~Command() = default;

Command& Command::operator=(const Command& other) { return *this = Command(other); }

void Command::addForm(std::u32string name, std::u32string description, detail::Function function,
                      std::vector<Parameter> parameters)
{
    requireSubName(mData->name, name);
    const auto isSame = [&](const detail::Form& form) { return form.name == name; };
    if (std::any_of(mData->forms.begin(), mData->forms.end(), isSame)) {
        throw std::invalid_argument(StringUtil::toString(mData->name) + " has two functions for '" +
                                    StringUtil::toString(name) + "'");
    }
    const std::u32string where = name.empty() ? mData->name : mData->name + U' ' + name;
    try {
        mData->forms.emplace_back(std::move(name), std::move(description), std::move(function),
                                  std::move(parameters));
    } catch (const std::invalid_argument& mistake) {
        throw std::invalid_argument(StringUtil::toString(where) + ": " + mistake.what());
    }
}

Added add(Console& console, Command command)
{
    auto typed =
        std::make_unique<TypedCommand>(std::move(command.mData->name), std::move(command.mData->description),
                                       std::move(command.mData->forms));
    const std::weak_ptr<const detail::Place> place = typed->setPlace(console, *typed, typed->name());
    console.registerCommand(std::move(typed));
    return Added(place);
}

} // namespace zephyr::console::commands
