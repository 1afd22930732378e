#ifndef ZEPHYR_CONSOLE_COMMANDS_VARIABLECOMMAND_H
#define ZEPHYR_CONSOLE_COMMANDS_VARIABLECOMMAND_H

#include "Place.h"
#include "ValueRules.h"
#include "zephyr/console/ConsoleCommand.h"
#include "zephyr/console/commands/VariableLimits.h"
#include "zephyr/console/commands/detail/VariableBase.h"

#include <memory>
#include <string>
#include <vector>

namespace zephyr::console::commands {

/// A variable as the console sees it: a command under its name.
class VariableCommand : public ConsoleCommand, public detail::Placed
{
public:
    VariableCommand(std::u32string name, std::u32string description, std::shared_ptr<const ValueRules> rules,
                    const VariableLimits& limits, std::shared_ptr<detail::VariableBase> state);

    std::u32string name() const override { return mName; }
    void execute(const ConsoleArgs& args, Console& console) override;
    std::vector<std::u32string> getAutoCompleteResults(const ConsoleArgs& args) override;

    const std::u32string& description() const { return mDescription; }
    const VariableLimits& limits() const { return mLimits; }
    const ValueRules& rules() const { return *mRules; }
    std::u32string usage() const;

    /// The value and the default, with units.
    std::u32string shownValue() const;
    std::u32string shownDefault() const;

    /// Name, value, default and range in one line.
    std::u32string summary() const;

    bool isDefault() const { return mState->text() == mState->defaultText(); }

    /// The line of a console file that sets the variable to its value. Throws ArgumentError for a value that can't be set,
    /// as the program's own may be.
    std::u32string savedLine() const;

    /// Restores the default.
    void reset() const;

private:
    void set(const std::vector<std::u32string>& words) const;
    std::u32string shown(const std::u32string& text) const;

    std::u32string mName;
    std::u32string mDescription;
    std::shared_ptr<const ValueRules> mRules;
    VariableLimits mLimits;
    std::shared_ptr<detail::VariableBase> mState;
};

} // namespace zephyr::console::commands

#endif
