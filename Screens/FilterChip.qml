import QtQuick

Rectangle {
    id: chip

    property string label
    property bool checked: false
    signal clicked

    activeFocusOnTab: true
    implicitWidth: caption.implicitWidth + 22
    implicitHeight: 26
    radius: 13
    color: checked ? Theme.accentSoft : area.containsMouse ? Theme.hover : "transparent"
    border.width: activeFocus ? 2 : 1
    border.color: checked || activeFocus ? Theme.accent : Theme.lineSoft

    Accessible.role: Accessible.RadioButton
    Accessible.name: label
    Accessible.checked: checked
    Accessible.checkable: true
    Accessible.focusable: true
    Accessible.onPressAction: clicked()

    Keys.onSpacePressed: clicked()

    Text {
        id: caption
        anchors.centerIn: parent
        text: chip.label
        color: chip.checked ? Theme.text : Theme.textSoft
        font.pixelSize: Theme.smallSize
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: chip.clicked()
    }
}
