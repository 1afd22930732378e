import QtQuick
import Zephyr.Console

Item {
    ConsoleOverlay {
        console: appConsole

        Command {
            name: "pause"
        }
    }
}
