// The cost of running a line with a thousand commands registered: single lines, and a file.

#include "Interpreters.h"
#include "support/Commands.h"
#include "support/Workload.h"
#include "zephyr/common/StringUtil.h"

#include <QTemporaryDir>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string_view>

namespace zephyr::bench {
namespace {

using console::Console;
using console::LogEntry;

constexpr std::int64_t kLines = 20000;
constexpr int kFileLines = 100000;

std::unique_ptr<Console> readyConsole(std::size_t lines)
{
    auto console = std::make_unique<Console>();
    addCommands(*console);
    fillLog(*console, lines);
    return console;
}

/// The floor: one split, one look-up in an ordered map, one call and two appends.
class PlainDispatcher
{
public:
    explicit PlainDispatcher(std::size_t lines) : mLog(grownLog(lines))
    {
        for (const std::string& name : commandNames()) {
            mCommands.emplace(StringUtil::toU32String(name), std::make_unique<PlainCommand>());
        }
    }

    void execute(const std::u32string& line)
    {
        mLog.push_back({line, console::Input, 0});
        const std::vector<std::u32string> words = split(line);
        const auto found = mCommands.find(words.front());
        if (found != mCommands.end()) {
            found->second->execute(words);
        }
        mLog.push_back({std::u32string(), console::Output, 0});
    }

private:
    struct PlainCommand
    {
        virtual ~PlainCommand() = default;
        virtual void execute(const std::vector<std::u32string>& words) { benchmark::DoNotOptimize(&words); }
    };

    static std::vector<std::u32string> split(std::u32string_view line)
    {
        std::vector<std::u32string> words;
        words.reserve(1 + static_cast<std::size_t>(std::count(line.begin(), line.end(), U' ')));
        for (std::size_t end = line.find(U' '); end != line.npos; end = line.find(U' ')) {
            words.emplace_back(line.substr(0, end));
            line.remove_prefix(end + 1);
        }
        words.emplace_back(line);
        return words;
    }

    std::map<std::u32string, std::unique_ptr<PlainCommand>> mCommands;
    std::vector<LogEntry> mLog;
};

void dispatchPlainly(benchmark::State& state)
{
    PlainDispatcher dispatcher(logLength(state));
    const std::u32string line = fiveWords(kCommandInLine);
    for (auto _ : state) {
        dispatcher.execute(line);
    }
}

void executeLine(benchmark::State& state)
{
    const std::unique_ptr<Console> console = readyConsole(logLength(state));
    const std::u32string line = fiveWords(kCommandInLine);
    for (auto _ : state) {
        console->execute(line);
    }
}

template <typename Interpreter>
void evaluateLine(benchmark::State& state, const std::string& line)
{
    Interpreter interpreter(commandNames());
    for (auto _ : state) {
        if (!interpreter.evaluate(line)) {
            return state.SkipWithError("the line did not run");
        }
    }
}

void evaluateTcl(benchmark::State& state)
{
    evaluateLine<TclInterpreter>(state, "command500 first second third fourth");
}

void evaluateLua(benchmark::State& state)
{
    evaluateLine<LuaInterpreter>(state, "command500('first', 'second', 'third', 'fourth')");
}

std::vector<std::u32string> fileLines()
{
    std::vector<std::u32string> lines;
    for (int i = 0; i < kFileLines; ++i) {
        lines.push_back(fiveWords(i % kCommands));
    }
    return lines;
}

void executeLines(benchmark::State& state)
{
    const std::unique_ptr<Console> console = readyConsole(logLength(state));
    const std::vector<std::u32string> lines = fileLines();
    for (auto _ : state) {
        for (const std::u32string& line : lines) {
            console->execute(line);
        }
    }
}

void runFile(benchmark::State& state)
{
    const QTemporaryDir directory;
    const std::filesystem::path path = directory.filePath(QStringLiteral("lines.console")).toStdString();
    {
        std::ofstream file(path);
        for (const std::u32string& line : fileLines()) {
            file << StringUtil::toString(line) << '\n';
        }
    }
    const std::unique_ptr<Console> console = readyConsole(logLength(state));
    for (auto _ : state) {
        if (!console->runFile(path)) {
            return state.SkipWithError("the file did not run");
        }
    }
}

void lineSettings(benchmark::internal::Benchmark* registered)
{
    registered->Apply(logLengths)->Iterations(kLines);
}

void fileSettings(benchmark::internal::Benchmark* registered)
{
    registered->Apply(logLengths)->Iterations(1);
}

BENCHMARK(dispatchPlainly)->Name("execute/floor")->Apply(lineSettings);
BENCHMARK(executeLine)->Name("execute/console")->Apply(lineSettings);
BENCHMARK(evaluateTcl)->Name("execute/tcl")->Apply(lineSettings);
BENCHMARK(evaluateLua)->Name("execute/lua")->Apply(lineSettings);

BENCHMARK(executeLines)->Name("run_file/floor")->Apply(fileSettings);
BENCHMARK(runFile)->Name("run_file/console")->Apply(fileSettings);

} // namespace
} // namespace zephyr::bench
