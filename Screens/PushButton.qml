import QtQuick

Rectangle {
    id: button

    property string label
    property bool primary: false
    property color tint: Theme.accent
    signal clicked

    implicitWidth: caption.implicitWidth + 26
    implicitHeight: 30
    radius: 8
    color: primary ? tint : area.containsMouse ? Theme.line : Theme.field
    border.width: primary ? 0 : 1
    border.color: Theme.line
    opacity: area.pressed ? 0.8 : 1

    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.onPressAction: clicked()

    Text {
        id: caption
        anchors.centerIn: parent
        text: button.label
        color: button.primary ? Theme.inkOnAccent : Theme.text
        font.pixelSize: Theme.smallSize
        font.weight: Font.DemiBold
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: button.clicked()
    }
}
