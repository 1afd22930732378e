#include "CommandTable.h"

#include "support/ScriptedCommand.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using Names = std::vector<std::u32string>;
using Life = std::weak_ptr<void>;

/// A command that tells by its life whether it is still there.
class Mortal : public test::ScriptedCommand
{
public:
    explicit Mortal(const std::u32string& name) : ScriptedCommand(name) {}

    Life life() const { return mLife; }

private:
    std::shared_ptr<int> mLife = std::make_shared<int>();
};

class CommandTables : public testing::Test
{
protected:
    Life add(const std::u32string& name)
    {
        auto command = std::make_unique<Mortal>(name);
        Life life = command->life();
        mTable.add(name, std::move(command));
        return life;
    }

    const ConsoleCommand& at(const std::u32string& name) const { return *mTable.find(name); }

    CommandTable mTable;
};

TEST_F(CommandTables, FindExactNamesOnly)
{
    add(U"wind");
    EXPECT_NE(mTable.find(U"wind"), nullptr);
    EXPECT_EQ(mTable.find(U"win"), nullptr);
    EXPECT_EQ(mTable.find(U"Wind"), nullptr);
    EXPECT_EQ(mTable.find(U""), nullptr);
}

TEST_F(CommandTables, DestroyACommandAtOnceThatIsReplaced)
{
    const Life first = add(U"wind");
    const Life second = add(U"wind");
    EXPECT_TRUE(first.expired());
    EXPECT_FALSE(second.expired());
}

TEST_F(CommandTables, DestroyEveryCommandAtOnceThatIsCleared)
{
    const Life wind = add(U"wind");
    const Life rain = add(U"rain");
    mTable.clear();
    EXPECT_TRUE(wind.expired());
    EXPECT_TRUE(rain.expired());
    EXPECT_EQ(mTable.find(U"wind"), nullptr);
}

TEST_F(CommandTables, KeepACalledCommandUntilItsCallEnds)
{
    const Life wind = add(U"wind");
    const Life rain = add(U"rain");
    {
        const CommandTable::Call call(mTable, at(U"wind"));
        mTable.clear();
        EXPECT_FALSE(wind.expired());
        EXPECT_TRUE(rain.expired());
    }
    EXPECT_TRUE(wind.expired());
}

TEST_F(CommandTables, KeepACommandUntilTheOutermostOfItsCallsEnds)
{
    const Life wind = add(U"wind");
    add(U"rain");
    {
        const CommandTable::Call outer(mTable, at(U"wind"));
        {
            const CommandTable::Call between(mTable, at(U"rain"));
            const CommandTable::Call inner(mTable, at(U"wind"));
            add(U"wind");
        }
        EXPECT_FALSE(wind.expired());
    }
    EXPECT_TRUE(wind.expired());
}

TEST_F(CommandTables, DestroyACommandWhenItsOwnCallEndsNotWhenAnOuterOneDoes)
{
    add(U"wind");
    const Life rain = add(U"rain");
    const CommandTable::Call outer(mTable, at(U"wind"));
    {
        const CommandTable::Call inner(mTable, at(U"rain"));
        add(U"rain");
        EXPECT_FALSE(rain.expired());
    }
    EXPECT_TRUE(rain.expired());
}

TEST_F(CommandTables, DestroyACommandWhoseCallEndsByAnException)
{
    const Life wind = add(U"wind");
    const auto run = [this] {
        const CommandTable::Call call(mTable, at(U"wind"));
        mTable.clear();
        throw std::runtime_error("no wind");
    };
    EXPECT_THROW(run(), std::runtime_error);
    EXPECT_TRUE(wind.expired());
}

TEST_F(CommandTables, KeepTheNewCommandWhereTheOldOneIsStillCalled)
{
    add(U"wind");
    Life second;
    {
        const CommandTable::Call call(mTable, at(U"wind"));
        second = add(U"wind");
        const CommandTable::Call next(mTable, at(U"wind"));
    }
    EXPECT_FALSE(second.expired());
    mTable.clear();
    EXPECT_TRUE(second.expired());
}

TEST_F(CommandTables, VisitCommandsInOrderOfTheirNames)
{
    for (const char32_t* name : {U"b", U"Z", U"a", U"ab"}) {
        add(name);
    }
    Names names;
    mTable.forEach([&](const ConsoleCommand& command) { names.push_back(command.name()); });
    EXPECT_EQ(names, (Names{U"Z", U"a", U"ab", U"b"}));
}

TEST_F(CommandTables, VisitWhatIsThereWhenItsTurnComes)
{
    for (const char32_t* name : {U"a", U"c", U"d", U"e", U"f"}) {
        add(name);
    }
    Names names;
    mTable.forEach([&](const ConsoleCommand& command) {
        names.push_back(command.name());
        if (names.back() == U"a") {
            add(U"b");
            add(U"Z");
        } else if (names.back() == U"b") {
            mTable.remove(U"b");
            mTable.remove(U"c");
        } else if (names.back() == U"d") {
            add(U"d");
            add(U"e");
        } else if (names.back() == U"e") {
            mTable.remove(U"f");
            add(U"g");
        }
    });
    EXPECT_EQ(names, (Names{U"a", U"b", U"d", U"e", U"g"}));
}

TEST_F(CommandTables, KeepTheVisitedCommandUntilItsVisitEnds)
{
    const Life a = add(U"a");
    const Life b = add(U"b");
    Names names;
    mTable.forEach([&](const ConsoleCommand& command) {
        names.push_back(command.name());
        if (names.size() == 1) {
            mTable.clear();
            add(U"c");
            EXPECT_FALSE(a.expired());
            EXPECT_TRUE(b.expired());
            EXPECT_EQ(command.name(), U"a");
        } else {
            EXPECT_TRUE(a.expired());
        }
    });
    EXPECT_EQ(names, (Names{U"a", U"c"}));
}

TEST_F(CommandTables, AskTheNamedCommandForCandidates)
{
    auto command = std::make_unique<test::ScriptedCommand>(U"cmd");
    command->onComplete = [](const ConsoleArgs& args) { return test::wordsOf(args); };
    mTable.add(U"cmd", std::move(command));
    EXPECT_EQ(mTable.candidates({U"cmd", U"a"}, false), (std::optional(Names{U"cmd", U"a"})));
    EXPECT_EQ(mTable.candidates({U"other", U"a"}, false), std::nullopt);
    EXPECT_EQ(mTable.candidates({}, false), std::nullopt);
}

} // namespace
} // namespace zephyr::console
