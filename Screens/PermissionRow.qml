import QtQuick
import Zephyx.Screens

/// Pasting needs an extension of the X server; where it is missing, nobody can allow it.
Item {
    /// What the user can do instead.
    required property string advice

    Symbol {
        id: lock
        anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
        name: "lock"
        color: Theme.warning
    }
    Text {
        anchors {
            left: lock.right; leftMargin: 10; right: parent.right; rightMargin: 14
            verticalCenter: parent.verticalCenter
        }
        text: "Zephyx cannot paste here: the X server has no XTEST extension. " + parent.advice
        color: Theme.text
        wrapMode: Text.Wrap
        maximumLineCount: 2
        font.pixelSize: Theme.smallSize
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
