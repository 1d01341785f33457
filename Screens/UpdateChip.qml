import QtQuick
import Zephyx.Screens

/// Says quietly that there is a new version; shows it when it is clicked.
Rectangle {
    id: chip

    required property UpdateNotice updates

    objectName: "update"
    visible: updates.version.length > 0
    implicitWidth: caption.implicitWidth + 40
    implicitHeight: 26
    radius: 13
    color: area.containsMouse ? Theme.hover : Theme.accentSoft
    border.width: activeFocus ? 2 : 0
    border.color: Theme.accent
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: caption.text
    Accessible.focusable: true
    Accessible.onPressAction: updates.open()

    Keys.onPressed: event => { if (Keyboard.presses(event)) updates.open() }

    Symbol {
        id: sign
        anchors { left: parent.left; leftMargin: 10; verticalCenter: parent.verticalCenter }
        width: 14
        height: 14
        name: "restart"
        color: Theme.accent
    }
    Text {
        id: caption
        anchors {
            left: sign.right; leftMargin: 6; right: parent.right; rightMargin: 10
            verticalCenter: parent.verticalCenter
        }
        text: "Update available — version " + chip.updates.version
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.text
        font.pixelSize: Theme.smallSize
    }
    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: chip.updates.open()
    }
}
