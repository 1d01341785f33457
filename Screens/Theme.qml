pragma Singleton
import QtQuick

QtObject {
    readonly property color accent: "#74b3ff"
    readonly property color accentSoft: "#2974b3ff"
    readonly property color inkOnAccent: "#0b1420"
    readonly property color warning: "#ffc66d"
    readonly property color danger: "#ff8a80"

    readonly property color text: "#f1f4f8"
    readonly property color textSoft: "#aeb7c2"
    readonly property color textFaint: "#808a97"

    readonly property color window: "#16191e"
    readonly property color card: "#0cffffff"
    readonly property color field: "#12ffffff"
    readonly property color hover: "#10ffffff"
    readonly property color line: "#24ffffff"
    readonly property color lineSoft: "#14ffffff"
    readonly property color popup: "#262b33"

    readonly property real cardRadius: 16
    readonly property real radius: 10
    readonly property real gap: 10
    readonly property int textSize: 14
    readonly property int smallSize: 12
    readonly property int tinySize: 11
}
