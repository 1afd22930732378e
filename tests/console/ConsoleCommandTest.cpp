#include "zephyr/console/ConsoleCommand.h"

#include "support/ConsoleFixture.h"
#include "support/LogLine.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::LogLine;
using test::output;
using Lines = std::vector<LogLine>;
using Names = std::vector<std::u32string>;

/// A command that overrides nothing that it need not.
class PlainCommand : public ConsoleCommand
{
public:
    std::u32string name() const override { return U"cmd"; }
};

static_assert(std::is_abstract_v<ConsoleCommand>);
static_assert(std::has_virtual_destructor_v<ConsoleCommand>);
static_assert(!std::is_copy_constructible_v<ConsoleCommand> && !std::is_move_constructible_v<ConsoleCommand>);
static_assert(!std::is_copy_assignable_v<ConsoleCommand> && !std::is_move_assignable_v<ConsoleCommand>);
static_assert(std::is_copy_constructible_v<PlainCommand> && std::is_move_constructible_v<PlainCommand>);
static_assert(std::is_copy_assignable_v<PlainCommand> && std::is_move_assignable_v<PlainCommand>);

const LogLine kQuestion = {"    What do you want to do?", Prompt, 4};

class ConsoleCommandTest : public test::ConsoleFixture
{
protected:
    void add(const std::u32string& name, const std::u32string& description = U"",
             const std::u32string& helpText = U"")
    {
        mCommand.registerArgHandler(name, [](const ConsoleArgs&, Console&) {}, description, helpText);
    }

    void addWriter(const std::u32string& name, const std::string& text)
    {
        const auto write = [text](const ConsoleArgs&, Console& console) { console.write(text, Output); };
        mCommand.registerArgHandler(name, write, U"", U"");
    }

    Names names() const
    {
        Names all;
        mCommand.forEachArg([&all](const std::u32string& name) { all.push_back(name); });
        return all;
    }

    PlainCommand mCommand;
};

TEST_F(ConsoleCommandTest, HasNoArgumentsAtFirst)
{
    EXPECT_EQ(mCommand.argHandlerCount(), 0U);
    EXPECT_EQ(names(), Names());
}

TEST_F(ConsoleCommandTest, CountsItsArguments)
{
    add(U"a");
    add(U"b");
    EXPECT_EQ(mCommand.argHandlerCount(), 2U);
}

TEST_F(ConsoleCommandTest, VisitsItsArgumentsInCodePointOrder)
{
    for (const char32_t* const name :
         {U"path_list", U"list", U"\U00010000", U"\uFFFD", U"Z", U"a", U"lis", U"é", U"", U"~"}) {
        add(name);
    }
    EXPECT_EQ(names(),
              Names({U"", U"Z", U"a", U"lis", U"list", U"path_list", U"~", U"é", U"\uFFFD", U"\U00010000"}));
}

TEST_F(ConsoleCommandTest, ThrowsForAnEmptyVisitorOnlyWhereThereIsAnArgument)
{
    EXPECT_NO_THROW(mCommand.forEachArg({}));
    add(U"a");
    EXPECT_THROW(mCommand.forEachArg({}), std::bad_function_call);
}

/// A handler that throws when it is copied, once it is armed.
class UncopyableHandler
{
public:
    explicit UncopyableHandler(const bool& isArmed) : mIsArmed(isArmed) {}
    UncopyableHandler(const UncopyableHandler& other) : mIsArmed(other.mIsArmed)
    {
        if (mIsArmed) {
            throw std::runtime_error("copied");
        }
    }
    UncopyableHandler& operator=(const UncopyableHandler&) = delete;
    ~UncopyableHandler() = default;

    void operator()(const ConsoleArgs&, Console&) const {}

private:
    const bool& mIsArmed;
};

TEST_F(ConsoleCommandTest, CopiesNothingOfASecondArgumentOfOneName)
{
    add(U"x", U"first");
    bool isArmed = false;
    const ArgHandlerFn handler = UncopyableHandler(isArmed);
    isArmed = true;
    EXPECT_NO_THROW(mCommand.registerArgHandler(U"x", handler, U"second", U"second"));
    EXPECT_THROW(mCommand.registerArgHandler(U"y", handler, U"", U""), std::runtime_error);
    EXPECT_EQ(names(), Names{U"x"});
}

