import QtQuick

Rectangle {
    id: button

    property string label
    /// What the label stands for, where that takes more words.
    property string spokenLabel: label
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
    Accessible.name: spokenLabel
    Accessible.focusable: enabled
    Accessible.onPressAction: if (enabled) clicked()

    Keys.onPressed: event => { if (Keyboard.presses(event)) clicked() }

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
