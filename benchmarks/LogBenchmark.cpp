// The cost of the log: taking a snapshot, and writing a line.

#include "support/TextEdit.h"
#include "support/Workload.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <fstream>
#include <memory>
#include <mutex>

namespace zephyr::bench {
namespace {

using console::Console;
using console::ConsoleArgs;
using console::LogEntry;

constexpr std::int64_t kWrites = 20000;
constexpr std::int64_t kTextEditWrites = 1000;

void copyVector(benchmark::State& state)
{
    const std::vector<LogEntry> log = grownLog(logLength(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::vector<LogEntry>(log));
    }
}

void takeSnapshot(benchmark::State& state)
{
    Console console;
    fillLog(console, logLength(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(console.snapshot());
    }
}

void pushBackUnderMutex(benchmark::State& state)
{
    std::vector<LogEntry> log = grownLog(logLength(state));
    const LogEntry entry = lineEntry(0);
    std::mutex mutex;
    for (auto _ : state) {
        const std::lock_guard lock(mutex);
        log.push_back(entry);
    }
}

void writeCodePoints(benchmark::State& state)
{
    Console console;
    fillLog(console, logLength(state));
    const std::u32string text = lineText(0);
    for (auto _ : state) {
        console.write(text, console::Output);
    }
}

void writeUtf8(benchmark::State& state)
{
    Console console;
    fillLog(console, logLength(state));
    const std::string text = StringUtil::toString(lineText(0));
    for (auto _ : state) {
        console.write(text, console::Output);
    }
}

void appendToTextEdit(benchmark::State& state)
{
    const std::unique_ptr<QPlainTextEdit> edit = filledTextEdit(logLength(state));
    const QString text = QString::fromStdU32String(lineText(0));
    for (auto _ : state) {
        edit->appendPlainText(text);
    }
}

void writeToStream(benchmark::State& state)
{
    const QTemporaryDir directory;
    std::ofstream stream(directory.filePath(QStringLiteral("out")).toStdString());
    const std::string bytes = StringUtil::toString(lineText(0)) + '\n';
    for (auto _ : state) {
        stream << bytes;
    }
}

/// Writes one line in each iteration.
class WriteCommand : public console::ConsoleCommand
{
public:
    explicit WriteCommand(benchmark::State& state) : mState(state) {}

    std::u32string name() const override { return U"write"; }

    void execute(const ConsoleArgs&, Console& console) override
    {
        const std::u32string text = lineText(0);
        for (auto _ : mState) {
            console.write(text, console::Output);
        }
    }

private:
    benchmark::State& mState;
};

void writeRedirected(benchmark::State& state)
{
    const QTemporaryDir directory;
    Console console;
    fillLog(console, logLength(state));
    console.registerCommand(std::make_unique<WriteCommand>(state));
    const QString file = directory.filePath(QStringLiteral("out"));
    console.execute(U"write > " + file.toStdU32String());
    if (QFileInfo(file).size() == 0) {
        state.SkipWithError("nothing was redirected");
    }
}

void writeSettings(benchmark::internal::Benchmark* registered)
{
    registered->Apply(logLengths)->Iterations(kWrites);
}

BENCHMARK(copyVector)->Name("snapshot/floor")->Apply(logLengths);
BENCHMARK(takeSnapshot)->Name("snapshot/console")->Apply(logLengths);

BENCHMARK(pushBackUnderMutex)->Name("write/floor")->Apply(writeSettings);
BENCHMARK(writeCodePoints)->Name("write/console")->Apply(writeSettings);
BENCHMARK(appendToTextEdit)->Name("write/textedit")->Apply(logLengths)->Iterations(kTextEditWrites);
BENCHMARK(pushBackUnderMutex)->Name("write_utf8/floor")->Apply(writeSettings);
BENCHMARK(writeUtf8)->Name("write_utf8/console")->Apply(writeSettings);

BENCHMARK(writeToStream)->Name("write_redirected/floor")->Apply(writeSettings);
BENCHMARK(writeRedirected)->Name("write_redirected/console")->Apply(writeSettings);

} // namespace
} // namespace zephyr::bench
