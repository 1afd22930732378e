#include "OffersFixture.h"

#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

using Candidates = std::vector<std::u32string>;

/// A command `cmd` whose completion is the test's. It has a life, so that a use after its end would be seen.
class HostCode : public OffersFixture
{
protected:
    void complete(std::function<Candidates()> completion)
    {
        test::addCommand(console, U"cmd").onComplete =
            [life = std::make_shared<int>(1), completion = std::move(completion)](const ConsoleArgs&) {
                Candidates candidates = completion();
                candidates.resize(candidates.size() + static_cast<std::size_t>(*life) - 1);
                return candidates;
            };
    }

    /// Types, completes and picks with a completion that calls `change` each time.
    void survive(const std::function<void()>& change)
    {
        for (const bool byTab : {false, true}) {
            complete([&change] {
                change();
                return Candidates{U"a", U"b"};
            });
            console.open();
            offers.update(console);
            type(byTab ? "cmd" : "cmd ");
            byTab ? tab() : type("x");
            tab();
            backtab();
            pick(0);
            press(Qt::Key_Up);
            tab();
            type("help");
            offers.update(console);
        }
    }
};

TEST_F(HostCode, ThatThrowsOffersNothingAndTypingGoesOn)
{
    complete([]() -> Candidates { throw std::runtime_error("no"); });
    type("cmd abc");
    EXPECT_EQ("cmd abc", line());
    EXPECT_EQ(Texts{}, list());
    EXPECT_TRUE(caught.empty()) << "nothing is reported for keys that only type";
    complete([]() -> Candidates { throw 42; });
    type("d");
    EXPECT_EQ("cmd abcd", line());
    complete([] { return Candidates{U"a"}; });
    type("e");
    EXPECT_EQ(Texts{"a"}, list()) << "the failure is not remembered";
}

TEST_F(HostCode, ThatThrowsAtTabIsReportedAsBefore)
{
    complete([]() -> Candidates { throw std::runtime_error("no"); });
    type("cmd x");
    tab();
    EXPECT_EQ("cmd x", line());
    EXPECT_EQ(1, caught.size());
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    tab();
    EXPECT_EQ("cmd", line());
    EXPECT_EQ(2, caught.size());
    EXPECT_EQ(Texts{"cmd"}, list());
}

TEST_F(HostCode, ThatAnswersTheConsoleOtherwiseThanTheListSelectsNothing)
{
    int calls = 0;
    complete([&] { return Candidates{std::u32string(static_cast<std::size_t>(++calls), U'x')}; });
    type("cmd ");
    tab();
    EXPECT_EQ("cmd xx", line());
    EXPECT_EQ(Texts{}, list());
    tab();
    EXPECT_EQ("cmd xx", line());
    complete([] { return Candidates{U"a"}; });
    type("y");
    tab();
    EXPECT_EQ("a", selected());
}

TEST_F(HostCode, ThatForgetsAnAnswerAfterTheListIsAskedAgain)
{
    int calls = 0;
    complete([&] { return ++calls == 1 ? Candidates{} : Candidates{U"a", U"b"}; });
    type("cmd ");
    EXPECT_EQ(Texts{}, list());
    tab();
    EXPECT_EQ("cmd a", line());
    EXPECT_EQ((Texts{"a", "b"}), list());
    EXPECT_EQ("a", selected());
}

TEST_F(HostCode, MayRemoveItsCommand)
{
    survive([this] { console.unregisterCommand(U"cmd"); });
}

TEST_F(HostCode, MayReplaceItsCommand)
{
    survive([this] { test::addCommand(console, U"cmd"); });
}

TEST_F(HostCode, MayRegisterCommands)
{
    int number = 0;
    survive([&] {
        test::addCommand(console, U"cmd" + std::u32string(static_cast<std::size_t>(++number), U'z'));
    });
}

TEST_F(HostCode, MayShutTheConsoleDown)
{
    survive([this] { console.shutdown(); });
}

TEST_F(HostCode, MayCloseTheConsole)
{
    survive([this] { console.close(); });
    EXPECT_EQ(Texts{}, list());
}

TEST_F(HostCode, MayOpenTheConsole)
{
    survive([this] { console.open(); });
}

TEST_F(HostCode, MayRunALine)
{
    survive([this] { console.execute(U"alias a \"help\""); });
}

TEST_F(HostCode, MayTypeIntoTheConsole)
{
    survive([this] { console.keyPressed(0, Qt::NoModifier, U"z"); });
}

TEST_F(HostCode, MayPressKeysThroughTheOffers)
{
    bool isInside = false;
    survive([&] {
        if (!std::exchange(isInside, true)) {
            type("z");
            tab();
            press(Qt::Key_Return);
            offers.update(console);
            pick(0);
            offers.dismiss();
        }
        isInside = false;
    });
}

TEST_F(HostCode, ThatChangesTheLineLeavesNoListForTheOneBefore)
{
    complete([this] {
        console.keyPressed(0, Qt::NoModifier, U"z");
        return Candidates{U"a"};
    });
    type("cmd ");
    EXPECT_EQ("cmd z", line());
    EXPECT_EQ(Texts{}, list());
}

TEST_F(HostCode, OfACommandsNameMayThrow)
{
    class Named : public ConsoleCommand
    {
    public:
        std::u32string name() const override { return mThrows ? throw 42 : std::u32string(U"named"); }
        bool mThrows = false;
    };
    auto command = std::make_unique<Named>();
    Named& named = *command;
    console.registerCommand(std::move(command));
    named.mThrows = true;
    type("n");
    tab();
    EXPECT_EQ("n", line());
    EXPECT_TRUE(caught.empty());
}

TEST_F(HostCode, ThatWritesIsFollowedByAnUpdateInVain)
{
    console.setObserver([this] { offers.update(console); });
    complete([this] {
        console.write(U"working", Output);
        return Candidates{U"a"};
    });
    type("cmd ");
    EXPECT_EQ(Texts{"a"}, list());
    tab();
    EXPECT_EQ("cmd a", line());
    EXPECT_EQ("a", selected());
    console.setObserver({});
}

} // namespace
} // namespace zephyr::console::qt
