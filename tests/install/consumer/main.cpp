// A host that uses the installed headers and libraries, and nothing else of this tree.

#include <zephyr/common/ElapsedSimTime.h>
#include <zephyr/console/Console.h>
#include <zephyr/console/ConsoleRenderer.h>
#include <zephyr/console/ConsoleSwitchArg.h>
#include <zephyr/console/RunConsoleFileCommand.h>
#include <zephyr/console/qt/ConsoleHost.h>

#include <QGuiApplication>
#include <QImage>
#include <QLibrary>
#include <QPainter>
#include <QRasterWindow>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace zc = zephyr::console;

class GreetCommand : public zc::ConsoleCommand
{
public:
    GreetCommand()
    {
        registerArgHandler(
            U"world",
            [](const zc::ConsoleArgs&, zc::Console& console) { console.writeIndented(U"Hello.", 4); },
            U"Greets the world.", U"Usage: greet world");
    }

    std::u32string name() const override { return U"greet"; }

    void execute(const zc::ConsoleArgs& args, zc::Console& console) override
    {
        if (executeArgHandler(args, console)) {
            return;
        }
        if (args.argCount() > 1) {
            const zc::ConsoleSwitchArg whom(args, 1);
            console.write(whom.switchArg() + U" " + whom.value() + U" of " + args.arg(1), zc::Output);
            return;
        }
        ConsoleCommand::execute(args, console);
    }

    std::vector<std::u32string> getAutoCompleteResults(const zc::ConsoleArgs&) override { return {U"world"}; }
};

const std::vector<std::u32string> kExpectedLog = {
    U"Zephyr Console:",
    U"",
    U"greet world",
    U"    Hello.",
    U"",
    U"greet /whom=you",
    U"/whom you of /whom=you",
    U"",
    U"greet",
    U"    What do you want to do?",
    U"",
    U"    world: Greets the world.",
    U"",
    U"",
};

bool hasExpectedLog(const zc::Console& console)
{
    const zc::ConsoleSnapshot snapshot = console.snapshot();
    std::vector<std::u32string> texts;
    for (const zc::LogEntry& entry : snapshot.lines()) {
        texts.push_back(entry.text);
    }
    return texts == kExpectedLog;
}

bool drawsSomething(const zc::Console& console)
{
    QImage image(320, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    const QImage before = image;
    QPainter painter(&image);
    zc::ConsoleRenderer renderer;
    renderer.render(zephyr::ElapsedSimTime(zephyr::Time(0.0)), console.snapshot(), painter);
    painter.end();
    return image != before;
}

bool paintsInAWindow()
{
    QImage image(320, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    const QImage before = image;
    const auto console = std::make_shared<zc::Console>();
    QRasterWindow window;
    window.resize(image.size());
    zc::qt::ConsoleHost host(console, &window);
    host.setOpen(true);
    QPainter painter(&image);
    host.paint(painter);
    painter.end();
    return image != before;
}

std::u32string answerTo(const std::u32string& line, zc::Console& console)
{
    const std::size_t echo = console.snapshot().lines().size();
    console.execute(line);
    const zc::ConsoleSnapshot snapshot = console.snapshot();
    return snapshot.lines().at(echo + 1).text;
}

/// Whether a command from a plugin runs, and the plugin can be unloaded after the console is shut down.
bool worksWithAPlugin(const char* file, zc::Console& console)
{
    QLibrary plugin(QString::fromLocal8Bit(file));
    using RegisterCommands = void (*)(zc::Console&);
    const auto registerCommands = reinterpret_cast<RegisterCommands>(plugin.resolve("registerCommands"));
    if (registerCommands == nullptr) {
        std::printf("%s\n", qPrintable(plugin.errorString()));
        return false;
    }
    registerCommands(console);
    const bool answered = answerTo(U"plugged", console) == U"From the plugin.";
    console.shutdown();
    const bool unloaded = plugin.unload();
    return answered && unloaded && answerTo(U"plugged", console) != U"From the plugin.";
}

bool check(const char* what, bool holds)
{
    std::printf("%s: %s\n", holds ? "ok" : "FAILED", what);
    return holds;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);

    zc::Console console;
    console.registerCommand(std::make_unique<GreetCommand>());
    console.registerCommand(std::make_unique<zc::RunConsoleFileCommand>());
    console.open();
    for (const char32_t c : std::u32string(U"greet w")) {
        console.keyPressed(0, 0, std::u32string(1, c));
    }
    console.keyPressed(Qt::Key_Tab, 0, U"");
    console.keyPressed(Qt::Key_Return, 0, U"");
    console.execute(U"greet /whom=you");
    console.execute(U"greet");

    const bool good = check("the log holds what was typed and answered", hasExpectedLog(console)) &
                      check("the console is drawn", drawsSomething(console)) &
                      check("the kit paints it in a window", paintsInAWindow()) &
                      check("a command lives in a plugin", argc > 1 && worksWithAPlugin(argv[1], console));
    return good ? 0 : 1;
}
