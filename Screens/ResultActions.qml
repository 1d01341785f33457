import QtQuick
import Zephyx.Screens

/// What can be done with the result, each with its key.
Item {
    id: bar

    required property TranslateController screen
    required property string primary
    readonly property bool generating: screen.phase === "generating"
    readonly property bool ready: !generating && screen.hasResult
    signal acted

    height: 54

    Rectangle {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 1; topMargin: 0 }
        height: 1
        color: Theme.lineSoft
    }
    PushButton {
        id: left
        anchors { left: parent.left; leftMargin: 14; verticalCenter: parent.verticalCenter }
        label: bar.generating ? "Stop" : "Close"
        keys: "Esc"
        onClicked: bar.generating ? bar.screen.stop() : bar.screen.dismiss()
    }
    Text {
        anchors {
            left: left.right; leftMargin: 12; right: buttons.left; rightMargin: 12
            verticalCenter: parent.verticalCenter
        }
        text: bar.screen.message
        textFormat: Text.PlainText
        color: Theme.textSoft
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
        font.pixelSize: Theme.smallSize
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    Row {
        id: buttons
        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
        spacing: 8

        PushButton {
            label: "Copy"
            keys: "Ctrl C"
            enabled: bar.screen.hasResult
            onClicked: bar.screen.copy("")
        }
        PushButton {
            visible: bar.primary !== "accept"
            label: "Add to note"
            keys: "Ctrl ↵"
            enabled: bar.ready
            onClicked: bar.screen.acceptToEditor()
        }
        PushButton {
            label: bar.screen.phase === "failed" ? "Try again" : bar.primary === "run" ? "Run" : bar.screen.fromEditor ? "Into the note" : "Paste"
            keys: "↵"
            primary: true
            enabled: bar.primary === "run" ? bar.screen.text.trim().length > 0 : bar.ready
            onClicked: bar.acted()
        }
    }
}
