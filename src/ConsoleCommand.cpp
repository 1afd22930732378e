#include "zephyr/console/ConsoleCommand.h"

#include "Answers.h"
#include "zephyr/console/Console.h"

namespace zephyr::console {

namespace {

const std::u32string kNoDescription = U"(No Description Provided)";
const std::u32string kNoHelpText = U"(No Help Text Provided)";
const std::u32string kQuestion = U"What do you want to do?";
const std::u32string kInvalidUsage = U"Invalid usage";

const std::u32string& orDefault(const std::u32string& text, const std::u32string& defaultText)
{
    return text.empty() ? defaultText : text;
}

} // namespace

ConsoleCommand::ConsoleCommand() = default;

ConsoleCommand::~ConsoleCommand() = default;

void ConsoleCommand::execute(const ConsoleArgs& args, Console& console)
{
    if (executeArgHandler(args, console)) {
        return;
    }
    console.writeIndented(kQuestion, Prompt, kIndent);
    console.newline();
    printArguments(console);
}

std::vector<std::u32string> ConsoleCommand::getAutoCompleteResults(const ConsoleArgs&) { return {}; }

void ConsoleCommand::registerArgHandler(const std::u32string& name, const ArgHandlerFn& handler,
                                        const std::u32string& description, const std::u32string& helpText)
{
    if (!mArgHandlers.contains(name)) { // first, so that a duplicate copies nothing
        mArgHandlers.try_emplace(name, ArgHandler{name, handler, description, helpText});
    }
}

unsigned ConsoleCommand::argHandlerCount() const { return static_cast<unsigned>(mArgHandlers.size()); }

void ConsoleCommand::forEachArg(const std::function<void(const std::u32string&)>& fn) const
{
    for (const auto& [name, handler] : mArgHandlers) {
        fn(name);
    }
}

void ConsoleCommand::printArguments(Console& console) const
{
    for (const auto& [name, handler] : mArgHandlers) {
        console.writeIndented(name + U": " + orDefault(handler.description, kNoDescription), Output, kIndent);
        console.newline();
    }
}

void ConsoleCommand::printHelp(const std::u32string& argName, Console& console, unsigned indent) const
{
    const auto found = mArgHandlers.find(argName);
    if (found == mArgHandlers.end()) {
        // Not at `indent`: oddity 12.
        console.writeIndented(U"'" + argName + U"' is not a valid argument.", Output, kIndent);
        return;
    }
    console.writeIndented(orDefault(found->second.description, kNoDescription), Output, indent);
    console.writeIndented(orDefault(found->second.helpText, kNoHelpText), Output, indent);
}

void ConsoleCommand::printIncorrectUsage(const std::u32string& argName, Console& console,
                                         unsigned indent) const
{
    console.writeIndented(kInvalidUsage, Output, indent);
    console.writeIndented(std::u32string(), Output, kIndent);
    printHelp(argName, console, indent);
}

void ConsoleCommand::printUnrecognizedSwitch(const std::u32string& argName, const std::u32string& switchText,
                                             Console& console, unsigned indent) const
{
    console.writeIndented(U"Unrecognized switch '" + switchText + U"'", Output, indent);
    printHelp(argName, console, indent);
}

} // namespace zephyr::console
