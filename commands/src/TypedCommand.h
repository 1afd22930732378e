#ifndef ZEPHYR_CONSOLE_COMMANDS_TYPEDCOMMAND_H
#define ZEPHYR_CONSOLE_COMMANDS_TYPEDCOMMAND_H

#include "Form.h"
#include "Place.h"
#include "zephyr/console/ConsoleCommand.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console::commands {

/// A command made of functions, as the console sees it.
class TypedCommand : public ConsoleCommand, public detail::Placed
{
public:
    /// \param name what a line begins with.
    /// \param description one sentence for help.
    /// \param forms at most one without a name, which runs where no other is named.
    TypedCommand(std::u32string name, std::u32string description, std::vector<detail::Form> forms);

    std::u32string name() const override { return mName; }
    void execute(const ConsoleArgs& args, Console& console) override;
    std::vector<std::u32string> getAutoCompleteResults(const ConsoleArgs& args) override;

    const std::u32string& description() const { return mDescription; }
    const std::vector<detail::Form>& forms() const { return mForms; }

private:
    const detail::Form* formNamed(const std::u32string& formName) const;
    void describeInHelp();
    std::vector<std::u32string> usages() const;
    std::vector<std::u32string> subNames() const;
    void run(const detail::Form& form, const std::vector<std::u32string>& words, std::size_t first,
             Console& console);
    void answerError(const std::u32string& line, const std::vector<std::u32string>& usages,
                     Console& console) const;

    std::u32string mName;
    std::u32string mDescription;
    std::vector<detail::Form> mForms;
};

} // namespace zephyr::console::commands

#endif
