#include "terminal/EntryPrinter.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

namespace zephyr::console::remote {
namespace {

struct Close
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

/// A pseudo-terminal, of which this process has both ends.
class Terminal
{
public:
    Terminal()
    {
        int program = -1;
        EXPECT_EQ(0, ::openpty(&mScreen, &program, nullptr, nullptr, nullptr));
        mProgram.reset(::fdopen(program, "w"));
    }

    ~Terminal() { ::close(mScreen); }

    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    std::FILE* stream() const { return mProgram.get(); }

    /// What came to the screen since the last call.
    std::string seen() const
    {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::read(mScreen, bytes.data(), bytes.size());
        return {bytes.data(), static_cast<std::size_t>(count > 0 ? count : 0)};
    }

private:
    int mScreen = -1;
    File mProgram;
};

/// What comes to a terminal for an entry whose text is "a\x1b[2J" in the environment as it is.
std::string shownInTerminal(Entry::Type type)
{
    const Terminal terminal;
    EntryPrinter printer(terminal.stream());
    EXPECT_TRUE(printer.print({0, type, "a\x1b[2J"}));
    return terminal.seen();
}

TEST(HarmlessText, ShowsControlCharacters)
{
    EXPECT_EQ("a\tb\nc", harmless("a\tb\nc"));
    EXPECT_EQ("^@^M^[^_^?", harmless(QString(QChar(0)) + "\r\x1b\x1f\x7f"));
    EXPECT_EQ(QString::fromUtf8("\ufffd\ufffd\u00a0\u00e9\U0001F32C"),
              harmless(QString::fromUtf8("\u0080\u009f\u00a0\u00e9\U0001F32C")));
}

TEST(EntryPrinter, PrintsWhatTheLogHasToAFile)
{
    const test::TemporaryDirectory folder;
    {
        const File file(std::fopen((folder.path() / "log").c_str(), "w"));
        EntryPrinter printer(file.get());
        EXPECT_TRUE(printer.print({0, Entry::Type::Input, "a\x1b[1m"}));
        EXPECT_TRUE(printer.print({1, Entry::Type::Output, QString::fromUtf8("\u00e9\nx\u009b")}));
    }
    EXPECT_EQ(">> a\x1b[1m\n\u00e9\nx\u009b\n", folder.read("log"));
}

TEST(EntryPrinter, PrintsColoursAndNoControlCharactersToATerminal)
{
    qputenv("TERM", "xterm");
    qunsetenv("NO_COLOR");
    EXPECT_EQ("\x1b[1m>> a^[[2J\x1b[0m\r\n", shownInTerminal(Entry::Type::Input));
    EXPECT_EQ("\x1b[33ma^[[2J\x1b[0m\r\n", shownInTerminal(Entry::Type::Prompt));
    EXPECT_EQ("a^[[2J\r\n", shownInTerminal(Entry::Type::Output));
}

TEST(EntryPrinter, PrintsNoColoursToWhoWantsNone)
{
    qputenv("TERM", "xterm");
    qputenv("NO_COLOR", "0");
    EXPECT_EQ(">> a^[[2J\r\n", shownInTerminal(Entry::Type::Input));
    qputenv("NO_COLOR", "");
    EXPECT_EQ("\x1b[1m>> a^[[2J\x1b[0m\r\n", shownInTerminal(Entry::Type::Input));
    qputenv("TERM", "dumb");
    EXPECT_EQ(">> a^[[2J\r\n", shownInTerminal(Entry::Type::Input));
}

TEST(EntryPrinter, TellsWhenTheStreamTakesNoMore)
{
    const File full(std::fopen("/dev/full", "w"));
    EXPECT_FALSE(EntryPrinter(full.get()).print({0, Entry::Type::Output, "a"}));
}

} // namespace
} // namespace zephyr::console::remote
