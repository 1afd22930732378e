import QtQuick
import Zephyr.Console

Item {
    id: root

    property bool answered: false

    Component.onCompleted: overlay.execute("pause 3")

    ConsoleOverlay {
        id: overlay

        Command {
            name: "pause"
            onRun: (args, answer) => {
                answer.write("Paused for " + args[0] + " s.");
                root.answered = args[0] === "3";
            }
        }
    }
}
