// Runs commands made of functions with any words, and completes their lines.

#include "Require.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Command.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zephyr::fuzz {
namespace {

using console::Console;
using namespace console::commands;

/// Whether each function that runs was given what its parameters promise.
struct Ran
{
    int times = 0;
};

void addCommands(Console& console, Ran& ran)
{
    add(console,
        command(U"c", U"Takes words.")
            .run(
                [&ran](double number, std::optional<std::int8_t> small, bool flag,
                       std::vector<char32_t> rest) {
                    require(number >= -1 && number <= 1.5, "a number lies in its range");
                    require(!small || *small == 3 || *small == -7, "a number is a choice");
                    ++ran.times;
                    return rest.size() + (flag ? 1U : 0U);
                },
                argument(U"number").between(-1, 1.5), option(U"small").choices(3, -7), flag(U"flag"))
            .sub(
                U"s", U"Waits.",
                [&ran](std::chrono::milliseconds time, std::u32string text, std::optional<std::string> more) {
                    require(time.count() >= 0 && time.count() <= 60000, "a duration lies in its range");
                    require(text.find(U'"') == text.npos, "quotes are gone");
                    ++ran.times;
                    return more;
                },
                argument(U"time").between(std::chrono::seconds(0), std::chrono::minutes(1))));
}

std::u32string line(FuzzedDataProvider& data)
{
    const char* const kParts[] = {"c", "s",  " ",   "\"",   "/",  "=",   "/small=", "/flag",
                                  "3", "-7", "1.5", "1e-3", "ms", "min", "nan",     "inf",
                                  ">", "0",  "9",   "-",    ".",  "x",   "\xC3\xA9"};
    std::u32string text = U"c ";
    for (int count = data.ConsumeIntegralInRange(0, 24); count > 0; --count) {
        text += data.ConsumeIntegralInRange(0, 7) == 0
                    ? std::u32string(1, data.ConsumeIntegral<std::uint32_t>())
                    : StringUtil::toU32String(data.PickValueInArray(kParts));
    }
    return text;
}

/// Tab must leave what stands before the last blank as it is.
void complete(Console& console, const std::u32string& typed)
{
    std::vector<std::u32string> words{U"c"};
    for (const char32_t c : typed.substr(2)) {
        if (c == U' ' || words.size() == 1) {
            words.emplace_back();
        }
        if (c != U' ') {
            words.back() += c;
        }
    }
    const bool endsWithBlank = typed.back() == U' ';
    if (endsWithBlank) {
        words.pop_back();
    }
    console::ConsoleCommand* const command = console.lookupCommand(U"c");
    for (const std::u32string& candidate :
         command->getAutoCompleteResults(console::ConsoleArgs(words, endsWithBlank))) {
        require(!candidate.empty(), "a candidate adds to the line");
    }
}

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace zephyr;
    FuzzedDataProvider data(bytes, size);
    console::Console console;
    fuzz::Ran ran;
    fuzz::addCommands(console, ran);
    const std::u32string line = fuzz::line(data);
    fuzz::complete(console, line);
    if (line.find(U'>') == line.npos) { // no file is written
        const console::commands::FailureCounter failures(console);
        console.execute(line);
        fuzz::require(ran.times + static_cast<int>(failures.count()) == 1,
                      "a command runs, or says what is wrong");
    }
    return 0;
}
