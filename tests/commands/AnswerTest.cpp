#include "commands/Wind.h"

#include <array>
#include <deque>
#include <stdexcept>

namespace zephyr::test {
namespace {

using namespace console::commands;

using CommandAnswers = WindFixture;

TEST_F(CommandAnswers, AreStreamedLines)
{
    EXPECT_EQ((Lines{output("Wind: 12 m/s", 4)}), answer(U"wind show"));
    add(mConsole, U"say", U"", [](Answer& answer) {
        answer << "a " << 1 << U" b " << std::string("\u00E9") << '\n' << true << '\n';
        answer << "\n" << Mode::Gusty << std::u32string(U" end") << 'x' << 0.5F;
    });
    EXPECT_EQ(Texts({"    a 1 b \u00E9", "    on", "    ", "    gusty endx0.5"}), textsOfAnswer("say"));
}

TEST_F(CommandAnswers, StandInTheLogAsSoonAsTheirLineEnds)
{
    std::size_t seen = 0;
    add(mConsole, U"say", U"", [&](Answer& answer, console::Console& console) {
        const std::size_t before = console.logSize();
        answer << "one\ntwo";
        seen = console.logSize() - before;
    });
    textsOfAnswer("say");
    EXPECT_EQ(1U, seen);
}

TEST_F(CommandAnswers, AreWhatAFunctionReturns)
{
    add(mConsole, U"text", U"", [] { return "a text"; });
    add(mConsole, U"text32", U"", [] { return std::u32string(U"wide"); });
    add(mConsole, U"number", U"", [] { return 0.1; });
    add(mConsole, U"mode", U"", [] { return Mode::Still; });
    add(mConsole, U"some", U"", [](bool isThere) { return isThere ? std::optional<int>(3) : std::nullopt; });
    EXPECT_EQ(Texts({"    a text"}), textsOfAnswer("text"));
    EXPECT_EQ(Texts({"    wide"}), textsOfAnswer("text32"));
    EXPECT_EQ(Texts({"    0.1"}), textsOfAnswer("number"));
    EXPECT_EQ(Texts({"    still"}), textsOfAnswer("mode"));
    EXPECT_EQ(Texts({"    3"}), textsOfAnswer("some on"));
    EXPECT_EQ(Texts(), textsOfAnswer("some off"));
}

TEST_F(CommandAnswers, HaveALineForEachElementOfARange)
{
    add(mConsole, U"numbers", U"", [] { return std::vector<int>{1, 2}; });
    add(mConsole, U"texts", U"", [] { return std::deque<std::string>{"a", "b"}; });
    add(mConsole, U"flags", U"", [] { return std::array<bool, 2>{true, false}; });
    EXPECT_EQ(Texts({"    1", "    2"}), textsOfAnswer("numbers"));
    EXPECT_EQ(Texts({"    a", "    b"}), textsOfAnswer("texts"));
    EXPECT_EQ(Texts({"    on", "    off"}), textsOfAnswer("flags"));
}

TEST_F(CommandAnswers, AreCompleteWhenAnExceptionLeaves)
{
    add(mConsole, U"throw", U"", [](Answer& answer) {
        answer << "so far";
        throw std::logic_error("a mistake");
    });
    EXPECT_THROW(mConsole.execute(U"throw"), std::logic_error);
    EXPECT_EQ("    so far", log().back().text);
}

} // namespace
} // namespace zephyr::test
