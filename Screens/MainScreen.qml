import QtQuick
import Zephyx.Screens

FocusScope {
    id: root

    required property MainController screen

    implicitWidth: 900
    implicitHeight: 600
    focus: true

    Window.onActiveChanged: if (!Window.active) screen.save()
    Window.onVisibilityChanged: {
        screen.save()
        if (Window.visibility === Window.Hidden)
            screen.hotkeys.cancelRecording()
    }

    Keys.forwardTo: [settingsShortcut]
    Keys.onPressed: event => {
        event.accepted = true
        if (Keyboard.goesOn(event, root)) {
            return
        } else if (event.modifiers === Qt.ControlModifier && event.key === Qt.Key_N) {
            screen.newNote()
            editor.take()
        } else if (event.modifiers === Qt.ControlModifier && event.key === Qt.Key_F) {
            search.input.forceActiveFocus()
        } else if (event.key === Qt.Key_Escape && screen.showsSettings) {
            screen.showsSettings = false
        } else {
            event.accepted = false
        }
    }

    Component.onCompleted: editor.take()

    // Asked before a text field, which would take the character for itself.
    Item {
        id: settingsShortcut
        Keys.onPressed: event =>
            event.accepted = root.screen.openSettingsBy(event.key, event.modifiers)
    }

    Connections {
        target: root.screen
        function onPageChanged() { if (!root.screen.showsSettings) editor.take() }
    }

    DesktopNotices {
        id: desktopNotices
        screen: root.screen
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    Card {
        id: side
        enabled: !menu.active
        anchors { left: parent.left; top: parent.top; bottom: parent.bottom; margins: Theme.gap }
        width: 270

        Text {
            id: title
            anchors { left: parent.left; leftMargin: 18; top: parent.top; topMargin: 16 }
            text: "Notes"
            color: Theme.text
            font.pixelSize: 18
            font.weight: Font.DemiBold
        }
        IconButton {
            anchors { right: parent.right; rightMargin: 12; verticalCenter: title.verticalCenter }
            symbol: "note"
            label: "New note"
            tint: Theme.accent
            onClicked: { root.screen.newNote(); editor.take() }
        }
        SearchField {
            id: search
            anchors {
                left: parent.left; right: parent.right; top: title.bottom
                leftMargin: 12; rightMargin: 12; topMargin: 12
            }
            implicitHeight: 34
            placeholder: "Search"
            onTextChanged: root.screen.searchText = text
            input.Keys.forwardTo: [settingsShortcut]
            input.Keys.onEscapePressed: event => {
                if (text.length > 0) input.clear(); else editor.take()
            }
            input.Keys.onReturnPressed: { root.screen.openNote(0); editor.take() }

            Connections {
                target: root.screen
                function onSearchTextChanged() {
                    if (search.text !== root.screen.searchText) search.text = root.screen.searchText
                }
            }
        }
        ListView {
            id: list
            objectName: "notes"
            anchors {
                left: parent.left; right: parent.right; top: search.bottom
                bottom: noticeCards.top
                leftMargin: 8; rightMargin: 8; topMargin: 10; bottomMargin: 4
            }
            clip: true
            model: root.screen.notes
            boundsBehavior: Flickable.StopAtBounds
            currentIndex: root.screen.currentRow
            activeFocusOnTab: count > 0
            keyNavigationEnabled: false
            Accessible.role: Accessible.List
            Accessible.name: "Notes"
            Accessible.focusable: activeFocusOnTab

            function open(index) {
                root.screen.openNote(Math.max(0, Math.min(count - 1, index)))
                positionViewAtIndex(currentIndex, ListView.Contain)
            }

            Keys.onUpPressed: open(root.screen.currentRow - 1)
            Keys.onDownPressed: open(root.screen.currentRow + 1)
            Keys.onReturnPressed: editor.take()
            Keys.onEnterPressed: editor.take()
            Keys.onEscapePressed: editor.take()
            Keys.onDeletePressed: root.screen.deleteNote()

            delegate: NoteRow {
                width: ListView.view.width
                current: index === root.screen.currentRow
                onClicked: root.screen.openNote(index)
            }
        }
        ScrollMark { view: list }
        Rectangle {
            anchors { fill: list; margins: -2 }
            visible: list.activeFocus
            radius: Theme.radius
            color: "transparent"
            border.width: 2
            border.color: Theme.accent
        }
        Text {
            anchors { horizontalCenter: list.horizontalCenter; top: list.top; topMargin: 40 }
            visible: list.count === 0
            text: search.text.length > 0 ? "No note has this" : "No notes yet"
            color: Theme.textFaint
            font.pixelSize: Theme.smallSize
        }
        Column {
            id: noticeCards
            anchors {
                left: parent.left; right: parent.right
                bottom: update.visible ? update.top : rule.top
                leftMargin: 12; rightMargin: 12; bottomMargin: 8
            }
            spacing: 8

            Repeater {
                objectName: "notices"
                model: desktopNotices.unread
                NoticeCard {
                    required property var modelData
                    width: noticeCards.width
                    title: modelData.title
                    text: modelData.text
                    opensMenu: modelData.opensMenu
                    onDismissed: root.screen.settings.dismissNotice(modelData.id)
                }
            }
        }
        UpdateChip {
            id: update
            anchors {
                left: parent.left; right: parent.right; bottom: rule.top
                leftMargin: 12; rightMargin: 12; bottomMargin: 8
            }
            updates: root.screen.updates
        }
        Rectangle {
            id: rule
            anchors { left: parent.left; right: parent.right; bottom: menuButton.top; bottomMargin: 7 }
            height: 1
            color: Theme.lineSoft
        }
        IconButton {
            id: menuButton
            objectName: "menu"
            anchors { left: parent.left; leftMargin: 12; bottom: parent.bottom; bottomMargin: 8 }
            symbol: "menu"
            label: "Menu"
            onClicked: menu.active = true
        }
        Text {
            anchors { right: parent.right; rightMargin: 18; verticalCenter: menuButton.verticalCenter }
            text: list.count === 1 ? "1 note" : list.count + " notes"
            color: Theme.textFaint
            font.pixelSize: Theme.smallSize
        }
    }

    Card {
        enabled: !menu.active
        anchors {
            left: side.right; right: parent.right; top: parent.top; bottom: parent.bottom
            margins: Theme.gap
        }

        NoteEditor {
            id: editor
            anchors.fill: parent
            visible: !root.screen.showsSettings
            screen: root.screen
            keysFirst: settingsShortcut
        }
        Loader {
            anchors.fill: parent
            active: root.screen.showsSettings
            sourceComponent: SettingsPage { screen: root.screen; notices: desktopNotices.found }
        }
        MessageBar {
            anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 16 }
            message: root.screen.message
            canUndo: root.screen.canUndo
            onUndone: root.screen.undoDelete()
            onDismissed: root.screen.dismissMessage()
        }
    }

    Loader {
        id: menu
        anchors.fill: parent
        active: false
        sourceComponent: MenuPopup {
            items: [
                { label: "New note", symbol: "plus", action: () => { root.screen.newNote(); editor.take() } },
                { label: "Export all notes…", symbol: "open", action: () => root.screen.exportNotes() },
                { label: "Import notes…", symbol: "file", action: () => root.screen.importNotes() },
                { label: "Settings", symbol: "sliders", action: () => root.screen.showsSettings = true },
                ...(desktopNotices.trayless
                    ? [{ label: "Tray icon’s menu", symbol: "menu", action: () => desktop.openMenu() }]
                    : []),
                { label: "Quit Zephyx", symbol: "close", action: () => root.screen.quit() }
            ]
            onClosed: { menu.active = false; editor.take() }
        }
    }
}
