#ifndef ZEPHYR_TESTS_SUPPORT_CONSOLEFILESFIXTURE_H
#define ZEPHYR_TESTS_SUPPORT_CONSOLEFILESFIXTURE_H

#include "support/ConsoleFixture.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace zephyr::test {

/// A console, and an empty directory for console files: the current directory, and the only one in the runpath.
class ConsoleFilesFixture : public ConsoleFixture
{
protected:
    using Paths = std::vector<std::filesystem::path>;

    ConsoleFilesFixture() { setRunpath({mDirectory.path()}); }

    // QTemporaryDir can't remove files whose names aren't UTF-8.
    ~ConsoleFilesFixture() override
    {
        for (const std::filesystem::directory_entry& entry :
             std::filesystem::directory_iterator(mDirectory.path())) {
            std::error_code ignored;
            std::filesystem::remove_all(entry, ignored);
        }
    }

    void setRunpath(const Paths& paths)
    {
        const Paths before = mConsole.runPaths();
        for (const std::filesystem::path& path : before) {
            mConsole.removeRunpath(path);
        }
        for (const std::filesystem::path& path : paths) {
            mConsole.appendRunpath(path);
        }
        EXPECT_EQ(mConsole.runPaths(), paths);
    }

    /// The path of `name` in the directory.
    std::filesystem::path at(const std::filesystem::path& name) const { return mDirectory.path() / name; }

    /// Creates a subdirectory, and returns its path.
    std::filesystem::path makeDirectory(const std::filesystem::path& name) const
    {
        std::filesystem::create_directories(at(name));
        return at(name);
    }

    /// Creates a symbolic link to itself, and returns its path.
    std::filesystem::path makeLoop(const std::filesystem::path& name) const
    {
        std::filesystem::create_symlink(name.filename(), at(name));
        return at(name);
    }

    void add(const std::u32string& name, ScriptedCommand::Run run)
    {
        addCommand(mConsole, name).onExecute = std::move(run);
    }

    /// Adds a command that writes one line.
    void addWriter(const std::u32string& name, const std::u32string& text)
    {
        add(name, [text](const console::ConsoleArgs&, console::Console& console) {
            console.write(text, console::Output);
        });
    }

    /// Adds a command `fail` that writes "before" and throws a `std::runtime_error`.
    void addFail()
    {
        add(U"fail", [](const console::ConsoleArgs&, console::Console& console) {
            console.write(U"before", console::Output);
            throw std::runtime_error("no wind");
        });
    }

    void execute(const std::string& line) { mConsole.execute(StringUtil::toU32String(line)); }

    bool runFileWithName(const std::string& name)
    {
        return mConsole.runFileWithName(StringUtil::toU32String(name));
    }

    TemporaryDirectory mDirectory;
    WorkingDirectory mWorkingDirectory{mDirectory.path()};
};

/// The assertion for a console file that can't be opened, as AssertRecorder records it.
inline const std::vector<std::string> kNotOpen = {"Console:449: ifs.is_open()"};

/// A file name longer than any file system allows.
inline const std::string kTooLongName(300, 'x');

} // namespace zephyr::test

#endif
