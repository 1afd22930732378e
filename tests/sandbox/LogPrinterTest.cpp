#include "sandbox/program/LogPrinter.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

namespace zephyr::test {
namespace {

/// The system's message, in the locale's language and encoding.
std::string diskFull() { return std::make_error_code(std::errc::no_space_on_device).message(); }

struct Closer
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using File = std::unique_ptr<std::FILE, Closer>;

File opened(const std::string& path) { return File(std::fopen(path.c_str(), "wb")); }

TEST(LogPrinter, PrintsEachLineOnceWithThePromptBeforeWhatWasTyped)
{
    const TemporaryDirectory directory;
    const File file = opened((directory.path() / "log").string());
    console::Console console;
    sandbox::LogPrinter printer(console, file.get());
    printer.printNew();
    EXPECT_EQ("Zephyr Console:\n\n", directory.read("log"));

    console.execute(U"alias");
    console.writeIndented(U"\u00fc\U0001F600", 2);
    printer.printNew();
    printer.printNew();
    EXPECT_EQ("Zephyr Console:\n\n>> alias\n    '' is not a valid argument.\n\n  \u00fc\U0001F600\n",
              directory.read("log"));
    EXPECT_EQ(std::nullopt, printer.error());
}

TEST(LogPrinter, SaysWhyItCantPrint)
{
    const File file = opened("/dev/full");
    console::Console console;
    sandbox::LogPrinter printer(console, file.get());
    printer.printNew();
    EXPECT_EQ(diskFull(), printer.error());
}

TEST(LogPrinter, PrintsALogOfAnyLengthInOrder)
{
    const TemporaryDirectory directory;
    const File file = opened((directory.path() / "log").string());
    console::Console console;
    std::string expected = "Zephyr Console:\n\n";
    for (int i = 0; i < 5000; ++i) {
        const std::string line = std::to_string(i);
        console.write(line, console::Output);
        expected += line + '\n';
    }
    sandbox::LogPrinter printer(console, file.get());
    printer.printNew();
    EXPECT_EQ(expected, directory.read("log"));
}

TEST(LogPrinter, PrintsEachLineAsItIsWrittenIfItObservesTheConsole)
{
    const TemporaryDirectory directory;
    const File file = opened((directory.path() / "log").string());
    console::Console console;
    sandbox::LogPrinter printer(console, file.get());
    console.setObserver([&] { printer.printNew(); });
    console.write(std::string("seen"), console::Output);
    EXPECT_EQ("Zephyr Console:\n\nseen\n", directory.read("log"));
}

} // namespace
} // namespace zephyr::test
