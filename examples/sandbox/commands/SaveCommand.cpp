#include "sandbox/commands/SaveCommand.h"

#include "sandbox/commands/AnswerIndent.h"
#include "sandbox/commands/FileWriting.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <QString>

#include <optional>
#include <vector>

namespace zephyr::sandbox {

using console::Console;
using console::ConsoleArgs;

namespace {

/// The words after the command without their quotes, except for empty ones.
std::vector<std::u32string> fileNames(const ConsoleArgs& args)
{
    std::vector<std::u32string> names;
    for (unsigned i = 1; i < args.argCount(); ++i) {
        std::u32string name = args.arg(i);
        std::erase(name, U'"');
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace

SaveCommand::SaveCommand(const std::u32string& usage, const std::u32string& description,
                         const std::u32string& helpText)
    : mUsage(usage)
{
    registerArgHandler(mUsage, {}, description, helpText); // only so that help describes it
}

void SaveCommand::execute(const ConsoleArgs& args, Console& console)
{
    const std::vector<std::u32string> names = fileNames(args);
    if (names.size() != 1) {
        printIncorrectUsage(mUsage, console, kAnswerIndent);
        return;
    }
    save(names.front(), console);
}

void SaveCommand::writeFile(const std::u32string& file, const std::string& bytes, const std::string& what,
                            Console& console)
{
    const std::string path = StringUtil::toString(file);
    const std::optional<std::string> error =
        writeWhole(QString::fromStdString(path), QByteArray::fromStdString(bytes));
    console.writeIndented(error ? cantWrite(path, *error) : "Wrote " + what + " to '" + path + "'.",
                          kAnswerIndent);
}

} // namespace zephyr::sandbox
