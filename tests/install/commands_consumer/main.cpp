// A host of the installed library of commands, which loads a plugin with commands, and unloads it.

#include <zephyr/console/Console.h>
#include <zephyr/console/commands/Command.h>
#include <zephyr/console/commands/GlmValues.h>
#include <zephyr/console/commands/QtValues.h>
#include <zephyr/console/commands/Reference.h>
#include <zephyr/console/commands/StandardCommands.h>

#include <QCoreApplication>
#include <QLibrary>

#include <cstdio>

namespace {

namespace zc = zephyr::console;

bool answers(zc::Console& console, const std::u32string& line, const std::u32string& answer)
{
    const std::size_t before = console.logSize();
    console.execute(line);
    std::vector<zc::LogEntry> entries;
    console.readLog(before + 1, 1, entries);
    return !entries.empty() && entries[0].text == answer;
}

bool runPlugin(zc::Console& console, const char* path)
{
    QLibrary plugin(QString::fromLocal8Bit(path));
    const auto load = reinterpret_cast<void (*)(zc::Console&)>(plugin.resolve("load"));
    const auto unload = reinterpret_cast<void (*)()>(plugin.resolve("unload"));
    if (load == nullptr || unload == nullptr) {
        return false;
    }
    load(console);
    const bool isThere = answers(console, U"greet you", U"    Hello you.") &&
                         answers(console, U"volume 11", U"    volume: 11 is above 10.");
    unload();
    plugin.unload();
    return isThere && console.lookupCommand(U"greet") == nullptr &&
           console.lookupCommand(U"volume") == nullptr &&
           answers(console, U"vars", U"    There are no variables.");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    zc::Console console;
    zc::commands::addVars(console);
    zc::commands::add(console, U"goto", U"Goes to a place.", [](glm::vec2 place) { return place; });
    const bool isGood = argc == 2 && answers(console, U"goto 1,2.5", U"    1,2.5") &&
                        runPlugin(console, argv[1]) &&
                        zc::commands::reference(console).find("`goto VECTOR`") != std::string::npos;
    if (!isGood) {
        std::puts("the commands do not work");
    }
    return isGood ? 0 : 1;
}
