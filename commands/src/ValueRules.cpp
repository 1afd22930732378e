#include "ValueRules.h"

#include "ArgumentError.h"
#include "OutOfRange.h"
#include "Words.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/commands/Failure.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace zephyr::console::commands {

using detail::CheckData;
using detail::Comparison;
using detail::LimitData;
using detail::ValueType;

ValueRules::ValueRules(const ValueType& type, const LimitData& limits, std::u32string label)
    : mType(&type), mLimits(limits), mLabel(std::move(label))
{
    if (limits.lowest) {
        mLowest = make(*limits.lowest, "limit");
    }
    if (limits.highest) {
        mHighest = make(*limits.highest, "limit");
    }
    if ((mLowest || mHighest) && type.compare == nullptr) {
        throw std::invalid_argument(StringUtil::toString(mLabel) +
                                    " can't have a range, since its type has no order");
    }
    if (mLowest && mHighest && type.compare(mHighest.get(), mLowest.get()) == Comparison::Less) {
        throw std::invalid_argument(StringUtil::toString(mLabel + U" can't have a range from " +
                                                         *limits.lowest + U" to " + *limits.highest));
    }
    for (const std::u32string& choice : limits.choices) {
        mChoices.push_back(make(choice, "choice"));
    }
    for (const CheckData& check : limits.checks) {
        if (*check.type->id != *type.id) { // each module that is linked has descriptions of its own
            throw std::invalid_argument("the check of " + StringUtil::toString(mLabel) +
                                        " is for another type");
        }
    }
    mExpected = describe();
}

/// A value that the host gave.
ValueRules::Owned ValueRules::make(const std::u32string& text, const char* what) const
{
    std::string why = "it is no " + StringUtil::toString(mType->name);
    try {
        if (Owned value = mType->make(text)) {
            return value;
        }
    } catch (const CommandError& error) {
        why = error.what();
    }
    throw std::invalid_argument(StringUtil::toString(mLabel) + " can't have the " + what + " '" +
                                StringUtil::toString(text) + "': " + why);
}

void ValueRules::checkDefault(const std::u32string& text) const
{
    const Owned value = make(text, "default");
    try {
        check(text, value.get());
    } catch (const ArgumentError& error) {
        throw std::invalid_argument("a default breaks its limits: " + StringUtil::toString(error.line));
    }
}

/// Calls `read`, which returns a pointer to the value of `text`, null if it is none, or throws what is wrong with it.
template <typename Read>
void ValueRules::readAndCheck(const std::u32string& text, const Read& read) const
{
    const void* value = nullptr;
    try {
        value = read();
    } catch (const OutOfRange& error) {
        refuseOutOfRange(text, error.isBelow());
        throw ArgumentError{mLabel + U": " + StringUtil::toU32String(error.what())};
    } catch (const CommandError& error) {
        throw ArgumentError{mLabel + U": " + StringUtil::toU32String(error.what())};
    }
    if (value == nullptr) {
        refuse(U"'" + text + U"'", U"is not " + mExpected);
    }
    check(text, value);
}

void ValueRules::read(const std::u32string& text, void* optional) const
{
    readAndCheck(text, [&] { return mType->read(text, optional); });
}

void ValueRules::checkText(const std::u32string& text) const
{
    Owned value;
    readAndCheck(text, [&] {
        value = mType->make(text);
        return value.get();
    });
}

std::u32string ValueRules::hintToQuote(const std::u32string& word, const std::u32string& next) const
{
    const std::u32string text = word + U' ' + next;
    if (unquoted(text) != text) {
        return {};
    }
    try {
        checkText(text);
    } catch (const ArgumentError&) {
        return {};
    }
    return U"; quote words that belong together";
}

void ValueRules::check(const std::u32string& text, const void* value) const
{
    if (!isChoice(text, value)) {
        refuse(U"'" + text + U"'", U"is not " + mExpected);
    }
    checkRange(text, value);
    for (const CheckData& check : mLimits.checks) {
        if (!check.isGood(value)) {
            refuse(text.empty() ? U"''" : text, check.complaint);
        }
    }
}

