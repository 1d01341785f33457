import QtQuick
import Zephyx.Screens

Item {
    id: footer

    property string message
    property bool confirms: false
    signal confirmed
    signal cancelled
    signal dismissed

    implicitHeight: 44

    Rectangle {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 1; topMargin: 0 }
        height: 1
        color: Theme.lineSoft
    }

    Row {
        visible: !footer.confirms && footer.message.length === 0
        anchors.centerIn: parent
        spacing: 13
        KeyHint { keys: "↵"; action: "paste" }
        KeyHint { keys: "⇧ ↵"; action: "plain text" }
        KeyHint { keys: "Space"; action: "preview" }
        KeyHint { keys: "Ctrl P"; action: "pin" }
        KeyHint { keys: "Del"; action: "remove" }
        KeyHint { keys: "Tab"; action: "filter" }
    }

    Item {
        visible: !footer.confirms && footer.message.length > 0
        anchors.fill: parent

        Symbol {
            id: sign
            anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
            name: "info"
            color: Theme.warning
        }
        Text {
            anchors {
                left: sign.right; leftMargin: 9; right: dismiss.left; rightMargin: 8
                verticalCenter: parent.verticalCenter
            }
            text: footer.message
            color: Theme.text
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            font.pixelSize: Theme.smallSize
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        IconButton {
            id: dismiss
            anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
            symbol: "close"
            label: "Dismiss"
            onClicked: footer.dismissed()
        }
    }

    Item {
        visible: footer.confirms
        anchors.fill: parent

        Text {
            anchors {
                left: parent.left; leftMargin: 16; right: cancel.left; rightMargin: 10
                verticalCenter: parent.verticalCenter
            }
            text: "Remove everything that is not pinned?"
            color: Theme.text
            elide: Text.ElideRight
            font.pixelSize: Theme.smallSize
        }
        PushButton {
            id: cancel
            anchors { right: remove.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
            label: "Cancel"
            onClicked: footer.cancelled()
        }
        PushButton {
            id: remove
            anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
            label: "Remove all"
            primary: true
            tint: Theme.danger
            onClicked: footer.confirmed()
        }
    }
}
