import QtQuick
import Zephyx.Screens

/// The answer as it comes, and what is to be said when there is none.
TextPane {
    id: pane

    required property TranslateController screen
    readonly property bool writing: screen.phase === "generating"
    readonly property bool failed: screen.phase === "failed"
    property bool caretLit: true

    title: writing ? "Writing…" : screen.phase === "stopped" ? "Stopped" : "Result"
    readOnly: true
    placeholder: screen.phase === "waiting" ? "Reading the selection…"
        : screen.phase === "stopped" ? "Stopped before anything came." : ""

    function reset() {
        edit.text = screen.result()
        page.contentY = 0
    }

    Component.onCompleted: reset()

    Connections {
        target: pane.screen
        function onResultReset() { pane.reset() }
        function onResultAppended(piece) {
            const follows = pane.page.atEnd
            pane.edit.insert(pane.edit.length, piece)
            if (follows)
                pane.page.contentY = Math.max(0, pane.page.contentHeight - pane.page.height)
        }
    }

    Row {
        anchors.verticalCenter: parent.verticalCenter
        visible: pane.writing
        spacing: 4
        rightPadding: 6

        Repeater {
            model: 3
            Rectangle {
                required property int index
                width: 5
                height: 5
                radius: 2.5
                color: Theme.accent
                opacity: pulse.step % 3 === index ? 1 : 0.3
            }
        }
    }
    Timer {
        id: pulse
        property int step: 0
        running: pane.writing && pane.Window.visibility !== Window.Hidden
        repeat: true
        interval: 280
        onTriggered: { ++step; pane.caretLit = !pane.caretLit }
    }
    Rectangle {
        parent: pane.edit
        // The length is named so that the place is found anew with each piece.
        readonly property rect end: pane.edit.length >= 0 && pane.edit.contentHeight > 0
            ? pane.edit.positionToRectangle(pane.edit.length) : Qt.rect(0, 0, 0, 0)
        visible: pane.writing && pane.caretLit
        x: end.x + 1
        y: end.y + 2
        width: 2
        height: Math.max(14, end.height - 4)
        radius: 1
        color: Theme.accent
    }
    Rectangle {
        id: failureBar
        parent: pane
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 8 }
        visible: pane.failed && pane.screen.hasResult
        height: 48
        radius: 9
        color: Theme.popup
        border.width: 1
        border.color: Theme.line

        Symbol {
            id: barSign
            anchors { left: parent.left; leftMargin: 12; verticalCenter: parent.verticalCenter }
            name: "warning"
            color: Theme.danger
        }
        Text {
            anchors {
                left: barSign.right; leftMargin: 9; right: again.left; rightMargin: 10
                verticalCenter: parent.verticalCenter
            }
            text: pane.screen.errorMessage
            textFormat: Text.PlainText
            color: Theme.text
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            font.pixelSize: Theme.smallSize
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        PushButton {
            id: again
            anchors { right: parent.right; rightMargin: 9; verticalCenter: parent.verticalCenter }
            label: "Try again"
            onClicked: pane.screen.run()
        }
    }
    FailureNotice {
        parent: pane
        anchors.centerIn: parent
        width: Math.min(parent.width - 48, 470)
        visible: pane.failed && !pane.screen.hasResult
        screen: pane.screen
    }
    Column {
        parent: pane
        anchors.centerIn: parent
        width: parent.width - 48
        visible: pane.screen.phase === "empty"
        spacing: 8

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Nothing was selected"
            color: Theme.text
            font.pixelSize: Theme.textSize + 1
            font.weight: Font.DemiBold
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Select a text and press the hotkey again, or type one into the other field."
            color: Theme.textFaint
            wrapMode: Text.Wrap
            font.pixelSize: Theme.smallSize
        }
    }
}
