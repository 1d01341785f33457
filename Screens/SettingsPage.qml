import QtQuick
import Zephyx.Screens

Item {
    id: root

    required property MainController screen
    /// What the desktop lacks.
    required property var notices

    IconButton {
        id: back
        anchors { left: parent.left; leftMargin: 14; top: parent.top; topMargin: 12 }
        symbol: "back"
        label: "Back to the notes"
        onClicked: root.screen.showsSettings = false
    }
    Text {
        id: title
        anchors { left: back.right; leftMargin: 6; verticalCenter: back.verticalCenter }
        text: "Settings"
        color: Theme.text
        font.pixelSize: 18
        font.weight: Font.DemiBold
    }

    // What the keyboard comes to scrolls into sight.
    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged() {
            const item = root.Window.activeFocusItem
            for (let parent = item; parent; parent = parent.parent) {
                if (parent !== sections) continue
                const top = item.mapToItem(sections, 0, 0).y
                page.contentY = Math.max(0, Math.min(top - 40,
                    Math.max(page.contentY, top + item.height + 40 - page.height)))
                return
            }
        }
    }

    Flickable {
        id: page
        objectName: "settings"
        anchors {
            left: parent.left; right: parent.right; top: back.bottom; bottom: parent.bottom
            topMargin: 12; bottomMargin: 12
        }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: sections.height + 16

        Column {
            id: sections
            x: 24
            width: Math.min(660, page.width - 48)
            spacing: 22

            SettingsSection {
                title: "This desktop"
                visible: root.notices.length > 0
                Repeater {
                    objectName: "desktop"
                    model: root.notices
                    SettingsRow {
                        required property var modelData
                        required property int index
                        divided: index > 0
                        title: modelData.title
                        explanation: modelData.text
                    }
                }
            }
            ServerSection { server: root.screen.server }
            HotkeySection { hotkeys: root.screen.hotkeys }
            AgentSection { agents: root.screen.agents }
            SettingsSection {
                title: "Clipboard history"
                SettingsRow {
                    title: "Entries to keep"
                    explanation: "The oldest make room for the newest. Pinned entries stay and do not count."
                    NumberField {
                        label: "Entries to keep"
                        value: root.screen.settings.historyLimit
                        onChosen: value => root.screen.settings.historyLimit = value
                    }
                }
            }
            SettingsSection {
                title: "In this window"
                SettingsRow {
                    title: "Open settings"
                    explanation: "Works in this window and stands beside the menu item."
                    ShortcutField { settings: root.screen.settings }
                }
            }
            SettingsSection {
                title: "About"
                SettingsRow {
                    title: "Zephyx " + Qt.application.version
                    explanation: "Notes and clipboard history stay on this computer, readable by you alone."
                }
            }
        }
    }
    ScrollMark { view: page }
}
