import QtQuick
import Zephyx.Screens

SettingsSection {
    id: section

    required property HotkeySettings hotkeys

    title: "Hotkeys, in every program"

    // The names of the keys follow the keyboard's layout.
    Component.onCompleted: hotkeys.refresh()
    Component.onDestruction: hotkeys.cancelRecording()
    Window.onActiveChanged: if (Window.active) hotkeys.refresh()

    Repeater {
        objectName: "hotkeys"
        model: section.hotkeys
        HotkeyRow { hotkeys: section.hotkeys }
    }
    Item {
        width: parent.width
        height: 54

        Rectangle {
            anchors { left: parent.left; right: parent.right; leftMargin: 18; rightMargin: 1 }
            height: 1
            color: Theme.lineSoft
        }
        Text {
            anchors { left: parent.left; leftMargin: 18; verticalCenter: parent.verticalCenter }
            text: "Click a combination to change it."
            color: Theme.textFaint
            font.pixelSize: Theme.smallSize
        }
        PushButton {
            anchors { right: parent.right; rightMargin: 18; verticalCenter: parent.verticalCenter }
            label: "Reset all"
            spokenLabel: "Reset all hotkeys"
            enabled: !section.hotkeys.allUsual
            onClicked: section.hotkeys.resetAll()
        }
    }
}
