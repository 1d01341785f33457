import QtQuick
import Zephyx.Screens

Rectangle {
    id: field

    property alias text: input.text
    property alias input: input
    property string placeholder

    implicitHeight: 38
    radius: Theme.radius
    color: Theme.field
    border.width: 1
    border.color: input.activeFocus ? Theme.accent : Theme.lineSoft

    Symbol {
        id: glass
        anchors { left: parent.left; leftMargin: 11; verticalCenter: parent.verticalCenter }
        name: "search"
        color: input.activeFocus ? Theme.accent : Theme.textFaint
    }

    TextInput {
        id: input
        anchors {
            left: glass.right; leftMargin: 9
            right: clear.visible ? clear.left : parent.right; rightMargin: 8
            verticalCenter: parent.verticalCenter
        }
        clip: true
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.inkOnAccent
        selectByMouse: true
        activeFocusOnTab: true
        font.pixelSize: Theme.textSize
        Accessible.role: Accessible.EditableText
        Accessible.name: field.placeholder

        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: input.text.length === 0 && input.preeditText.length === 0
            text: field.placeholder
            color: Theme.textFaint
            font: input.font
        }
    }

    IconButton {
        id: clear
        anchors { right: parent.right; rightMargin: 5; verticalCenter: parent.verticalCenter }
        visible: input.text.length > 0
        implicitWidth: 26
        implicitHeight: 26
        symbol: "close"
        label: "Clear the search"
        onClicked: { input.clear(); input.forceActiveFocus() }
    }
}
