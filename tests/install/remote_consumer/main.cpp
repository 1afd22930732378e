// A program outside of this tree that runs a console file and is served.

#include <zephyr/console/Console.h>
#include <zephyr/console/commands/Command.h>
#include <zephyr/console/remote/Batch.h>
#include <zephyr/console/remote/ConsoleServer.h>

#include <QCoreApplication>

#include <cstring>

int main(int argc, char** argv)
{
    using namespace zephyr::console;
    const QCoreApplication application(argc, argv);
    if (argc != 3) {
        return 3;
    }
    Console console;
    commands::add(
        console, U"sum", U"Adds numbers.", [](double a, double b) { return a + b; },
        commands::argument(U"a").between(0, 100), commands::argument(U"b"));
    remote::BatchOptions options;
    options.keepsGoing = std::strcmp(argv[1], "go") == 0;
    return remote::runBatch(console, argv[2], options);
}
