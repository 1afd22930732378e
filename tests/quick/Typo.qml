// Has a mistake that Qt's checker must find: a misspelt property.
import QtQuick
import Zephyr.Console

Item {
    ConsoleOverlay {
        mirrorFiel: "log.txt"
    }
}
