import QtQuick
import Zephyx.Screens

Rectangle {
    id: button

    property string symbol
    property string label
    property color tint: Theme.textSoft
    property bool active: false
    signal clicked

    implicitWidth: 30
    implicitHeight: 30
    radius: 8
    color: area.pressed ? Theme.line : area.containsMouse ? Theme.hover : "transparent"

    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.onPressAction: clicked()

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
