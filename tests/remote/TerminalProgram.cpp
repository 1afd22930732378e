// A program without a window, for the tests of ConsoleTerminal. With the argument `second` it has two, with `aside` its
// last word goes to standard error.
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleArgs.h"
#include "zephyr/console/ConsoleCommand.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/remote/ConsoleTerminal.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaObject>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include <unistd.h>

namespace {

using namespace zephyr::console;
using remote::ConsoleTerminal;
using remote::ConsoleTerminalOptions;

class Command : public ConsoleCommand
{
public:
    using Function = std::function<void(const ConsoleArgs&, Console&)>;

    Command(std::u32string name, Function function, std::vector<std::u32string> offers = {})
        : mName(std::move(name)), mFunction(std::move(function)), mOffers(std::move(offers))
    {}

    std::u32string name() const override { return mName; }
    void execute(const ConsoleArgs& args, Console& console) override { mFunction(args, console); }

    std::vector<std::u32string> getAutoCompleteResults(const ConsoleArgs& args) override
    {
        const std::u32string begin = args.endsWithBlank() ? U"" : args.arg(args.argCount() - 1);
        std::vector<std::u32string> fitting;
        for (const std::u32string& offer : mOffers) {
            if (offer.starts_with(begin)) {
                fitting.push_back(offer);
            }
        }
        return fitting;
    }

private:
    std::u32string mName;
    Function mFunction;
    std::vector<std::u32string> mOffers;
};

std::string textOf(const ConsoleArgs& args) { return zephyr::StringUtil::toString(args.arg(1)); }

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const bool hasSecond = QCoreApplication::arguments().contains("second");
    Console console;
    std::unique_ptr<ConsoleTerminal> terminal;
    std::unique_ptr<ConsoleTerminal> second;
    const auto add = [&](std::u32string name, Command::Function function,
                         std::vector<std::u32string> offers = {}) {
        console.registerCommand(
            std::make_unique<Command>(std::move(name), std::move(function), std::move(offers)));
    };
    add(U"say", [](const ConsoleArgs& args, Console& to) {
        for (unsigned i = 1; i < args.argCount(); ++i) {
            to.write(U"said " + args.arg(i), Output);
        }
    });
    add(U"listen", [](const ConsoleArgs& args, Console& to) { // writes lines of a FIFO, on another thread
        std::thread([&to, path = textOf(args)] {
            std::ifstream lines(path);
            for (std::string line; std::getline(lines, line);) {
                to.write(line, Output);
            }
        }).detach();
    });
    add(U"later", [&](const ConsoleArgs& args, Console&) { // writes when no line runs
        const std::u32string text = args.arg(1);
        QTimer::singleShot(0, &application, [&console, text] { console.write(U"later " + text, Output); });
    });
    add(U"flood", [&](const ConsoleArgs&, Console&) {
        QTimer::singleShot(0, &application, [&console] {
            for (int i = 0; i < 10000; ++i) {
                console.write("flood " + std::to_string(i), Output);
            }
        });
    });
    add(U"sleep", [](const ConsoleArgs& args, Console&) {
        std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(textOf(args))));
    });
    add(U"wait", [](const ConsoleArgs& args, Console& to) { // until a file is there
        const std::string path = textOf(args);
        to.write("waiting for " + path, Output);
        while (::access(path.c_str(), F_OK) != 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        to.write("found " + path, Output);
    });
    add(U"nest-later", [&](const ConsoleArgs& args, Console&) {
        QTimer::singleShot(0, &application,
                           [&console, line = U"nest " + args.arg(1)] { console.execute(line); });
    });
    add(U"throw", [](const ConsoleArgs&, Console&) { throw std::runtime_error("thrown"); });
    add(U"end", [](const ConsoleArgs&, Console&) { throw EndOfRun(); });
    add(U"exit", [&](const ConsoleArgs& args, Console&) { // when a line is written to a FIFO
        std::thread([&application, path = textOf(args)] {
            std::ifstream lines(path);
            std::string line;
            std::getline(lines, line);
            QMetaObject::invokeMethod(&application, [] { std::exit(3); });
        }).detach();
    });
    add(U"nest", [](const ConsoleArgs& args, Console& to) { // processes events until a file is there
        const std::string path = textOf(args);
        to.execute(U"say nested");
        while (::access(path.c_str(), F_OK) != 0) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
        to.execute(U"say unnested");
    });
    add(U"destroy", [&](const ConsoleArgs&, Console&) {
        terminal.reset();
        std::puts("Destroyed.");
        std::fflush(stdout);
    });
    add(U"open", [](const ConsoleArgs&, Console&) {},
        {U"evil\x1b]2;owned\x07", U"evil\nquit\t\u009b", U"trap\nsay trapped"});
    add(U"wind", [](const ConsoleArgs&, Console&) {}, {U"set", U"settle", U"show"});
    add(
        U"many", [](const ConsoleArgs&, Console&) {},
        [] {
            std::vector<std::u32string> offers;
            for (int i = 1000; i < 2000; ++i) {
                const std::string number = "offer-" + std::to_string(i);
                offers.emplace_back(number.begin(), number.end());
            }
            return offers;
        }());
    ConsoleTerminalOptions options;
    options.historyFile = qEnvironmentVariable("TERMINAL_PROGRAM_HISTORY");
    terminal = std::make_unique<ConsoleTerminal>(console, options);
    if (hasSecond) {
        second = std::make_unique<ConsoleTerminal>(console);
    }
    const int status = QCoreApplication::exec();
    terminal.reset();
    std::fputs("The program ends.\n", QCoreApplication::arguments().contains("aside") ? stderr : stdout);
    return status;
}
