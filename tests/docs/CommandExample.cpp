#include "support/LogOf.h"
#include "zephyr/console/commands/Command.h"

#include <gtest/gtest.h>

namespace zephyr::console::commands {
namespace {

class Field
{
public:
    void setWind(double speed, std::optional<double>) { mSpeed = speed; }
    double speed() const { return mSpeed; }

private:
    double mSpeed = 0;
};

TEST(CommandExample, SetsAndShowsTheWind)
{
    Console console;
    Field field;
#include "Command.inc"
    console.execute(U"wind set 7.5 /heading=3");
    EXPECT_EQ((std::vector<std::string>{"    Wind: 7.5 m/s"}),
              test::textsOf(test::answer(U"wind show", console)));
}

} // namespace
} // namespace zephyr::console::commands
