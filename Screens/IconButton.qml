import QtQuick
import Zephyx.Screens

Rectangle {
    id: button

    property string symbol
    property string label
    property color tint: Theme.textSoft
    property bool active: false
    signal clicked

    activeFocusOnTab: true
    implicitWidth: 30
    implicitHeight: 30
    radius: 8
    color: area.pressed ? Theme.line : area.containsMouse ? Theme.hover : "transparent"
    border.width: activeFocus ? 2 : 0
    border.color: Theme.accent

    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.focusable: enabled
    Accessible.onPressAction: if (enabled) clicked()

    Keys.onPressed: event => { if (Keyboard.presses(event)) clicked() }

    Symbol {
        anchors.centerIn: parent
        width: 18
        height: 18
        name: button.symbol
        color: button.active ? Theme.accent : area.containsMouse ? Theme.text : button.tint
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: button.clicked()
    }
}
