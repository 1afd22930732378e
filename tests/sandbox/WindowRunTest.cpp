#include "sandbox/program/WindowRun.h"

#include "sandbox/program/Options.h"
#include "support/TemporaryDirectory.h"

#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>

namespace zephyr::test {
namespace {

/// Redirects standard output to a file for its lifetime.
class OutputToFile
{
public:
    explicit OutputToFile(const std::filesystem::path& path) : mOutput(dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        std::FILE* const file = std::fopen(path.c_str(), "wb");
        if (mOutput < 0 || file == nullptr || dup2(fileno(file), STDOUT_FILENO) < 0) {
            throw std::runtime_error("can't redirect standard output");
        }
        std::fclose(file);
    }

    ~OutputToFile()
    {
        std::fflush(stdout);
        dup2(mOutput, STDOUT_FILENO);
        close(mOutput);
    }

    OutputToFile(const OutputToFile&) = delete;
    OutputToFile& operator=(const OutputToFile&) = delete;

private:
    int mOutput;
};

TEST(WindowRun, SaysThatARecordingEndsWithItsWindow)
{
    const TemporaryDirectory directory;
    const WorkingDirectory here(directory.path());
    sandbox::Options options;
    options.startup = sandbox::NoStartup();
    options.printsLog = true;
    options.lines = QStringList("sim record /path=a.csv /steps=10000");

    QTimer closing;
    QObject::connect(&closing, &QTimer::timeout, [&] {
        if (directory.has("a.csv")) {
            QGuiApplication::topLevelWindows().constFirst()->close();
        }
    });
    closing.start(1);
    {
        const OutputToFile output(directory.path() / "log");
        EXPECT_EQ(0, runWindow(options));
    }
    const std::string log = directory.read("log");
    EXPECT_NE(std::string::npos, log.find("    Recording to 'a.csv', 10000 steps.\n\n"));
    EXPECT_NE(std::string::npos, log.find("\n    The recording to 'a.csv' ended early, at step "));
}

} // namespace
} // namespace zephyr::test
