// Uses all that the module has, for Qt's checker.
import QtQuick
import Zephyr.Console

Window {
    id: root

    property alias isConsoleOpen: overlay.open

    ConsoleHandle {
        id: shared
    }

    ConsoleOverlay {
        id: overlay

        console: shared
        open: false
        mirrorFile: "log.txt"
        historyFile: "history.txt"
        captureQtMessages: true
        takesMouse: true
        onOpenChanged: print(overlay.open ? "opened" : "closed")
        onExceptionCaught: message => console.warn(message)

        Command {
            id: pause

            name: "pause"
            description: "Stops the simulation."
            usage: "pause [SECONDS]"
            candidates: words => words.length > 0 ? [] : ["10", "60"]
            onRun: (args, answer) => {
                answer.write(args.length === 0 ? "Paused." : "Paused for " + args[0] + " s.");
            }
        }

        Timer {
            onTriggered: {
                overlay.write("a line");
                overlay.execute(pause.name);
                overlay.copyLog();
            }
        }
    }

    Command {
        name: "elsewhere"
        handle: overlay.console
    }
}
