#include "commands/Wind.h"

#include <chrono>
#include <clocale>
#include <cstdint>
#include <limits>

namespace zephyr::test {

/// A type of a host's own, with an order and candidates of its own.
struct Grade
{
    int points;
    friend bool operator<(const Grade& left, const Grade& right) { return left.points < right.points; }
};

} // namespace zephyr::test

namespace zephyr::console::commands {

template <>
struct Value<test::Grade>
{
    static constexpr std::u32string_view kName = U"grade";

    static std::optional<test::Grade> read(const std::u32string& text)
    {
        if (text == U"z") {
            fail(U"there is no z.");
        }
        return text.size() == 1 && text[0] >= U'a' && text[0] <= U'f'
                   ? std::optional(test::Grade{static_cast<int>(text[0] - U'a')})
                   : std::nullopt;
    }

    static std::u32string write(const test::Grade& grade)
    {
        return std::u32string(1, U'a' + static_cast<char32_t>(grade.points));
    }

    static std::vector<std::u32string> candidates() { return {U"a", U"b", U"c"}; }
};

} // namespace zephyr::console::commands

namespace zephyr::test {
namespace {

using namespace console::commands;
using namespace std::chrono_literals;

class CommandValues : public CommandsFixture
{
protected:
    /// What a parameter of the type T makes of `word`, written again, or the answer.
    template <typename T>
    std::string read(const std::string& word)
    {
        add(
            mConsole, U"read", U"", [](const T& value) { return Value<T>::write(value); },
            argument(U"value"));
        const Texts answer = textsOfAnswer("read " + word);
        return answer.empty() ? "" : answer.front().substr(4);
    }
};

TEST_F(CommandValues, OfBool)
{
    for (const char* word : {"on", "true", "1"}) {
        EXPECT_EQ("on", read<bool>(word));
    }
    for (const char* word : {"off", "false", "0"}) {
        EXPECT_EQ("off", read<bool>(word));
    }
    EXPECT_EQ("value: 'On' is not on or off.", read<bool>("On"));
    EXPECT_EQ("value: '2' is not on or off.", read<bool>("2"));
}

template <typename T>
class CommandIntegers : public CommandValues
{};

using Integers = testing::Types<signed char, unsigned char, short, unsigned short, int, unsigned, long,
                                unsigned long, long long, unsigned long long>;
TYPED_TEST_SUITE(CommandIntegers, Integers);

TYPED_TEST(CommandIntegers, AreReadUpToTheirLimitsAndNotBeyond)
{
    using Limits = std::numeric_limits<TypeParam>;
    const std::string lowest = std::to_string(Limits::min());
    const std::string highest = std::to_string(Limits::max());
    EXPECT_EQ(lowest, this->template read<TypeParam>(lowest));
    EXPECT_EQ(highest, this->template read<TypeParam>(highest));
    EXPECT_EQ("value: " + highest + "0 is above " + highest + ".",
              this->template read<TypeParam>(highest + "0"));
    const std::string below = Limits::min() == 0 ? "-1" : lowest + "0";
    EXPECT_EQ("value: " + below + " is below " + lowest + ".", this->template read<TypeParam>(below));
    for (const char* word : {"", "1 ", "+1", "1x", "0x10", "1.5", "-", "\u0661"}) {
        const std::string quotedWord = std::string("\"") + word + "\"";
        EXPECT_EQ(std::string("value: '") + word + "' is not a whole number.",
                  this->template read<TypeParam>(quotedWord));
    }
}

TEST_F(CommandValues, OfFloatingPoint)
{
    EXPECT_EQ("0.1", read<double>("0.1"));
    EXPECT_EQ("1e+300", read<double>("1e300"));
    EXPECT_EQ("-0", read<double>("-0"));
    EXPECT_EQ("inf", read<double>("inf"));
    EXPECT_EQ("0.1", read<float>("0.1"));
    EXPECT_EQ("value: 1e39 is too large, or too close to zero, for a number.", read<float>("1e39"));
    EXPECT_EQ("value: '0,1' is not a number.", read<double>("0,1"));
}

TEST_F(CommandValues, OfTheLongestNumberTypeKeepEveryDigit)
{
    using Number = long double;
    EXPECT_EQ("0.1", read<Number>("0.1"));
    EXPECT_EQ(1 / 3.0L, Value<Number>::read(Value<Number>::write(1 / 3.0L)));
    const Number beyondDouble = 2 * static_cast<Number>(std::numeric_limits<double>::max());
    EXPECT_EQ(beyondDouble, Value<Number>::read(Value<Number>::write(beyondDouble)));
    EXPECT_EQ("value: 1e9999 is too large, or too close to zero, for a number.", read<Number>("1e9999"));
    add(mConsole, U"share", U"", [](Number) {}, argument(U"part").between(0, 1.0L / 3));
    EXPECT_EQ(Texts(), textsOfAnswer("share 0.3333"));
    EXPECT_EQ("    part: 0.34 is above " + StringUtil::toString(Value<Number>::write(1.0L / 3)) + ".",
              textsOfAnswer("share 0.34").front());
}

TEST_F(CommandValues, OfNumbersHaveNoExponentWherePeopleWriteNone)
{
    EXPECT_EQ("100000", read<double>("1e5"));
    EXPECT_EQ("0.0001", read<double>("1e-4"));
    EXPECT_EQ("1234567890123456", read<double>("1234567890123456"));
    EXPECT_EQ("1e+16", read<double>("1e16"));
    EXPECT_EQ("1e-06", read<double>("1e-6"));
    EXPECT_EQ("16777216", read<float>("16777216"));
    add(mConsole, U"count", U"", [](int) {}, argument(U"count").between(1, 1e6));
    EXPECT_EQ("    count: 1000001 is above 1000000.", textsOfAnswer("count 1000001").front());
}

TEST_F(CommandValues, OfNumbersAreTheSameInEveryLocale)
{
    const char* const old = std::setlocale(LC_ALL, nullptr);
    const std::string before = old == nullptr ? "C" : old;
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // where the system has it
    EXPECT_EQ("1.5", read<double>("1.5"));
    std::setlocale(LC_ALL, before.c_str());
}

TEST_F(CommandValues, OfText)
{
    EXPECT_EQ("\U0001F600", read<char32_t>("\U0001F600"));
    EXPECT_EQ("value: 'ab' is not a character.", read<char32_t>("ab"));
    EXPECT_EQ("a b", read<std::u32string>("\"a b\""));
    EXPECT_EQ("\u00E9", read<std::string>("\u00E9"));
    EXPECT_EQ("a/b c", read<std::filesystem::path>("\"a/b c\""));
}

TEST_F(CommandValues, OfEnumerationsAreNames)
{
    EXPECT_EQ("gusty", read<Mode>("gusty"));
    EXPECT_EQ("value: 'Gusty' is not steady, gusty or still.", read<Mode>("Gusty"));
}

TEST_F(CommandValues, OfDurations)
{
    using Milliseconds = std::chrono::milliseconds;
    EXPECT_EQ("250ms", read<Milliseconds>("250ms"));
    EXPECT_EQ("1500ms", read<Milliseconds>("1.5s"));
    EXPECT_EQ("100ms", read<Milliseconds>("0.1s"));
    EXPECT_EQ("120000ms", read<Milliseconds>("2min"));
    EXPECT_EQ("-3600000ms", read<Milliseconds>("-1h"));
    EXPECT_EQ("86400s", read<std::chrono::seconds>("1d"));
    EXPECT_EQ("2us", read<std::chrono::microseconds>("2000ns"));
    EXPECT_EQ("value: 1.5ms is not a multiple of 1ms.", read<Milliseconds>("1.5ms"));
    EXPECT_EQ("value: '5' is not a duration such as 250ms, 1.5s or 2min.", read<Milliseconds>("5"));
    EXPECT_EQ("value: '5sec' is not a duration such as 250ms, 1.5s or 2min.", read<Milliseconds>("5sec"));
    EXPECT_EQ("value: 'ms' is not a duration such as 250ms, 1.5s or 2min.", read<Milliseconds>("ms"));
    EXPECT_EQ("value: 300000000000d is above 9223372036854775807ns.",
              read<std::chrono::nanoseconds>("300000000000d"));
    EXPECT_EQ("1.5s", (read<std::chrono::duration<double>>("1500ms")));
    EXPECT_EQ("3[1/60]s", (read<std::chrono::duration<int, std::ratio<1, 60>>>("50ms")));
    EXPECT_EQ("7[1/60]s", (read<std::chrono::duration<int, std::ratio<1, 60>>>("7[1/60]s")));
}

TEST_F(CommandValues, OfDurationsHaveNumbersAsAnyNumberIsTyped)
{
    using Milliseconds = std::chrono::milliseconds;
    EXPECT_EQ("2000ms", read<Milliseconds>("2e3ms"));
    EXPECT_EQ("2000ms", read<Milliseconds>("2.0e3ms"));
    EXPECT_EQ("2000000ms", read<Milliseconds>("2e3s"));
    EXPECT_EQ("1ms", read<Milliseconds>("1e-3s"));
    EXPECT_EQ("-500ms", read<Milliseconds>("-.5s"));
    EXPECT_EQ("2000s", (read<std::chrono::duration<double>>("2e3s")));
    EXPECT_EQ("value: 1e-3ms is not a multiple of 1ms.", read<Milliseconds>("1e-3ms"));
    EXPECT_EQ("value: 2e30ms is above 9223372036854775807ms.", read<Milliseconds>("2e30ms"));
    EXPECT_EQ("value: '2ems' is not a duration such as 250ms, 1.5s or 2min.", read<Milliseconds>("2ems"));
    EXPECT_EQ("value: '+2ms' is not a duration such as 250ms, 1.5s or 2min.", read<Milliseconds>("+2ms"));
}

TEST_F(CommandValues, OfDurationsThatAreFractionsAreReadAsTheyWereWritten)
{
    using Seconds = std::chrono::duration<double>;
    EXPECT_EQ(421.448402927459, Value<Seconds>::read(U"421.448402927459s")->count());
    EXPECT_EQ("421.448402927459s", read<Seconds>("421.448402927459s"));
    EXPECT_EQ("value: 1e400 is too large, or too close to zero, for a number.", read<Seconds>("1e400s"));
    EXPECT_EQ("value: 1e39min is too large for a duration.", (read<std::chrono::duration<float>>("1e39min")));
    EXPECT_EQ("infs", read<Seconds>("infs"));
}

TEST_F(CommandValues, OfDurationsHaveRanges)
{
    add(mConsole, U"wait", U"", [](std::chrono::milliseconds) {}, argument(U"time").between(10ms, 1min));
    EXPECT_EQ("    time: 5ms is below 10ms.", textsOfAnswer("wait 5ms").front());
    EXPECT_EQ("    time: 61s is above 1min.", textsOfAnswer("wait 61s").front());
    EXPECT_EQ("    time: 'x' is not a duration from 10ms to 1min.", textsOfAnswer("wait x").front());
}

TEST_F(CommandValues, OfAHostsOwnType)
{
    EXPECT_EQ("b", read<Grade>("b"));
    EXPECT_EQ("value: 'x' is not a grade.", read<Grade>("x"));
    EXPECT_EQ("value: there is no z.", read<Grade>("z"));
    add(mConsole, U"pass", U"", [](Grade) {}, argument(U"grade").atMost(Grade{2}));
    EXPECT_EQ("    grade: d is above c.", textsOfAnswer("pass d").front());
    EXPECT_EQ(Texts({"pass a", "pass b", "pass c"}), completionsOf("pass "));
}

TEST_F(CommandValues, MayBeChoicesOfAType)
{
    add(mConsole, U"fps", U"", [](int) {}, argument(U"rate").choices(30, 60));
    EXPECT_EQ(Texts(), textsOfAnswer("fps 060"));
    EXPECT_EQ("    rate: '59' is not 30 or 60.", textsOfAnswer("fps 59").front());
    add(mConsole, U"team", U"", [](std::string) {}, argument(U"name").choices("red", "blue"));
    EXPECT_EQ("    name: 'Red' is not red or blue.", textsOfAnswer("team Red").front());
}

} // namespace
} // namespace zephyr::test
