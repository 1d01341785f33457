import QtQuick
import Zephyx.Screens

FocusScope {
    id: root

    required property ClipboardController screen
    readonly property bool composited: typeof desktop === "undefined" || desktop.composited
    readonly property var filters: ["", "text", "url", "image", "file", "pinned"]
    property bool confirmsClearing: false
    property bool justShown: false
    // A pointer that lies where the panel opens points at nothing until it moves.
    property bool pointerMoved: false
    property point pointerAtRest

    // The host draws the dark backgrounds behind these.
    readonly property var cards: {
        const shown = [frameOf(header), frameOf(history)]
        return permission.visible ? shown.concat([frameOf(permission)]) : shown
    }

    implicitWidth: 560
    implicitHeight: 720
    focus: true

    onCardsChanged: Qt.callLater(reportCards)
    // Away from the search field Tab goes from button to button, and any other key comes back.
    Keys.onPressed: event => {
        if (search.input.activeFocus || Keyboard.goesOn(event, root))
            return
        search.input.forceActiveFocus()
        if (event.key !== Qt.Key_Escape)
            handleKey(event)
        else
            event.accepted = true
    }
    // When it hides, so that the next showing does not begin with a glimpse of this one. When it
    // shows, because a key may come before the host's word: by then the newest entry is selected.
    Window.onVisibilityChanged: {
        begin()
        justShown = Window.visibility !== Window.Hidden
    }
    Component.onCompleted: { reportCards(); begin() }

    function frameOf(card) { return Qt.rect(card.x, card.y, card.width, card.height) }
    function reportCards() { screen.reportCards(cards, Theme.cardRadius) }

    function begin() {
        screen.begin()
        confirmsClearing = false
        restPointer()
        search.input.clear()
        screen.filter = ""
        list.currentIndex = 0
        list.positionViewAtBeginning()
        search.input.forceActiveFocus()
    }

    function restPointer() {
        pointerMoved = false
        pointerAtRest = pointer.point.position
    }

    function select(index) {
        if (list.count > 0)
            list.currentIndex = Math.max(0, Math.min(list.count - 1, index))
    }

    function cycleFilter(step) {
        const at = filters.indexOf(screen.filter) + step + filters.length
        screen.filter = filters[at % filters.length]
    }

    function goBack() {
        if (confirmsClearing) {
            confirmsClearing = false
        } else if (search.text.length > 0 || screen.filter.length > 0) {
            search.input.clear()
            screen.filter = ""
        } else {
            screen.hidePanel()
        }
    }

    function accept(plainText) {
        if (confirmsClearing) {
            confirmsClearing = false
            screen.clearHistory()
        } else {
            screen.paste(list.currentIndex, plainText)
        }
    }

    function handleKey(event) {
        const control = (event.modifiers & Qt.ControlModifier) !== 0
        const shift = (event.modifiers & Qt.ShiftModifier) !== 0
        const page = Math.max(1, Math.floor(list.height / 74))
        event.accepted = true
        if (Keyboard.goesOn(event, root))
            return
        switch (event.key) {
        case Qt.Key_Up: return select(list.currentIndex - 1)
        case Qt.Key_Down: return select(list.currentIndex + 1)
        case Qt.Key_PageUp: return select(list.currentIndex - page)
        case Qt.Key_PageDown: return select(list.currentIndex + page)
        case Qt.Key_Return:
        case Qt.Key_Enter: return accept(shift)
        case Qt.Key_Escape: return goBack()
        case Qt.Key_Tab: return cycleFilter(1)
        case Qt.Key_Backtab: return cycleFilter(-1)
        case Qt.Key_Home: if (!shift) return select(0); break
        case Qt.Key_End: if (!shift) return select(list.count - 1); break
        case Qt.Key_Space:
            if (control || search.text.length === 0)
                return screen.preview(list.currentIndex)
            break
        case Qt.Key_Delete:
            if (control && shift) { confirmsClearing = list.count > 0; return }
            if (control || search.text.length === 0)
                return screen.remove(list.currentIndex)
            break
        case Qt.Key_P: if (control) return screen.togglePinned(list.currentIndex); break
        case Qt.Key_O: if (control) return screen.openLink(list.currentIndex); break
        case Qt.Key_E: if (control) return screen.showInFileManager(list.currentIndex); break
        }
        event.accepted = false
    }

    Connections {
        target: root.screen
        function onPanelShown() {
            if (!root.justShown) root.begin()
            root.justShown = false
        }
    }

    HoverHandler {
        id: pointer
        onHoveredChanged: if (hovered) root.restPointer()
        onPointChanged: {
            const away = Math.abs(point.position.x - root.pointerAtRest.x)
                + Math.abs(point.position.y - root.pointerAtRest.y)
            if (hovered && away > 2) root.pointerMoved = true
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: !root.composited
        color: Theme.window
    }

    Card {
        id: header
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.gap }
        height: 131
        color: "transparent"
        border.color: Theme.lineSoft

        MouseArea {
            anchors.fill: parent
            property point start
            property bool dragging: false
            onPressed: mouse => { start = Qt.point(mouse.x, mouse.y); dragging = false }
            onPositionChanged: mouse => {
                if (dragging || Math.abs(mouse.x - start.x) + Math.abs(mouse.y - start.y) < 4)
                    return
                dragging = true
                root.screen.startWindowDrag()
            }
        }
        Symbol {
            id: emblem
            anchors { left: parent.left; leftMargin: 16; verticalCenter: title.verticalCenter }
            width: 20
            height: 20
            name: "clipboard"
            color: Theme.accent
        }
        Text {
            id: title
            anchors { left: emblem.right; leftMargin: 8; top: parent.top; topMargin: 13 }
            text: "Clipboard"
            color: Theme.text
            font.pixelSize: 16
            font.weight: Font.DemiBold
        }
        UpdateChip {
            anchors { right: clear.left; rightMargin: 8; verticalCenter: title.verticalCenter }
            width: Math.min(implicitWidth, clear.x - title.x - title.width - 24)
            updates: root.screen.updates
        }
        IconButton {
            id: clear
            anchors { right: parent.right; rightMargin: 12; verticalCenter: title.verticalCenter }
            symbol: "trash"
            label: "Clear the history"
            onClicked: root.confirmsClearing = list.count > 0
        }
        SearchField {
            id: search
            anchors {
                left: parent.left; right: parent.right; top: title.bottom
                leftMargin: 14; rightMargin: 14; topMargin: 11
            }
            placeholder: "Type to search"
            input.focus: true
            onTextChanged: root.screen.searchText = text
            input.Keys.onPressed: event => root.handleKey(event)
        }
        Row {
            anchors { left: search.left; top: search.bottom; topMargin: 9 }
            spacing: 6

            Repeater {
                model: ["All", "Text", "Links", "Images", "Files", "Pinned"]
                FilterChip {
                    required property int index
                    required property string modelData
                    label: modelData
                    checked: root.screen.filter === root.filters[index]
                    onClicked: root.screen.filter = root.filters[index]
                }
            }
        }
    }

    Card {
        id: permission
        visible: !root.screen.mayPaste
        anchors { left: header.left; right: header.right; top: header.bottom; topMargin: Theme.gap }
        height: 56
        color: "transparent"
        border.color: Theme.lineSoft

        PermissionRow {
            anchors.fill: parent
            advice: "Enter copies the entry; then paste it yourself."
        }
    }

    Card {
        id: history
        anchors {
            left: header.left; right: header.right; bottom: parent.bottom; bottomMargin: Theme.gap
            top: permission.visible ? permission.bottom : header.bottom; topMargin: Theme.gap
        }
        color: "transparent"
        border.color: Theme.lineSoft

        ListView {
            id: list
            objectName: "entries"
            anchors { fill: parent; margins: 6; bottomMargin: footer.height + 6 }
            clip: true
            model: root.screen.entries
            boundsBehavior: Flickable.StopAtBounds
            reuseItems: true
            highlightFollowsCurrentItem: false
            Accessible.role: Accessible.List
            Accessible.name: "Clipboard history"

            onCurrentIndexChanged: positionViewAtIndex(currentIndex, ListView.Contain)

            delegate: EntryRow {
                width: ListView.view.width
                screen: root.screen
                followsPointer: root.pointerMoved
                onSelected: list.currentIndex = index
                onChosen: plainText => root.screen.paste(index, plainText)
            }
        }
        Connections {
            target: root.screen.entries
            function onModelReset() {
                list.currentIndex = 0
                list.positionViewAtBeginning()
            }
            function onRowsRemoved() { if (list.currentIndex < 0) root.select(0) }
        }
        ScrollMark { view: list }

        Column {
            visible: list.count === 0
            anchors.centerIn: list
            spacing: 12

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 40
                height: 40
                name: search.text.length > 0 ? "search" : "clipboard"
                color: Theme.textFaint
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: search.text.length > 0 || root.screen.filter.length > 0
                    ? "Nothing like this in the history" : "What you copy appears here"
                color: Theme.textFaint
                font.pixelSize: Theme.textSize
            }
        }

        PanelFooter {
            id: footer
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            message: root.screen.message
            confirms: root.confirmsClearing
            onConfirmed: root.accept(false)
            onCancelled: root.goBack()
            onDismissed: root.screen.message = ""
        }
    }
}
