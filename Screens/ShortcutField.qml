import QtQuick
import Zephyx.Screens

Row {
    id: field

    required property ScreenSettings settings
    spacing: 6

    Rectangle {
        id: recorder

        property bool recording: false
        function record() { forceActiveFocus(); recording = true }

        width: Math.max(120, caption.implicitWidth + 26)
        height: 30
        radius: 8
        color: Theme.field
        border.width: activeFocus ? 2 : 1
        border.color: activeFocus ? Theme.accent : Theme.line
        activeFocusOnTab: true
        onActiveFocusChanged: recording = false

        Accessible.role: Accessible.Button
        Accessible.name: "Shortcut for the settings: " + caption.text
        Accessible.focusable: true
        Accessible.onPressAction: record()

        Keys.onPressed: event => {
            if (!recording) {
                if (Keyboard.presses(event)) record()
                return
            }
            event.accepted = true
            if (event.key === Qt.Key_Escape
                || field.settings.recordSettingsShortcut(event.key, event.modifiers))
                recording = false
        }

        Text {
            id: caption
            anchors.centerIn: parent
            text: recorder.recording ? "Press the keys…" : field.settings.settingsShortcut
            color: recorder.recording ? Theme.accent : Theme.text
            font.pixelSize: Theme.smallSize
        }
        MouseArea {
            anchors.fill: parent
            cursorShape: Qt.PointingHandCursor
            onClicked: recorder.record()
        }
    }
    IconButton {
        visible: field.settings.hasSettingsShortcut
        symbol: "close"
        label: "Use the usual shortcut"
        onClicked: field.settings.clearSettingsShortcut()
    }
}
