#include "support/LogOf.h"
#include "zephyr/console/commands/Command.h"

#include <gtest/gtest.h>

namespace zephyr::console::commands {
namespace {

struct Lamp
{
    bool isOn() const { return true; }
    double watts() const { return 7.5; }
};

TEST(AnswerExample, WritesTwoLines)
{
    Console console;
    const Lamp lamp;
#include "Answer.inc"
    EXPECT_EQ((std::vector<std::string>{"    The lamp is on,", "    at 7.5 W."}),
              test::textsOf(test::answer(U"lamp", console)));
}

} // namespace
} // namespace zephyr::console::commands
