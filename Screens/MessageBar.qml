import QtQuick
import Zephyx.Screens

Rectangle {
    id: bar

    property string message
    property bool canUndo: false
    signal undone
    signal dismissed

    visible: message.length > 0
    width: Math.min(parent.width - 60, row.width + 28)
    height: 46
    radius: 12
    color: Theme.popup
    border.width: 1
    border.color: Theme.line

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 10

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "info"
            color: Theme.accent
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, bar.parent.width - (bar.canUndo ? 260 : 180))
            text: bar.message
            textFormat: Text.PlainText
            color: Theme.text
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            font.pixelSize: Theme.smallSize
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        PushButton {
            anchors.verticalCenter: parent.verticalCenter
            visible: bar.canUndo
            label: "Undo"
            onClicked: bar.undone()
        }
        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "close"
            label: "Dismiss"
            onClicked: bar.dismissed()
        }
    }
}
