// A console in a QML application.

import QtQuick
import Zephyr.Console

Window {
    width: 640
    height: 400
    visible: true
    color: "#285078"

    TextInput {
        anchors.centerIn: parent
        width: 400
        color: "white"
        focus: true
        text: "Press the key left of 1."
    }

    ConsoleOverlay {
        Command {
            name: "greet"
            description: "Greets someone."
            usage: "greet NAME"
            onRun: (args, answer) => answer.write("Hello, " + args[0] + ".")
        }
    }
}
