import QtQuick
import Zephyx.Screens

Item {
    signal allowed

    Symbol {
        id: lock
        anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
        name: "lock"
        color: Theme.warning
    }
    Text {
        anchors {
            left: lock.right; leftMargin: 10; right: allow.left; rightMargin: 10
            verticalCenter: parent.verticalCenter
        }
        text: "Zephyx needs your permission to paste into other programs."
        color: Theme.text
        wrapMode: Text.Wrap
        maximumLineCount: 2
        font.pixelSize: Theme.smallSize
    }
    PushButton {
        id: allow
        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
        label: "Allow…"
        primary: true
        onClicked: parent.allowed()
    }
}
