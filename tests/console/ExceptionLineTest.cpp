#include "zephyr/console/ExceptionLine.h"

#include "zephyr/console/ConsoleSnapshot.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace zephyr::console {
namespace {

TEST(ExceptionLine, SaysWhatTheExceptionSaysOnOneLine)
{
    EXPECT_EQ(exceptionLine(std::make_exception_ptr(std::runtime_error("no wind"))),
              U"The console caught an exception: no wind");
    EXPECT_EQ(exceptionLine(std::make_exception_ptr(std::runtime_error("a\nb\n"))),
              U"The console caught an exception: a b ");
    EXPECT_EQ(exceptionLine(std::make_exception_ptr(std::runtime_error("\xC3\xA4\xFF"))),
              U"The console caught an exception: \u00E4\uFFFD");
}

TEST(ExceptionLine, KnowsNothingOfWhatIsNoStandardException)
{
    EXPECT_EQ(exceptionLine(std::make_exception_ptr(42)),
              U"The console caught an exception: unknown exception");
}

TEST(ShownText, HasThePromptBeforeALineThatWasRun)
{
    EXPECT_EQ(shownText({U"help", Input, 0}), U">> help");
    EXPECT_EQ(shownText({U"    a", Output, 4}), U"    a");
    EXPECT_EQ(shownText({U"why", Prompt, 0}), U"why");
}

} // namespace
} // namespace zephyr::console
