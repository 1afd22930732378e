// The main paths, each repeated for scripts/checks/instructions.sh, which runs this under Valgrind. What happens between
// the repetitions, or only the first time, isn't counted. Without Valgrind it counts nothing.

#include "support/Commands.h"
#include "support/HostedLog.h"
#include "support/Keys.h"
#include "support/SleepingThread.h"
#include "support/Workload.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include <valgrind/callgrind.h>

namespace zephyr::bench {
namespace {

using console::Console;
using console::ConsoleArgs;
using console::ConsoleSnapshot;

constexpr int kTimes = 1000;
constexpr int kFewTimes = 10; // of what takes long

/// Counts what `run` does, as `times` repetitions of `path`.
template <typename Run>
void countOnce(const char* path, int times, const Run& run)
{
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_TOGGLE_COLLECT;
    run();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(path);
    std::cout << path << ' ' << times << '\n';
}

/// Counts repetitions of `step` as `path`. The first is not counted.
template <typename Step>
void count(const char* path, int times, const Step& step)
{
    step();
    countOnce(path, times, [&] {
        for (int i = 0; i < times; ++i) {
            step();
        }
    });
}

void countWrites()
{
    const std::u32string text = lineText(0);
    const std::string utf8 = StringUtil::toString(text);
    Console console;
    count("write", kTimes, [&] { console.write(text, console::Output); });
    count("write_utf8", kTimes, [&] { console.write(utf8, console::Output); });
}

/// Counts writes that are redirected.
class CountedWrites : public console::ConsoleCommand
{
public:
    std::u32string name() const override { return U"write"; }

    void execute(const ConsoleArgs&, Console& console) override
    {
        const std::u32string text = lineText(0);
        count("write_redirected", kTimes, [&] { console.write(text, console::Output); });
    }
};

void countRedirectedWrites(const QTemporaryDir& directory)
{
    Console console;
    console.registerCommand(std::make_unique<CountedWrites>());
    console.execute(U"write > " + directory.filePath(QStringLiteral("out")).toStdU32String());
}

void countLines(const QTemporaryDir& directory)
{
    Console console;
    addCommands(console);
    const std::u32string line = fiveWords(kCommandInLine);
    count("execute", kTimes, [&] { console.execute(line); });

    const std::filesystem::path path = directory.filePath(QStringLiteral("lines.console")).toStdString();
    {
        std::ofstream file(path);
        for (int i = 0; i < kTimes; ++i) {
            file << StringUtil::toString(line) << '\n';
        }
    }
    console.runFile(path);
    countOnce("run_file", kTimes, [&] { console.runFile(path); });
}

void countKeys()
{
    Console console;
    console.registerCommand(std::make_unique<ManyCandidates>());
    console.open();
    const std::u32string text = U"a";
    count("key", kTimes, [&] { console.keyPressed(Qt::Key_A, Qt::NoModifier, text); });

    console.open(); // with an empty line
    type(console, U"choose one");
    press(console, Qt::Key_Return);
    type(console, U"choose ");
    press(console, Qt::Key_Tab);
    count("next_tab", kTimes, [&] { press(console, Qt::Key_Tab); });
    count("up", kTimes, [&] { press(console, Qt::Key_Up); });
}

void countFrames()
{
    Console console;
    fillLog(console, kSmallLog);
    const std::u32string text = lineText(0);
    ConsoleSnapshot snapshot = console.snapshot();
    count("write_and_refresh", kTimes, [&] {
        console.write(text, console::Output);
        console.refresh(snapshot);
    });
    count("snapshot", kFewTimes, [&] { snapshot = console.snapshot(); });

    HostedLog log(kSmallLog);
    QImage image(1920, 1080, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::darkCyan);
    QPainter painter(&image);
    log.host().setOpen(true);
    log.host().paint(painter);
    count("kit_unchanged", kFewTimes, [&] { log.host().paint(painter); });
}

void countAll()
{
    const QTemporaryDir directory;
    countWrites();
    countRedirectedWrites(directory);
    countLines(directory);
    countKeys();
    countFrames();
}

} // namespace
} // namespace zephyr::bench

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const zephyr::bench::SleepingThread sleeper;
    zephyr::bench::countAll();
    return 0;
}