TEST_F(ConsoleCommandTest, TakesItsArgumentsAlongWhereItIsCopiedOrMoved)
{
    addWriter(U"x", "written");
    PlainCommand copy = mCommand;
    add(U"y");
    EXPECT_EQ(copy.argHandlerCount(), 1U);
    const PlainCommand moved = std::move(copy);
    EXPECT_EQ(moved.argHandlerCount(), 1U);
    copy = mCommand;
    EXPECT_EQ(copy.argHandlerCount(), 2U);
    EXPECT_TRUE(copy.executeArgHandler(ConsoleArgs({U"cmd", U"x"}), mConsole));
    EXPECT_EQ(test::logLines(mConsole), Lines{output("written")});
}

TEST_F(ConsoleCommandTest, KeepsTheFirstOfTwoArgumentsOfOneName)
{
    mCommand.registerArgHandler(
        U"x", [](const ConsoleArgs&, Console& console) { console.write(U"first", Output); }, U"D1", U"H1");
    mCommand.registerArgHandler(
        U"x", [](const ConsoleArgs&, Console& console) { console.write(U"second", Output); }, U"D2", U"H2");
    EXPECT_EQ(mCommand.argHandlerCount(), 1U);
    EXPECT_TRUE(mCommand.executeArgHandler(ConsoleArgs({U"cmd", U"x"}), mConsole));
    mCommand.printHelp(U"x", mConsole, 0);
    EXPECT_EQ(log(), Lines({output("first"), output("D1"), output("H1")}));
}

TEST_F(ConsoleCommandTest, KeepsCopiesOfWhatItWasGiven)
{
    std::u32string text = U"before";
    mCommand.registerArgHandler(text, {}, text, text);
    text = U"after";
    mCommand.printHelp(U"before", mConsole, 0);
    EXPECT_EQ(log(), Lines({output("before"), output("before")}));
}

TEST_F(ConsoleCommandTest, RunsTheHandlerOfTheSubCommand)
{
    const ConsoleArgs* seenArgs = nullptr;
    Console* seenConsole = nullptr;
    const auto note = [&](const ConsoleArgs& args, Console& console) {
        seenArgs = &args;
        seenConsole = &console;
    };
    mCommand.registerArgHandler(U"go", note, U"", U"");
    const ConsoleArgs args({U"cmd", U"go", U"more"});
    EXPECT_TRUE(mCommand.executeArgHandler(args, mConsole));
    EXPECT_EQ(seenArgs, &args);
    EXPECT_EQ(seenConsole, &mConsole);
    EXPECT_EQ(log(), Lines());
}

TEST_F(ConsoleCommandTest, FindsAHandlerByItsWholeNameOnly)
{
    addWriter(U"list", "ran");
    for (const char32_t* const word : {U"lis", U"lists", U"List", U"", U" list", U"\"list\""}) {
        EXPECT_FALSE(mCommand.executeArgHandler(ConsoleArgs({U"cmd", word}), mConsole));
    }
    EXPECT_FALSE(mCommand.executeArgHandler(ConsoleArgs({U"list"}), mConsole));
    EXPECT_EQ(log(), Lines());
}

TEST_F(ConsoleCommandTest, ThrowsForAnEmptyHandler)
{
    mCommand.registerArgHandler(U"x", {}, U"", U"");
    EXPECT_THROW(mCommand.executeArgHandler(ConsoleArgs({U"cmd", U"x"}), mConsole), std::bad_function_call);
    EXPECT_THROW(mCommand.execute(ConsoleArgs({U"cmd", U"x"}), mConsole), std::bad_function_call);
}

TEST_F(ConsoleCommandTest, LetsAHandlersExceptionLeave)
{
    mCommand.registerArgHandler(
        U"x", [](const ConsoleArgs&, Console&) { throw std::runtime_error("no wind"); }, U"", U"");
    EXPECT_THROW(mCommand.execute(ConsoleArgs({U"cmd", U"x"}), mConsole), std::runtime_error);
}

TEST_F(ConsoleCommandTest, LetsAHandlerRegisterAnother)
{
    const auto registerOther = [this](const ConsoleArgs&, Console&) { addWriter(U"other", "ran"); };
    mCommand.registerArgHandler(U"x", registerOther, U"", U"");
    mCommand.execute(ConsoleArgs({U"cmd", U"x"}), mConsole);
    mCommand.execute(ConsoleArgs({U"cmd", U"other"}), mConsole);
    EXPECT_EQ(log(), Lines({output("ran")}));
}

