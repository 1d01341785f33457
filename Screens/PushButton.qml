import QtQuick

Rectangle {
    id: button

    property string label
    /// Of the shortcut that does the same, shown beside the label.
    property string keys
    property bool primary: false
    property color tint: Theme.accent
    signal clicked

    activeFocusOnTab: true
    implicitWidth: content.implicitWidth + 26
    implicitHeight: 30
    radius: 8
    color: primary ? tint : area.containsMouse ? Theme.line : Theme.field
    border.width: activeFocus ? 2 : primary ? 0 : 1
    border.color: activeFocus ? (primary ? Theme.text : Theme.accent) : Theme.line
    opacity: !enabled ? 0.4 : area.pressed ? 0.8 : 1

    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.focusable: true
    Accessible.onPressAction: clicked()

    Keys.onPressed: event => {
        const presses = event.key === Qt.Key_Space || event.key === Qt.Key_Return
            || event.key === Qt.Key_Enter
        event.accepted = presses && event.modifiers === Qt.NoModifier
        if (event.accepted)
            clicked()
    }

    Row {
        id: content
        anchors.centerIn: parent
        spacing: 8

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: button.label
            color: button.primary ? Theme.inkOnAccent : Theme.text
            font.pixelSize: Theme.smallSize
            font.weight: Font.DemiBold
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: button.keys.length > 0
            text: button.keys
            color: button.primary ? Theme.inkOnAccent : Theme.textFaint
            opacity: button.primary ? 0.7 : 1
            font.pixelSize: Theme.tinySize
        }
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: button.clicked()
    }
}
