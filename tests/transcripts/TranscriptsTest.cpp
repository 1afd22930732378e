// Runs console files with hostile content, and compares the log with the file beside each.

#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace zephyr::test {
namespace {

namespace fs = std::filesystem;
using console::Console;
using console::ConsoleArgs;

std::vector<fs::path> consoleFiles()
{
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(TRANSCRIPTS)) {
        if (entry.path().extension() == ".console") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string bytesOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// `text` with control characters escaped as in C, so that a transcript is a text file.
std::string printable(const std::string& text)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            result.append("\\x").append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
        } else {
            result += c;
        }
    }
    return result;
}

/// The log, one entry a line: the first letter of its type, its indent and its text.
std::string transcript(const Console& console)
{
    constexpr char kTypes[] = {'I', 'O', 'P'};
    std::ostringstream stream;
    for (const LogLine& line : logLines(console)) {
        stream << kTypes[line.type] << ' ' << line.indent << ' ' << printable(line.text) << '\n';
    }
    return stream.str();
}

/// A console with a command `say`, which writes each of its words after its number.
class Speaker
{
public:
    Speaker()
    {
        addCommand(mConsole, U"say").onExecute = [](const ConsoleArgs& args, Console& console) {
            for (unsigned i = 0; i < args.argCount(); ++i) {
                console.write(std::to_string(i) + ": " + StringUtil::toString(args.arg(i)), console::Output);
            }
        };
    }

    Console& console() { return mConsole; }

private:
    Console mConsole;
};

class Transcript : public testing::TestWithParam<fs::path>
{};

TEST_P(Transcript, IsWhatTheFileLeavesInTheLog)
{
    Speaker speaker;
    ASSERT_TRUE(speaker.console().runFile(GetParam()));
    fs::path expected = GetParam();
    EXPECT_EQ(transcript(speaker.console()), bytesOf(expected.replace_extension(".log")));
}

INSTANTIATE_TEST_SUITE_P(Files, Transcript, testing::ValuesIn(consoleFiles()),
                         [](const auto& file) { return file.param.stem().string(); });

TEST(LargeConsoleFile, MayHaveALineOfTenMillionCodePoints)
{
    constexpr std::size_t kLength = 10'000'000;
    const TemporaryDirectory directory;
    const std::string word(kLength, 'x');
    Speaker speaker;
    ASSERT_TRUE(speaker.console().runFile(directory.write("long.console", "say " + word + "\nsay after\n")));
    const std::vector<LogLine> log = logLines(speaker.console());
    ASSERT_EQ(log.size(), 8U);
    EXPECT_TRUE(log[0] == echo("say " + word));
    EXPECT_TRUE(log[2] == output("1: " + word));
    EXPECT_EQ(log[6], output("1: after"));
}

TEST(LargeConsoleFile, MayHaveALineOfAHundredThousandWords)
{
    constexpr unsigned kWords = 100'000;
    const TemporaryDirectory directory;
    std::string line = "count";
    for (unsigned i = 1; i < kWords; ++i) {
        line += " w" + std::to_string(i);
    }
    Console console;
    std::vector<std::u32string> seen;
    addCommand(console, U"count").onExecute = [&seen](const ConsoleArgs& args, Console&) {
        seen = wordsOf(args);
    };
    ASSERT_TRUE(console.runFile(directory.write("words.console", line)));
    ASSERT_EQ(seen.size(), kWords);
    EXPECT_EQ(seen.back(), U"w99999");
}

} // namespace
} // namespace zephyr::test