TEST_F(ConsoleCommandTest, WritesNothingOfItsOwnWhereAHandlerRuns)
{
    addWriter(U"go", "gone");
    mCommand.execute(ConsoleArgs({U"cmd", U"go"}), mConsole);
    EXPECT_EQ(log(), Lines({output("gone")}));
}

TEST_F(ConsoleCommandTest, AsksAndListsItsArgumentsForAnUnknownSubCommand)
{
    add(U"path_list", U"Lists paths.");
    add(U"list", U"Lists files.");
    mCommand.execute(ConsoleArgs({U"cmd", U"other"}), mConsole);
    EXPECT_EQ(log(), Lines({kQuestion, output(""), output("list: Lists files.", 4), output(""),
                            output("path_list: Lists paths.", 4), output("")}));
}

TEST_F(ConsoleCommandTest, AsksForTheBareCommand)
{
    add(U"list", U"Lists files.");
    mCommand.execute(ConsoleArgs({U"cmd"}), mConsole);
    EXPECT_EQ(log(), Lines({kQuestion, output(""), output("list: Lists files.", 4), output("")}));
}

TEST_F(ConsoleCommandTest, OnlyAsksWhereThereIsNothingToList)
{
    mCommand.execute(ConsoleArgs({U"cmd"}), mConsole);
    EXPECT_EQ(log(), Lines({kQuestion, output("")}));
}

TEST_F(ConsoleCommandTest, RunsTheHandlerOfTheEmptyNameForTheBareCommand)
{
    addWriter(U"", "bare");
    mCommand.execute(ConsoleArgs({U"cmd"}), mConsole);
    mCommand.execute(ConsoleArgs({U"cmd", U""}), mConsole);
    EXPECT_EQ(log(), Lines({output("bare"), output("bare")}));
}

TEST_F(ConsoleCommandTest, PrintsItsArgumentsInOrderEachFollowedByAnEmptyLine)
{
    add(U"path_list", U"P");
    add(U"list", U"L");
    add(U"Z", U"capital");
    mCommand.printArguments(mConsole);
    EXPECT_EQ(log(), Lines({output("Z: capital", 4), output(""), output("list: L", 4), output(""),
                            output("path_list: P", 4), output("")}));
}

TEST_F(ConsoleCommandTest, PrintsNothingWithoutArguments)
{
    mCommand.printArguments(mConsole);
    EXPECT_EQ(log(), Lines());
}

TEST_F(ConsoleCommandTest, PrintsADefaultForAnEmptyDescription)
{
    add(U"x");
    mCommand.printArguments(mConsole);
    EXPECT_EQ(log(), Lines({output("x: (No Description Provided)", 4), output("")}));
}

TEST_F(ConsoleCommandTest, PrintsDescriptionAndHelpOfAnArgument)
{
    add(U"x", U"What it is.", U"Usage: cmd x");
    mCommand.printHelp(U"x", mConsole, 8);
    EXPECT_EQ(log(), Lines({output("What it is.", 8), output("Usage: cmd x", 8)}));
}

TEST_F(ConsoleCommandTest, PrintsHelpWithoutAnIndentToo)
{
    add(U"x", U"D", U"H");
    mCommand.printHelp(U"x", mConsole, 0);
    EXPECT_EQ(log(), Lines({output("D"), output("H")}));
}

TEST_F(ConsoleCommandTest, PrintsDefaultsForAnEmptyDescriptionAndHelp)
{
    add(U"x");
    mCommand.printHelp(U"x", mConsole, 4);
    EXPECT_EQ(log(), Lines({output("(No Description Provided)", 4), output("(No Help Text Provided)", 4)}));
}

TEST_F(ConsoleCommandTest, PrintsEachDefaultForItself)
{
    add(U"a", U"D");
    add(U"b", U"", U"H");
    mCommand.printHelp(U"a", mConsole, 1);
    mCommand.printHelp(U"b", mConsole, 2);
    EXPECT_EQ(log(), Lines({output("D", 1), output("(No Help Text Provided)", 1),
                            output("(No Description Provided)", 2), output("H", 2)}));
}

TEST_F(ConsoleCommandTest, AnswersAnUnknownArgumentAtIndentFourWhateverTheIndent)
{
    add(U"x", U"D", U"H");
    mCommand.printHelp(U"y", mConsole, 8);
    mCommand.printHelp(U"X", mConsole, 0);
    EXPECT_EQ(log(),
              Lines({output("'y' is not a valid argument.", 4), output("'X' is not a valid argument.", 4)}));
}

