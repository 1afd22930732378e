// Mistakes of a program, which throw when a command is added.

#include "commands/CommandsFixture.h"

#include <functional>
#include <stdexcept>

namespace zephyr::test {
namespace {

using namespace console::commands;

/// What `mistake` throws, or nothing.
std::string complaintAbout(const std::function<void()>& mistake)
{
    try {
        mistake();
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return {};
}

const auto kTakesNumber = [](int) {};

std::string complaintAbout(const Parameter& parameter)
{
    return complaintAbout([&] { command(U"x", U"").run(kTakesNumber, parameter); });
}

TEST(CommandMistakes, AreNamesThatCantBeTyped)
{
    for (const char32_t* name : {U"", U"a b", U"a\"b", U"/a", U">", U">!", U"a\tb", U"a\u00A0b"}) {
        EXPECT_NE("", complaintAbout([&] { command(name, U""); })) << StringUtil::toString(name);
        EXPECT_NE("", complaintAbout(argument(name)));
    }
    EXPECT_EQ("a command can't be named 'a b'", complaintAbout([] { command(U"a b", U""); }));
    EXPECT_EQ("x: /a=b can't have an equals sign in its name", complaintAbout(option(U"a=b")));
}

TEST(CommandMistakes, AreNamesOfSubCommandsThatCantBeTyped)
{
    for (const char32_t* name : {U"a b", U"a\"b", U"/a", U">"}) {
        EXPECT_EQ("x: a sub-command can't be named '" + StringUtil::toString(name) + "'",
                  complaintAbout([&] { command(U"x", U"").sub(name, U"", [] {}); }));
    }
}

TEST(CommandMistakes, AreSubCommandsWithTheNameUnderWhichHelpDescribesTheCommand)
{
    EXPECT_EQ("x: a sub-command can't be named 'Usage', which heads the command's help",
              complaintAbout([] { command(U"x", U"").sub(U"Usage", U"", [] {}); }));
    EXPECT_EQ("", complaintAbout([] { command(U"x", U"").sub(U"usage", U"", [] {}); }));
}

TEST(CommandMistakes, NameTheCommandAndItsSubCommand)
{
    EXPECT_EQ("wind set: speed can't have a range from 3 to 1", complaintAbout([] {
                  command(U"wind", U"").sub(U"set", U"", [](int) {}, argument(U"speed").between(3, 1));
              }));
    EXPECT_EQ("wind: a parameter can't be named 'a b'",
              complaintAbout([] { command(U"wind", U"").run([](int) {}, argument(U"a b")); }));
}

TEST(CommandMistakes, AreLimitsThatTheTypeCantHave)
{
    EXPECT_EQ("x: n can't have the limit '0.5': it is no whole number",
              complaintAbout(argument(U"n").between(0.5, 3)));
    EXPECT_EQ("x: n can't have the choice 'a': it is no whole number",
              complaintAbout(argument(U"n").choices(1, U"a")));
    EXPECT_EQ("x: n can't have the limit '99999999999': 99999999999 is above 2147483647.",
              complaintAbout(argument(U"n").between(0, 99999999999)));
    EXPECT_EQ("x: the check of n is for another type",
              complaintAbout(argument(U"n").check([](double) { return true; }, U"")));
    EXPECT_EQ("x: n can't have the default 'x': it is no whole number",
              complaintAbout(argument(U"n").byDefault(U"x")));
    EXPECT_EQ("x: a default breaks its limits: n: 4 is above 3.",
              complaintAbout(argument(U"n").between(1, 3).byDefault(4)));
    EXPECT_EQ("x: n can't have a range from 3 to 1", complaintAbout(argument(U"n").between(3, 1)));
}

TEST(CommandMistakes, AreFormsThatTheTypeCantHave)
{
    EXPECT_EQ("x: /n is a flag, whose parameter must be a bool", complaintAbout(flag(U"n")));
    EXPECT_EQ("x: /n is an option, and can't take several words",
              complaintAbout([] { command(U"x", U"").run([](std::vector<int>) {}, option(U"n")); }));
    EXPECT_EQ("x: n has no use for a default", complaintAbout([] {
                  command(U"x", U"").run([](std::optional<int>) {}, argument(U"n").byDefault(1));
              }));
}

TEST(CommandMistakes, AreArgumentsBehindOnesThatMayBeMissing)
{
    const std::string complaint = "x: b stands behind an argument that may be missing, or takes all words";
    EXPECT_EQ(complaint, complaintAbout([] {
                  command(U"x", U"").run([](std::optional<int>, int) {}, argument(U"a"), argument(U"b"));
              }));
    EXPECT_EQ(complaint, complaintAbout([] {
                  command(U"x", U"").run([](std::vector<int>, std::optional<int>) {}, argument(U"a"),
                                         argument(U"b"));
              }));
    EXPECT_EQ("", complaintAbout([] {
                  command(U"x", U"").run([](std::optional<int>, int) {}, argument(U"a"), option(U"b"));
              }));
}

TEST(CommandMistakes, AreNamesGivenTwice)
{
    EXPECT_EQ("x: /a is described twice",
              complaintAbout([] { command(U"x", U"").run([](int, int) {}, option(U"a"), option(U"a")); }));
    EXPECT_EQ("x has two functions for 'a'",
              complaintAbout([] { command(U"x", U"").sub(U"a", U"", [] {}).sub(U"a", U"", [] {}); }));
}

} // namespace
} // namespace zephyr::test
