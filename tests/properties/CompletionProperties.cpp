#include "Generators.h"
#include "support/ConsoleDriver.h"
#include "support/ScriptedCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

namespace zephyr::console {
namespace {

using Texts = std::vector<std::string>;

std::vector<std::u32string> inCodePoints(const Texts& texts)
{
    std::vector<std::u32string> converted;
    for (const std::string& text : texts) {
        converted.push_back(StringUtil::toU32String(text));
    }
    return converted;
}

Texts someCandidates()
{
    return *rc::gen::nonEmpty(
        rc::gen::container<Texts>(test::textOf(test::with(test::kPlainCharacters, {" ", "\"", ">"}))));
}

RC_GTEST_PROP(CompletionProperties, TabAndBacktabStepAroundTheCandidates, (std::vector<bool> steps))
{
    const Texts candidates = someCandidates();
    Console console;
    test::addCompletingCommand(console, U"cmd", inCodePoints(candidates));
    console.open();
    test::ConsoleDriver driver(console);
    const Texts kept =
        *rc::gen::resize(10, rc::gen::container<Texts>(test::someTextOf(test::kPlainCharacters)));
    const std::string line = "cmd " + test::joined(kept, " ") + (kept.empty() ? "" : " ");
    driver.type(line + *test::textOf(test::kPlainCharacters));

    const std::size_t count = candidates.size();
    std::size_t at = count; // before the first step
    for (const bool backwards : steps) {
        const bool isFirst = at == count;
        at = backwards ? (isFirst || at == 0 ? count : at) - 1 : (isFirst ? 0 : (at + 1) % count);
        RC_ASSERT(driver.press(backwards ? Qt::Key_Backtab : Qt::Key_Tab) == !isFirst);
        RC_ASSERT(driver.input() == line + candidates[at]);
        RC_ASSERT(console.cursorPosition() == console.activeInput().size());
    }
}

RC_GTEST_PROP(CompletionProperties, AWholeRoundLeadsBackToTheFirstCandidate, ())
{
    const Texts candidates = someCandidates();
    Console console;
    test::addCompletingCommand(console, U"cmd", inCodePoints(candidates));
    console.open();
    test::ConsoleDriver driver(console);
    driver.type("cmd ");
    driver.press(Qt::Key_Tab);
    const std::string first = driver.input();
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        driver.press(Qt::Key_Tab);
    }
    RC_ASSERT(driver.input() == first);
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        driver.press(Qt::Key_Backtab);
    }
    RC_ASSERT(driver.input() == first);
}

} // namespace
} // namespace zephyr::console
