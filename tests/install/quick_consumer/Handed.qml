import QtQuick
import Zephyr.Console

Item {
    ConsoleOverlay {
        handle: appConsole

        Command {
            name: "pause"
        }
    }
}
