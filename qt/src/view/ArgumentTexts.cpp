#include "ArgumentTexts.h"

#include "zephyr/console/Console.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include <memory>

namespace zephyr::console::qt {

namespace {

const std::u32string kNoDescription =
    U"(No Description Provided)"; // what the console prints for an empty one
constexpr std::u32string_view kUsage =
    U"Usage";                         // how a command made of a function heads its help; nobody types it
constexpr std::size_t kLongest = 200; // code points of a description or a summary, before it is cut off

/// The first line of what the command writes first as help for its argument, which is the description.
std::u32string printedDescription(const ConsoleCommand& command, const std::u32string& argument,
                                  Console& scratch)
{
    const std::size_t first = scratch.logSize();
    command.printHelp(argument, scratch, 0);
    const std::u32string text = scratch.readLogPart(first, 0, kLongest).text;
    return text == kNoDescription ? std::u32string() : text.substr(0, text.find(U'\n'));
}

/// Texts joined to one that is cut off where it gets too long.
class Summary
{
public:
    explicit Summary(std::u32string separator) : mSeparator(std::move(separator)) {}

    void add(const std::u32string& text)
    {
        if (text.empty() || mText.size() > kLongest) {
            return; // an empty argument answers the bare command
        }
        mText += (mText.empty() ? std::u32string() : mSeparator) + text.substr(0, kLongest);
        if (mText.size() > kLongest) {
            mText.resize(kLongest);
            mText += U"\u2026";
        }
    }

    const std::u32string& text() const { return mText; }

private:
    std::u32string mSeparator;
    std::u32string mText;
};

} // namespace

void ArgumentTexts::read(Console& console, const std::u32string& name)
{
    if (mCommand == name) {
        return;
    }
    forget();
    const ConsoleCommand* const command = console.lookupCommand(name);
    if (command == nullptr || command->argHandlerCount() == 0) {
        return;
    }
    const auto scratch = std::make_unique<Console>(); // the only way to a description is to have it written
    std::map<std::u32string, std::u32string> descriptions;
    command->forEachArg([&](const std::u32string& argument) {
        descriptions.emplace(argument, printedDescription(*command, argument, *scratch));
    });
    mDescriptions = std::move(descriptions);
    mCommand = name;
}

void ArgumentTexts::forget()
{
    mCommand.reset();
    mDescriptions.clear();
}

std::u32string ArgumentTexts::description(const std::u32string& argument) const
{
    const auto found = mDescriptions.find(argument);
    return found == mDescriptions.end() ? std::u32string() : found->second;
}

std::u32string argumentSummary(const ConsoleCommand& command)
{
    Summary summary(U", ");
    command.forEachArg([&summary](const std::u32string& argument) {
        if (argument != kUsage) {
            summary.add(argument);
        }
    });
    return summary.text();
}

std::u32string aliasSummary(const std::vector<std::u32string>& lines)
{
    Summary summary(U"; ");
    for (const std::u32string& line : lines) {
        summary.add(line);
    }
    return summary.text();
}

} // namespace zephyr::console::qt
