#include "TypedCommand.h"

#include "AnswerTexts.h"
#include "ArgumentError.h"
#include "CompletedLine.h"
#include "FailureNotice.h"
#include "FormCompletion.h"
#include "SortedWords.h"
#include "Words.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <algorithm>
#include <utility>

namespace zephyr::console::commands {

using detail::Form;

namespace {

std::u32string asDescription(const std::vector<std::u32string>& lines)
{
    std::u32string text;
    for (const std::u32string& line : lines) {
        text += (text.empty() ? U"" : kFurtherLine) + line;
    }
    return text;
}

std::vector<std::u32string> together(std::vector<std::u32string> lines,
                                     const std::vector<std::u32string>& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

} // namespace

TypedCommand::TypedCommand(std::u32string name, std::u32string description, std::vector<Form> forms)
    : mName(std::move(name)), mDescription(std::move(description)), mForms(std::move(forms))
{
    describeInHelp();
}

/// The handlers only tell help what to show, and never run. That of the command itself has a capital letter, and so comes
/// before those of sub-commands.
void TypedCommand::describeInHelp()
{
    std::vector<std::u32string> lines = usages();
    lines.push_back(mDescription);
    if (const Form* own = formNamed({})) {
        lines = together(std::move(lines), own->parameterHelp());
    }
    registerArgHandler(kUsage, {}, asDescription(lines), kNothing);
    for (const Form& form : mForms) {
        if (!form.name.empty()) {
            registerArgHandler(
                form.name, {}, form.description,
                asDescription(together({kUsageBegin + form.usage(mName)}, form.parameterHelp())));
        }
    }
}

const Form* TypedCommand::formNamed(const std::u32string& formName) const
{
    const auto found =
        std::find_if(mForms.begin(), mForms.end(), [&](const Form& form) { return form.name == formName; });
    return found == mForms.end() ? nullptr : &*found;
}

std::vector<std::u32string> TypedCommand::usages() const
{
    std::vector<std::u32string> lines;
    lines.reserve(mForms.size());
    for (const Form& form : mForms) {
        lines.push_back(form.usage(mName));
    }
    return lines;
}

std::vector<std::u32string> TypedCommand::subNames() const
{
    std::vector<std::u32string> names;
    for (const Form& form : mForms) {
        if (!form.name.empty()) {
            names.push_back(form.name);
        }
    }
    return names;
}

void TypedCommand::execute(const ConsoleArgs& args, Console& console)
{
    const std::vector<std::u32string> words = wordsOf(args);
    const std::u32string first = words.empty() ? std::u32string() : unquoted(words.front());
    if (const Form* sub = first.empty() ? nullptr : formNamed(first)) {
        return run(*sub, words, 1, console);
    }
    if (const Form* own = formNamed({})) {
        return run(*own, words, 0, console);
    }
    if (words.empty()) {
        return ConsoleCommand::execute(ConsoleArgs({mName}), console); // asks what to do, and lists it
    }
    const std::u32string line = mName + U": '" + first + U"' is not " + orList(subNames()) + U".";
    answerError(line, usages(), console);
}

void TypedCommand::run(const Form& form, const std::vector<std::u32string>& words, std::size_t first,
                       Console& console)
{
    Answer answer(console);
    try {
        const std::u32string usageName = form.name.empty() ? mName : mName + U" " + form.name;
        detail::SortedWords sorted(form, words, first, usageName);
        detail::Call call(form, sorted, answer, console);
        form.call(call);
        answer.flush();
    } catch (const ArgumentError& error) {
        answerError(error.line, {form.usage(mName)}, console);
    } catch (const CommandError& error) {
        answer.flush();
        answerError(StringUtil::toU32String(error.what()), {}, console);
    } catch (...) { // the host's own, which leaves the console
        answer.flush();
        throw;
    }
}

void TypedCommand::answerError(const std::u32string& line, const std::vector<std::u32string>& usages,
                               Console& console) const
{
    console.writeIndented(line, kAnswerIndent);
    for (const std::u32string& usage : usages) {
        console.writeIndented(kUsageBegin + usage, kAnswerIndent);
    }
    FailureNotice::note(console, line);
}

std::vector<std::u32string> TypedCommand::getAutoCompleteResults(const ConsoleArgs& args)
{
    const CompletedLine line(args);
    if (line.isClosed()) {
        return {};
    }
    std::vector<Offer> offers;
    if (line.finished().empty()) {
        for (const std::u32string& name : subNames()) {
            offers.push_back({{}, name, false});
        }
    } else if (const Form* sub = formNamed(unquoted(line.finished().front()))) {
        return line.candidates(offersFor(*sub, line.finished(), 1, line.last()));
    }
    if (const Form* own = formNamed({})) {
        const std::vector<Offer> more = offersFor(*own, line.finished(), 0, line.last());
        offers.insert(offers.end(), more.begin(), more.end());
    }
    return line.candidates(offers);
}

} // namespace zephyr::console::commands
