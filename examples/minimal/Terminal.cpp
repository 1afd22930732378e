// A console without a window, in the terminal that the program was started in.

#include "zephyr/console/Console.h"
#include "zephyr/console/remote/ConsoleTerminal.h"

#include <QCoreApplication>

#include <memory>
#include <string>

using namespace zephyr::console;

class GreetCommand : public ConsoleCommand
{
public:
    std::u32string name() const override { return U"greet"; } // greet NAME

    void execute(const ConsoleArgs& args, Console& console) override
    {
        console.writeIndented(U"Hello, " + args.subCmd() + U".", 4);
    }
};

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Console console;
    console.registerCommand(std::make_unique<GreetCommand>());
    const remote::ConsoleTerminal terminal(console);
    return QCoreApplication::exec();
}
