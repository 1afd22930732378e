// The cost of a served console to its program: a line that is written while nobody is attached, and a frame while eight
// clients run a hundred lines a second each.

#include "support/Workload.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <thread>

namespace zephyr::bench {
namespace {

using console::Console;
using console::remote::ConsoleServer;

constexpr std::int64_t kWrites = 20000;
constexpr std::int64_t kFrames = 30;
constexpr int kFrameMs = 16;
constexpr int kClients = 8;
constexpr int kLineMs = 10;            // between two lines of a client
constexpr int kWorkOfAFrame = 3000000; // steps of a small generator, some milliseconds

/// A console that is served in a folder of its own.
class Served
{
public:
    Served()
    {
        qputenv("XDG_RUNTIME_DIR", mFolder.path().toUtf8());
        console::commands::addEcho(mConsole);
        mServer.emplace(mConsole, "served");
    }

    ~Served() { qunsetenv("XDG_RUNTIME_DIR"); }

    Served(const Served&) = delete;
    Served& operator=(const Served&) = delete;

    Console& console() { return mConsole; }
    std::size_t clientCount() const { return mServer->clientCount(); }
    QString socket() const { return mFolder.filePath("zephyr-console/served.socket"); }

private:
    QTemporaryDir mFolder;
    Console mConsole;
    std::optional<ConsoleServer> mServer;
};

/// Clients that run lines and read the answers, on a thread of their own.
class Clients
{
public:
    explicit Clients(const QString& socket) : mThread([this, socket] { run(socket); }) {}

    ~Clients()
    {
        mIsDone = true;
        mThread.join();
    }

    Clients(const Clients&) = delete;
    Clients& operator=(const Clients&) = delete;

private:
    void run(const QString& socket)
    {
        QEventLoop loop;
        std::vector<std::unique_ptr<QLocalSocket>> sockets;
        for (int i = 0; i < kClients; ++i) {
            sockets.push_back(std::make_unique<QLocalSocket>());
            sockets.back()->connectToServer(socket);
        }
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            for (const auto& client : sockets) {
                client->readAll();
                client->write("{\"id\":1,\"run\":\"echo a line of a client\"}\n");
            }
            if (mIsDone) {
                loop.quit();
            }
        });
        timer.start(kLineMs);
        loop.exec();
    }

    std::atomic<bool> mIsDone = false;
    std::thread mThread;
};

void write(benchmark::State& state, Console& console)
{
    const std::u32string text = lineText(0);
    for (auto _ : state) {
        console.write(text, console::Output);
    }
}

void writeUnserved(benchmark::State& state)
{
    Console console;
    write(state, console);
}

void writeServed(benchmark::State& state)
{
    Served served;
    write(state, served.console());
}

void work()
{
    std::uint32_t number = 1;
    for (int i = 0; i < kWorkOfAFrame; ++i) {
        benchmark::DoNotOptimize(number = number * 1664525 + 1013904223);
    }
}

/// Frames with work in each, at a steady rate. What counts is the processor time of the program's own thread.
void runFrames(benchmark::State& state)
{
    for (auto _ : state) {
        const QDeadlineTimer end(kFrameMs, Qt::PreciseTimer);
        work();
        do {
            QCoreApplication::processEvents();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        } while (!end.hasExpired());
    }
}

void frameAlone(benchmark::State& state)
{
    const Served served;
    runFrames(state);
}

void frameWithClients(benchmark::State& state)
{
    const Served served;
    const Clients clients(served.socket());
    while (served.clientCount() < kClients) {
        QCoreApplication::processEvents();
    }
    runFrames(state);
}

void writeSettings(benchmark::internal::Benchmark* registered)
{
    registered->Arg(1)->MeasureProcessCPUTime()->Iterations(kWrites);
}

void frameSettings(benchmark::internal::Benchmark* registered)
{
    registered->Arg(kClients)->Iterations(kFrames);
}

BENCHMARK(writeUnserved)->Name("serve_write/floor")->Apply(writeSettings);
BENCHMARK(writeServed)->Name("serve_write/console")->Apply(writeSettings);
BENCHMARK(frameAlone)->Name("serve_frame/floor")->Apply(frameSettings);
BENCHMARK(frameWithClients)->Name("serve_frame/console")->Apply(frameSettings);

} // namespace
} // namespace zephyr::bench
