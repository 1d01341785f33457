import QtQuick
import Zephyx.Screens

Row {
    id: field

    required property ScreenSettings settings
    spacing: 6

    Rectangle {
        id: recorder
        width: Math.max(120, caption.implicitWidth + 26)
        height: 30
        radius: 8
        color: Theme.field
        border.width: 1
        border.color: activeFocus ? Theme.accent : Theme.line

        Accessible.role: Accessible.Button
        Accessible.name: "Shortcut for the settings: " + caption.text
        Accessible.onPressAction: forceActiveFocus()

        Keys.onPressed: event => {
            event.accepted = true
            if (event.key === Qt.Key_Escape
                || field.settings.recordSettingsShortcut(event.key, event.modifiers))
                focus = false
        }

        Text {
            id: caption
            anchors.centerIn: parent
            text: recorder.activeFocus ? "Press the keys…" : field.settings.settingsShortcut
            color: recorder.activeFocus ? Theme.accent : Theme.text
            font.pixelSize: Theme.smallSize
        }
        MouseArea {
            anchors.fill: parent
            cursorShape: Qt.PointingHandCursor
            onClicked: recorder.forceActiveFocus()
        }
    }
    IconButton {
        visible: field.settings.hasSettingsShortcut
        symbol: "close"
        label: "Use the usual shortcut"
        onClicked: field.settings.clearSettingsShortcut()
    }
}
