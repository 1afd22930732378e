// The command `vars`.

#include "ArgumentError.h"
#include "FailureList.h"
#include "FileWriting.h"
#include "Variables.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Command.h"
#include "zephyr/console/commands/StandardCommands.h"

#include <cstddef>

namespace zephyr::console::commands {

namespace fs = std::filesystem;

namespace {

const std::u32string kNoVariables = U"There are no variables.";

constexpr char kFileHead[] = "// Variables, as vars save wrote them.\n";

std::vector<std::u32string> list(Console& console, const std::optional<std::u32string>& prefix)
{
    std::vector<std::u32string> lines;
    forEachVariable(console, [&](const VariableCommand& variable) {
        if (!variable.limits().isHidden() && variable.name().starts_with(prefix.value_or(std::u32string()))) {
            lines.push_back(variable.name() + U" " + variable.shownValue());
        }
    });
    if (lines.empty()) {
        lines.push_back(prefix ? U"No variable's name begins with '" + *prefix + U"'." : kNoVariables);
    }
    return lines;
}

std::string save(Console& console, Answer& answer, const fs::path& name)
{
    std::string text = kFileHead;
    std::size_t count = 0;
    std::vector<std::u32string> refusals;
    forEachVariable(console, [&](const VariableCommand& variable) {
        if (!variable.limits().isArchived() || variable.limits().isReadOnly() || variable.isDefault()) {
            return;
        }
        try {
            text += StringUtil::toString(variable.savedLine()) + '\n';
            ++count;
        } catch (const ArgumentError& error) {
            refusals.push_back(U"Can't save " + error.line);
        }
    });
    failIfAny(refusals, answer);
    const fs::path path = consoleFileName(name);
    writeWhole(path, text);
    return "Wrote " + std::to_string(count) + (count == 1 ? " variable" : " variables") + " to '" +
           path.string() + "'.";
}

void reset(Console& console, Answer& answer, const std::optional<std::u32string>& prefix)
{
    std::vector<std::u32string> failures;
    forEachVariable(console, [&](const VariableCommand& variable) {
        const std::u32string name = variable.name(); // who is told of the change may remove the variable
        if (variable.limits().isReadOnly() || !name.starts_with(prefix.value_or(std::u32string()))) {
            return;
        }
        try {
            variable.reset();
        } catch (const CommandError& error) {
            failures.push_back(name + U": " + StringUtil::toU32String(error.what()));
        }
    });
    failIfAny(failures, answer);
}

} // namespace

Added addVars(Console& console)
{
    const Parameter prefix = argument(U"prefix", U"How their names begin.").candidates([&console] {
        std::vector<std::u32string> names;
        forEachVariable(console, [&](const VariableCommand& variable) {
            if (!variable.limits().isHidden()) {
                names.push_back(variable.name());
            }
        });
        return names;
    });
    return add(console,
               command(U"vars", U"Lists, saves and resets variables.")
                   .run(&list, prefix)
                   .sub(U"save", U"Writes a console file that brings back what differs from its default.",
                        &save, fileArgument(U"The extension may be left out; quote a name with spaces."))
                   .sub(U"reset", U"Restores the defaults.", &reset, prefix));
}

} // namespace zephyr::console::commands