/// Throws what the limits say of a number that the type can't hold, if they say anything.
void ValueRules::refuseOutOfRange(const std::u32string& text, bool isBelow) const
{
    if (!mChoices.empty()) {
        refuse(U"'" + text + U"'", U"is not " + mExpected);
    }
    if (isBelow && mLowest) {
        refuse(text, U"is below " + withUnit(*mLimits.lowest));
    }
    if (!isBelow && mHighest) {
        refuse(text, U"is above " + withUnit(*mLimits.highest));
    }
}

void ValueRules::checkRange(const std::u32string& text, const void* value) const
{
    const Comparison toLowest = mLowest ? mType->compare(value, mLowest.get()) : Comparison::Equal;
    const Comparison toHighest = mHighest ? mType->compare(value, mHighest.get()) : Comparison::Equal;
    if (toLowest == Comparison::Less) {
        refuse(text, U"is below " + withUnit(*mLimits.lowest));
    }
    if (toHighest == Comparison::Greater) {
        refuse(text, U"is above " + withUnit(*mLimits.highest));
    }
    if (toLowest == Comparison::Unordered || toHighest == Comparison::Unordered) {
        refuse(U"'" + text + U"'", U"is not " + mExpected);
    }
}

bool ValueRules::isChoice(const std::u32string& text, const void* value) const
{
    if (mChoices.empty()) {
        return true;
    }
    if (mType->equal == nullptr) {
        return std::find(mLimits.choices.begin(), mLimits.choices.end(), text) != mLimits.choices.end();
    }
    return std::any_of(mChoices.begin(), mChoices.end(),
                       [&](const Owned& choice) { return mType->equal(value, choice.get()); });
}

/// The only values that there are, or nothing.
std::vector<std::u32string> ValueRules::onlyValues() const
{
    if (!mLimits.choices.empty()) {
        return mLimits.choices;
    }
    return mType->onlyCandidates ? mType->candidates({}) : std::vector<std::u32string>();
}

std::u32string ValueRules::describe() const
{
    if (const std::vector<std::u32string> values = onlyValues(); !values.empty()) {
        return withUnit(orList(values));
    }
    std::u32string text = withArticle(mType->name);
    if (mLowest && mHighest) {
        text += U" from " + *mLimits.lowest + U" to " + *mLimits.highest;
    } else if (mLowest) {
        text += U" of at least " + *mLimits.lowest;
    } else if (mHighest) {
        text += U" of at most " + *mLimits.highest;
    } else if (!mLimits.unit.empty()) {
        text += U" in";
    } else if (!mType->example.empty()) {
        text += U" such as " + std::u32string(mType->example);
    }
    return withUnit(text);
}

std::u32string ValueRules::placeholder() const
{
    std::u32string text;
    for (const std::u32string& value : onlyValues()) {
        text += (text.empty() ? U"" : U"|") + value;
    }
    return text.empty() ? capitals(lastWord(mType->name)) : text;
}

std::u32string ValueRules::withUnit(const std::u32string& text) const
{
    return mLimits.unit.empty() ? text : text + U" " + mLimits.unit;
}

std::vector<std::u32string> ValueRules::candidates(const std::u32string& typed) const
{
    std::vector<std::u32string> values = mLimits.choices;
    if (values.empty() && mType->candidates != nullptr) {
        values = mType->candidates(typed);
    }
    values.insert(values.end(), mLimits.offers.begin(), mLimits.offers.end());
    if (mLimits.candidates) {
        const std::vector<std::u32string> more = mLimits.candidates();
        values.insert(values.end(), more.begin(), more.end());
    }
    return values;
}

void ValueRules::refuse(const std::u32string& text, const std::u32string& what) const
{
    throw ArgumentError{mLabel + U": " + text + U" " + what + U"."};
}

} // namespace zephyr::console::commands
