#include "ForwardingCommand.h"

#include "Command.h"
#include "zephyr/console/Console.h"

#include <QStringList>

namespace zephyr::console::quick {

namespace {

constexpr QChar kQuote = u'"';
const std::u32string kUsage = U"Usage: ";

/// The words after the command's name.
QStringList wordsOf(const ConsoleArgs& args)
{
    QStringList words;
    for (unsigned i = 1; i < args.argCount(); ++i) {
        words.append(QString::fromStdU32String(args.arg(i)));
    }
    return words;
}

} // namespace

/// Files the help as the one argument's, whose name is the usage: `help NAME` then prints "USAGE: DESCRIPTION".
ForwardingCommand::ForwardingCommand(Command& command, const QString& name)
    : mCommand(&command), mName(name.toStdU32String())
{
    const std::u32string usage = command.usage().isEmpty() ? mName : command.usage().toStdU32String();
    registerArgHandler(usage, {}, command.description().toStdU32String(), kUsage + usage);
}

bool ForwardingCommand::isRegistered(Console& console, const QString& name, const Command& command)
{
    const auto* found = dynamic_cast<const ForwardingCommand*>(console.lookupCommand(name.toStdU32String()));
    return found != nullptr && found->mCommand == &command;
}

void ForwardingCommand::execute(const ConsoleArgs& args, Console&)
{
    if (!mCommand.isNull()) {
        mCommand->runWith(wordsOf(args).replaceInStrings(kQuote, QString()));
    }
}

std::vector<std::u32string> ForwardingCommand::getAutoCompleteResults(const ConsoleArgs& args)
{
    std::vector<std::u32string> candidates;
    if (!mCommand.isNull()) {
        for (const QString& candidate : mCommand->candidatesFor(wordsOf(args))) {
            candidates.push_back(candidate.toStdU32String());
        }
    }
    return candidates;
}

} // namespace zephyr::console::quick
