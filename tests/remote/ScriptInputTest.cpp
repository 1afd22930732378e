#include "attach/ScriptInput.h"

#include "support/NamedPipe.h"
#include "support/SystemText.h"
#include "support/TemporaryDirectory.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace zephyr::attach {
namespace {

using console::remote::kMaxScriptLineBytes;
using console::remote::ScriptLine;
using test::waitUntil;

std::unique_ptr<QFile> opened(const std::filesystem::path& path)
{
    auto file = std::make_unique<QFile>(QString::fromStdString(path.string()));
    EXPECT_EQ(std::nullopt, console::remote::openScript(*file));
    return file;
}

/// The next line, once it has come.
std::optional<ScriptLine> nextOf(ScriptInput& input)
{
    bool isTaken = false;
    std::optional<ScriptLine> taken;
    input.next([&](const std::optional<ScriptLine>& line) {
        isTaken = true;
        taken = line;
    });
    waitUntil("a line is read", [&] { return isTaken; });
    return taken;
}

TEST(ScriptInput, HasTheLinesOfAText)
{
    ScriptInput input(QString("help\n// no\n wind"));
    EXPECT_EQ((ScriptLine{1, "help"}), nextOf(input));
    EXPECT_EQ((ScriptLine{3, "wind"}), nextOf(input));
    EXPECT_EQ(std::nullopt, nextOf(input));
    EXPECT_EQ(std::nullopt, input.error());
    EXPECT_EQ("", input.placeOf({3, "wind"}));
}

TEST(ScriptInput, HasTheLinesOfAFile)
{
    const test::TemporaryDirectory directory;
    QByteArray text;
    for (int i = 1; i <= 50000; ++i) {
        text += "line " + QByteArray::number(i) + '\n';
    }
    ScriptInput input(opened(directory.write("a.console", text.toStdString())), "a.console");
    for (int i = 1; i <= 50000; ++i) {
        ASSERT_EQ((ScriptLine{i, QString("line %1").arg(i)}), nextOf(input));
    }
    EXPECT_EQ(std::nullopt, nextOf(input));
    EXPECT_EQ(std::nullopt, nextOf(input));
    EXPECT_EQ("a.console:12: ", input.placeOf({12, "wind"}));
}

TEST(ScriptInput, WaitsForALineWithoutHoldingUpTheEventLoop)
{
    int ends[2] = {};
    ASSERT_EQ(0, pipe(ends));
    auto file = std::make_unique<QFile>();
    ASSERT_TRUE(file->open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    ScriptInput input(std::move(file), "standard input");
    std::optional<ScriptLine> taken;
    input.next([&](const std::optional<ScriptLine>& line) { taken = line; });
    QCoreApplication::processEvents();
    ASSERT_EQ(3, write(ends[1], "hel", 3));
    QCoreApplication::processEvents();
    EXPECT_EQ(std::nullopt, taken);
    ASSERT_EQ(3, write(ends[1], "p\nx", 3));
    waitUntil("the line is read", [&] { return taken.has_value(); });
    EXPECT_EQ((ScriptLine{1, "help"}), taken);
    close(ends[1]);
    EXPECT_EQ((ScriptLine{2, "x"}), nextOf(input));
    EXPECT_EQ(std::nullopt, nextOf(input));
}

TEST(ScriptInput, EndsWithAnErrorAtALineThatIsTooLong)
{
    const test::TemporaryDirectory directory;
    ScriptInput input(
        opened(directory.write("a.console", "help\n" + std::string(kMaxScriptLineBytes + 1, 'a'))),
        "a.console");
    EXPECT_EQ((ScriptLine{1, "help"}), nextOf(input));
    EXPECT_EQ(std::nullopt, nextOf(input));
    EXPECT_EQ("a.console:2: a line of more than 131072 bytes is too long.", input.error());
    EXPECT_EQ(std::nullopt, nextOf(input));
}

TEST(ScriptInput, ReadsNoMoreThanIsWanted)
{
    const test::TemporaryDirectory directory;
    auto zeros = std::make_unique<QFile>("/dev/zero");
    ASSERT_EQ(std::nullopt, console::remote::openScript(*zeros));
    ScriptInput input(std::move(zeros), "/dev/zero");
    EXPECT_EQ(std::nullopt, nextOf(input));
    EXPECT_EQ("/dev/zero:1: a line of more than 131072 bytes is too long.", input.error());
}

TEST(ScriptInput, EndsWithAnErrorIfReadingFails)
{
    auto folder = std::make_unique<QFile>();
    const int descriptor = open("/", O_RDONLY | O_DIRECTORY);
    ASSERT_TRUE(folder->open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    ScriptInput input(std::move(folder), "standard input");
    EXPECT_EQ(std::nullopt, nextOf(input));
    EXPECT_EQ("Can't read 'standard input': " +
                  QString::fromStdString(test::systemText(std::errc::is_a_directory)) + ".",
              input.error());
}

} // namespace
} // namespace zephyr::attach