TEST_F(ConsoleCommandTest, AnswersTheEmptyArgumentToo)
{
    mCommand.printHelp(U"", mConsole, 4);
    EXPECT_EQ(log(), Lines({output("'' is not a valid argument.", 4)}));
}

TEST_F(ConsoleCommandTest, PrintsIncorrectUsageWithTheHelp)
{
    add(U"x", U"D", U"H");
    mCommand.printIncorrectUsage(U"x", mConsole, 8);
    EXPECT_EQ(log(), Lines({output("Invalid usage", 8), output("", 4), output("D", 8), output("H", 8)}));
}

TEST_F(ConsoleCommandTest, PrintsIncorrectUsageOfAnUnknownArgument)
{
    mCommand.printIncorrectUsage(U"y", mConsole, 2);
    EXPECT_EQ(log(),
              Lines({output("Invalid usage", 2), output("", 4), output("'y' is not a valid argument.", 4)}));
}

TEST_F(ConsoleCommandTest, PrintsAnUnrecognizedSwitchDirectlyAboveTheHelp)
{
    add(U"x", U"D", U"H");
    mCommand.printUnrecognizedSwitch(U"x", U"/fast", mConsole, 8);
    EXPECT_EQ(log(), Lines({output("Unrecognized switch '/fast'", 8), output("D", 8), output("H", 8)}));
}

TEST_F(ConsoleCommandTest, PrintsAnUnrecognizedSwitchOfAnUnknownArgument)
{
    mCommand.printUnrecognizedSwitch(U"y", U"", mConsole, 2);
    EXPECT_EQ(log(), Lines({output("Unrecognized switch ''", 2), output("'y' is not a valid argument.", 4)}));
}

TEST_F(ConsoleCommandTest, PrintsTextsAsTheyAre)
{
    add(U"<i>%1</i>", U"100 % <b>bold</b>\nsecond", U"\"%s\" &amp; \U0001F600");
    mCommand.printArguments(mConsole);
    mCommand.printHelp(U"<i>%1</i>", mConsole, 4);
    mCommand.printHelp(U"%n", mConsole, 4);
    mCommand.printUnrecognizedSwitch(U"%1", U"/%2<br>", mConsole, 0);
    EXPECT_EQ(log(),
              Lines({output("<i>%1</i>: 100 % <b>bold</b>\nsecond", 4), output(""),
                     output("100 % <b>bold</b>\nsecond", 4), output("\"%s\" &amp; \U0001F600", 4),
                     output("'%n' is not a valid argument.", 4), output("Unrecognized switch '/%2<br>'"),
                     output("'%1' is not a valid argument.", 4)}));
}

TEST_F(ConsoleCommandTest, KeepsCodePointsThatAreNoCharacters)
{
    const std::u32string odd = {U'\0', char32_t(0xD800), char32_t(0x110000), U'\uFFFF'};
    add(odd, odd, odd);
    mCommand.printArguments(mConsole);
    mCommand.printHelp(odd, mConsole, 0);
    const ConsoleSnapshot snapshot = mConsole.snapshot();
    ASSERT_EQ(snapshot.lines().size(), 6U);
    EXPECT_EQ(snapshot.lines()[2].text, U"    " + odd + U": " + odd);
    EXPECT_EQ(snapshot.lines()[4].text, odd);
    EXPECT_EQ(snapshot.lines()[5].text, odd);
}

TEST_F(ConsoleCommandTest, OffersNoCompletionsByDefault)
{
    add(U"list");
    EXPECT_EQ(mCommand.getAutoCompleteResults(ConsoleArgs({U"cmd", U"l"})), Names());
}

TEST(ConsoleCommandArguments, AreFoundThroughALine)
{
    Console console;
    auto command = std::make_unique<PlainCommand>();
    const auto write = [](const ConsoleArgs& args, Console& c) { c.writeIndented(args.arg(2), 4); };
    command->registerArgHandler(U"say", write, U"", U"");
    console.registerCommand(std::move(command));
    console.execute(U"cmd say hello");
    EXPECT_EQ(test::logLines(console), Lines({test::echo("cmd say hello"), output("hello", 4), output("")}));
}

} // namespace
} // namespace zephyr::console
