import QtQuick
import Zephyx.Screens

Item {
    id: popup

    /// Objects with a label, a symbol and an action.
    property var items: []
    signal closed

    anchors.fill: parent
    focus: true
    Component.onCompleted: go(0)

    function go(index) { entries.itemAt((index + items.length) % items.length).forceActiveFocus() }

    function choose(item) {
        closed()
        item.action()
    }

    function handleKey(event, index) {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Up:
        case Qt.Key_Backtab: return go(index - 1)
        case Qt.Key_Down:
        case Qt.Key_Tab: return go(index + 1)
        case Qt.Key_Home: return go(0)
        case Qt.Key_End: return go(-1)
        }
        if (Keyboard.presses(event))
            return choose(items[index])
        event.accepted = true
        closed()
    }

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
                id: entries
                model: popup.items
                Rectangle {
                    required property int index
                    required property var modelData
                    width: column.width
                    height: 34
                    radius: 8
                    color: activeFocus ? Theme.accentSoft : "transparent"
                    Accessible.role: Accessible.MenuItem
                    Accessible.name: modelData.label
                    Accessible.focusable: true
                    Accessible.onPressAction: popup.choose(modelData)
                    Keys.onPressed: event => popup.handleKey(event, index)

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
                        onEntered: parent.forceActiveFocus()
                        onClicked: popup.choose(modelData)
                    }
                }
            }
        }
    }
}
