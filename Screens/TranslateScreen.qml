import QtQuick
import Zephyx.Screens

FocusScope {
    id: root

    required property TranslateController screen
    readonly property bool composited: typeof desktop === "undefined" || desktop.composited
    readonly property bool wide: width > 820
    readonly property bool generating: screen.phase === "generating"
    /// What Enter does: "run", "paste", "accept", or nothing while the answer comes.
    readonly property string primary: generating ? ""
        : screen.edited || !screen.hasResult || screen.phase === "failed" ? "run"
        : screen.fromEditor ? "accept" : "paste"
    readonly property var titles: ({ translate: "Translate", spelling: "Correct spelling", improve: "Improve" })

    implicitWidth: 620
    implicitHeight: 580
    focus: true

    Component.onCompleted: reportCard()
    Window.onVisibilityChanged: screen.setVisible(Window.visibility !== Window.Hidden)
    Keys.onPressed: event => handleKey(event)

    function reportCard() {
        screen.reportCards([Qt.rect(card.x, card.y, card.width, card.height)], Theme.cardRadius)
    }

    function takeFocus() {
        if (screen.phase === "empty")
            source.edit.forceActiveFocus()
        else
            result.edit.forceActiveFocus()
    }

    function begin() {
        source.page.contentY = 0
        takeFocus()
        if (screen.settings.translateWide)
            screen.setWide(true)
        screen.reportReady()
    }

    function act() {
        if (primary === "run") screen.run()
        else if (primary === "accept") screen.acceptToEditor()
        else if (primary === "paste") screen.paste()
    }

    function selectedText() {
        return source.edit.activeFocus ? source.edit.selectedText : result.edit.selectedText
    }

    function handleKey(event) {
        const control = event.modifiers === Qt.ControlModifier
        const plain = event.modifiers === Qt.NoModifier || event.modifiers === Qt.KeypadModifier
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (control) return screen.acceptToEditor()
            if (plain) return act()
            break
        case Qt.Key_Escape: return generating ? screen.stop() : screen.dismiss()
        case Qt.Key_Tab: return Keyboard.move(root, true)
        case Qt.Key_Backtab: return Keyboard.move(root, false)
        case Qt.Key_C: if (control) return screen.copy(selectedText()); break
        case Qt.Key_R: if (control) return screen.run(); break
        case Qt.Key_B: if (control) return screen.setWide(!wide); break
        default:
            const at = event.key - Qt.Key_1
            if (control && at >= 0 && at < screen.choices.length) {
                screen.choice = screen.choices[at].id
                return
            }
        }
        event.accepted = false
    }

    Connections {
        target: root.screen
        function onSessionBegan() { root.begin() }
        function onFocusWanted() { root.takeFocus() }
    }

    Rectangle {
        anchors.fill: parent
        visible: !root.composited
        color: Theme.window
    }
    Repeater {
        model: root.composited ? 6 : 0
        Rectangle {
            required property int index
            anchors { fill: card; margins: -1 - index * 2; topMargin: 1 - index; bottomMargin: -2 - index * 2 }
            radius: Theme.cardRadius + index * 2
            color: "transparent"
            border.width: 2
            border.color: Qt.rgba(0, 0, 0, 0.16 - index * 0.026)
        }
    }

    Card {
        id: card
        anchors { fill: parent; margins: 14 }
        color: "transparent"
        border.color: Theme.line
        onXChanged: root.reportCard()
        onWidthChanged: Qt.callLater(root.reportCard)
        onHeightChanged: Qt.callLater(root.reportCard)

        Symbol {
            id: emblem
            anchors { left: parent.left; leftMargin: 16; top: parent.top; topMargin: 15 }
            width: 20
            height: 20
            name: root.screen.mode in root.titles ? root.screen.mode : "translate"
            color: Theme.accent
        }
        Text {
            id: title
            anchors { left: emblem.right; leftMargin: 9; verticalCenter: emblem.verticalCenter }
            text: root.titles[root.screen.mode] ?? "Translate"
            color: Theme.text
            font.pixelSize: 16
            font.weight: Font.DemiBold
        }
        UpdateChip {
            anchors { right: tools.left; rightMargin: 8; verticalCenter: emblem.verticalCenter }
            width: Math.min(implicitWidth, tools.x - title.x - title.width - 24)
            updates: root.screen.updates
        }
        Row {
            id: tools
            anchors { right: parent.right; rightMargin: 12; verticalCenter: emblem.verticalCenter }
            spacing: 2

            IconButton {
                symbol: "restart"
                label: "Run again (Ctrl R)"
                visible: !root.generating && root.screen.text.trim().length > 0
                onClicked: root.screen.run()
            }
            IconButton {
                symbol: "columns"
                label: "Side by side (Ctrl B)"
                active: root.wide
                onClicked: root.screen.setWide(!root.wide)
            }
            IconButton {
                symbol: "close"
                label: "Close (Esc)"
                onClicked: root.screen.dismiss()
            }
        }
        ChoiceRow {
            id: choices
            anchors {
                left: parent.left; leftMargin: 16; right: parent.right; rightMargin: 16
                top: emblem.bottom; topMargin: 14
            }
            screen: root.screen
        }

        Item {
            id: body
            anchors {
                left: parent.left; right: parent.right; leftMargin: 14; rightMargin: 14
                top: choices.visible ? choices.bottom : emblem.bottom; topMargin: 12
                bottom: permission.visible ? permission.top : actions.top; bottomMargin: 10
            }
            TextPane {
                id: source
                objectName: "source"
                width: root.wide ? (parent.width - 10) / 2 : parent.width
                height: root.wide ? parent.height
                    : Math.max(82, Math.min(wantedHeight, parent.height * 0.38))
                title: root.screen.phase === "empty" ? "Text" : root.screen.fromEditor ? "From your note" : "Selected text"
                placeholder: "Type a text here"
                onKeyPressed: event => root.handleKey(event)
                edit.onTextChanged: root.screen.text = edit.text

                Text {
                    visible: root.screen.edited && root.screen.phase !== "waiting"
                    text: "↵ runs with the changed text"
                    color: Theme.accent
                    rightPadding: 6
                    font.pixelSize: Theme.tinySize
                }
                Connections {
                    target: root.screen
                    function onTextChanged() {
                        if (source.edit.text !== root.screen.text)
                            source.edit.text = root.screen.text
                    }
                }
                Component.onCompleted: edit.text = root.screen.text
            }
            ResultPane {
                id: result
                objectName: "result"
                x: root.wide ? source.width + 10 : 0
                y: root.wide ? 0 : source.height + 10
                width: source.width
                height: parent.height - y
                screen: root.screen
                onKeyPressed: event => root.handleKey(event)
            }
        }

        Rectangle {
            id: permission
            visible: !root.screen.mayPaste
            anchors {
                left: parent.left; right: parent.right; leftMargin: 14; rightMargin: 14
                bottom: actions.top; bottomMargin: 8
            }
            height: 48
            radius: 12
            color: Theme.field

            PermissionRow {
                anchors.fill: parent
                advice: "Copy the result, then paste it yourself."
            }
        }
        ResultActions {
            id: actions
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            screen: root.screen
            primary: root.primary
            onActed: root.act()
        }
    }
}
