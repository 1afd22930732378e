#include "VariableCommand.h"

#include "AnswerTexts.h"
#include "ArgumentError.h"
#include "CompletedLine.h"
#include "Escapes.h"
#include "FailureNotice.h"
#include "Words.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Variable.h"

#include <stdexcept>
#include <utility>

namespace zephyr::console::commands {

using detail::VariableBase;

namespace {

const std::u32string kDefault = U"default";
const std::u32string kEscapedBegin = U"/escaped=";

bool isPlainWord(const std::u32string& text)
{
    return !text.empty() && text != kDefault && quoted(text) == text;
}

Offer offerOf(std::u32string value)
{
    const bool needsQuotes = value == kDefault || value.starts_with(kEscapedBegin);
    return {{}, std::move(value), needsQuotes};
}

/// The text that a word of a line stands for.
std::u32string textOfWord(const std::u32string& word, const std::u32string& name)
{
    if (!word.starts_with(kEscapedBegin)) {
        return unquoted(word);
    }
    const std::u32string escapedText = word.substr(kEscapedBegin.size());
    if (std::optional<std::u32string> text = unescaped(escapedText)) {
        return *std::move(text);
    }
    throw ArgumentError{name + U": '" + escapedText + U"' is not an escaped text."};
}

} // namespace

VariableCommand::VariableCommand(std::u32string name, std::u32string description,
                                 std::shared_ptr<const ValueRules> rules, const VariableLimits& limits,
                                 std::shared_ptr<VariableBase> state)
    : mName(std::move(name)),
      mDescription(std::move(description)),
      mRules(std::move(rules)),
      mLimits(limits),
      mState(std::move(state))
{
    const std::u32string about = usage() + kFurtherLine + mDescription + kFurtherLine + capitals(U"value") +
                                 U": " + mRules->expected() + U", by default " + shownDefault() + U".";
    registerArgHandler(kUsage, {}, about, kNothing);
}

std::u32string VariableCommand::usage() const
{
    return mLimits.isReadOnly() ? mName : mName + U" [VALUE|default]";
}

std::u32string VariableCommand::shown(const std::u32string& text) const
{
    return mRules->withUnit(quoted(text));
}
std::u32string VariableCommand::shownValue() const { return shown(mState->text()); }
std::u32string VariableCommand::shownDefault() const { return shown(mState->defaultText()); }

std::u32string VariableCommand::summary() const
{
    return mName + U": " + shownValue() + U"; by default " + shownDefault() + U"; " + mRules->expected() +
           (mLimits.isReadOnly() ? U"; read-only." : U".");
}

void VariableCommand::execute(const ConsoleArgs& args, Console& console)
{
    std::u32string failure;
    bool needsUsage = false;
    try {
        const std::vector<std::u32string> words = wordsOf(args);
        if (words.empty()) {
            console.writeIndented(summary(), kAnswerIndent);
        } else {
            set(words);
        }
        return;
    } catch (const ArgumentError& error) {
        failure = error.line;
        needsUsage = true;
    } catch (const CommandError& error) {
        failure = StringUtil::toU32String(error.what());
    }
    console.writeIndented(failure, kAnswerIndent);
    if (needsUsage) {
        console.writeIndented(kUsageBegin + usage(), kAnswerIndent);
    }
    FailureNotice::note(console, failure);
}

void VariableCommand::set(const std::vector<std::u32string>& words) const
{
    if (words.size() > 1) {
        throw ArgumentError{mName + U": '" + unquoted(words[1]) + U"' is one word too many" +
                            mRules->hintToQuote(words[0], words[1]) + U"."};
    }
    if (mLimits.isReadOnly()) {
        throw ArgumentError{mName + U": '" + unquoted(words[0]) +
                            U"' is not expected; the variable is read-only."};
    }
    if (words[0] == kDefault) {
        return reset();
    }
    const std::shared_ptr<VariableBase> state = mState; // who is told of the change may remove the variable
    const std::shared_ptr<const ValueRules> rules = mRules;
    const std::u32string text = textOfWord(words[0], mName);
    state->setFrom([&](void* optional) { rules->read(text, optional); });
}

void VariableCommand::reset() const
{
    const std::shared_ptr<VariableBase> state = mState; // as above
    state->reset();
}

std::u32string VariableCommand::savedLine() const
{
    const std::u32string text = mState->text();
    mRules->checkText(text);
    if (isPlainWord(text) && fitsInQuotes(text)) {
        return mName + U" " + text;
    }
    return mName + U" " + (fitsInQuotes(text) ? U"\"" + text + U"\"" : kEscapedBegin + escaped(text));
}

std::vector<std::u32string> VariableCommand::getAutoCompleteResults(const ConsoleArgs& args)
{
    const CompletedLine line(args);
    if (line.isClosed() || !line.finished().empty() || mLimits.isReadOnly()) {
        return {};
    }
    std::vector<Offer> offers;
    for (std::u32string& value : mRules->candidates(unquoted(line.last()))) {
        offers.push_back(offerOf(std::move(value)));
    }
    offers.push_back(offerOf(mState->text()));
    offers.push_back({{}, kDefault, false});
    return line.candidates(offers);
}

detail::AddedVariable detail::addVariable(Console& console, std::u32string name, std::u32string description,
                                          const ValueType& type, const VariableLimits& limits,
                                          std::shared_ptr<VariableBase> state)
{
    requireName(name, "a variable");
    auto rules = std::make_shared<const ValueRules>(type, limits.data(), name);
    rules->checkDefault(state->defaultText());
    auto command = std::make_unique<VariableCommand>(std::move(name), std::move(description), rules, limits,
                                                     std::move(state));
    const std::weak_ptr<const Place> place = command->setPlace(console, *command, command->name());
    console.registerCommand(std::move(command));
    return {Added(place), rules};
}

void detail::checkLimits(const ValueRules& rules, const std::u32string& text, const void* value)
{
    try {
        rules.check(text, value);
    } catch (const ArgumentError& error) {
        throw CommandError(error.line);
    }
}

} // namespace zephyr::console::commands
