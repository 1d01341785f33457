import QtQuick
import Zephyx.Screens

Item {
    id: popup

    /// Objects with a label, a symbol and an action.
    property var items: []
    signal closed

    anchors.fill: parent
    focus: true
    Keys.onPressed: event => { event.accepted = true; closed() }
    Component.onCompleted: forceActiveFocus()

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: popup.closed()
    }
    Rectangle {
        id: sheet
        x: 22
        y: parent.height - height - 66
        width: 216
        height: column.height + 12
        radius: 12
        color: Theme.popup
        border.width: 1
        border.color: Theme.line
        Accessible.role: Accessible.PopupMenu

        Column {
            id: column
            x: 6
            y: 6
            width: parent.width - 12

            Repeater {
                model: popup.items
                Rectangle {
                    required property var modelData
                    width: column.width
                    height: 34
                    radius: 8
                    color: area.containsMouse ? Theme.accentSoft : "transparent"
                    Accessible.role: Accessible.MenuItem
                    Accessible.name: modelData.label

                    Symbol {
                        id: sign
                        anchors { left: parent.left; leftMargin: 10; verticalCenter: parent.verticalCenter }
                        width: 17
                        height: 17
                        name: modelData.symbol
                        color: Theme.textSoft
                    }
                    Text {
                        anchors { left: sign.right; leftMargin: 10; verticalCenter: parent.verticalCenter }
                        text: modelData.label
                        color: Theme.text
                        font.pixelSize: Theme.smallSize + 1
                    }
                    MouseArea {
                        id: area
                        anchors.fill: parent
                        hoverEnabled: true
                        onClicked: { popup.closed(); modelData.action() }
                    }
                }
            }
        }
    }
}
