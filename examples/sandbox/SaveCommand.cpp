#include "sandbox/SaveCommand.h"

#include "sandbox/SandboxCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <QSaveFile>
#include <QString>

#include <vector>

namespace zephyr::sandbox {

using console::Console;
using console::ConsoleArgs;

namespace {

constexpr char32_t kBare[] = U""; // the word behind a command that stands alone
constexpr char32_t kQuote = U'"';

/// The words behind the command, without quotes and without what is empty.
std::vector<std::u32string> fileNames(const ConsoleArgs& args)
{
    std::vector<std::u32string> names;
    for (unsigned i = 1; i < args.argCount(); ++i) {
        std::u32string name = args.arg(i);
        std::erase(name, kQuote);
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

/// \return why `bytes` couldn't be written, in the system's words, or an empty string.
std::string writtenWhole(const QString& path, const std::string& bytes)
{
    QSaveFile file(path);
    const auto size = static_cast<qint64>(bytes.size());
    if (file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.commit()) {
        return {};
    }
    return file.errorString().simplified().toStdString();
}

} // namespace

SaveCommand::SaveCommand(const std::u32string& description, const std::u32string& helpText)
{
    registerArgHandler(kBare, {}, description, helpText); // for help only; execute() does the work
}

void SaveCommand::execute(const ConsoleArgs& args, Console& console)
{
    const std::vector<std::u32string> names = fileNames(args);
    if (names.size() != 1) {
        printIncorrectUsage(kBare, console, kAnswerIndent);
        return;
    }
    save(names.front(), console);
}

void SaveCommand::writeFile(const std::u32string& file, const std::string& bytes, const std::string& what,
                            Console& console)
{
    const std::string quoted = "'" + StringUtil::toString(file) + "'";
    const std::string error = writtenWhole(QString::fromStdString(StringUtil::toString(file)), bytes);
    if (!error.empty()) {
        console.writeIndented("Can't write " + quoted + ": " + error + ".", kAnswerIndent);
        return;
    }
    console.writeIndented("Wrote " + what + " to " + quoted + ".", kAnswerIndent);
}

} // namespace zephyr::sandbox
