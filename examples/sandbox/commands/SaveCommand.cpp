#include "sandbox/commands/SaveCommand.h"

#include "sandbox/commands/FileWriting.h"
#include "sandbox/commands/SandboxCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <QString>

#include <vector>

namespace zephyr::sandbox {

using console::Console;
using console::ConsoleArgs;

namespace {

/// The words behind the command, without quotes and without what is empty.
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
    registerArgHandler(mUsage, {}, description, helpText); // for help only; execute() does the work
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
    const std::string quoted = '\'' + StringUtil::toString(file) + '\'';
    const QString error =
        writeWhole(QString::fromStdString(StringUtil::toString(file)), QByteArray::fromStdString(bytes));
    if (!error.isEmpty()) {
        console.writeIndented("Can't write " + quoted + ": " + error.toStdString() + ".", kAnswerIndent);
        return;
    }
    console.writeIndented("Wrote " + what + " to " + quoted + ".", kAnswerIndent);
}

} // namespace zephyr::sandbox
