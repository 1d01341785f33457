import QtQuick
import Zephyx.Screens

Item {
    id: root

    required property MainController screen
    required property Item keysFirst  // sees the keys before the text does
    property bool applying: false

    function take() { editor.forceActiveFocus() }

    function apply() {
        if (editor.text === screen.text)
            return
        applying = true
        editor.text = screen.text
        editor.cursorPosition = 0
        page.contentY = 0
        applying = false
    }

    Component.onCompleted: { apply(); screen.setHasEditor(true) }
    Component.onDestruction: screen.setHasEditor(false)

    Connections {
        target: root.screen
        function onTextChanged() { root.apply() }
        function onSelectionWanted() { root.screen.giveSelection(editor.selectedText) }
        function onTextPasted(text) {
            editor.remove(editor.selectionStart, editor.selectionEnd)
            editor.insert(editor.cursorPosition, text)
            editor.forceActiveFocus()
        }
    }

    Text {
        id: edited
        anchors { left: parent.left; leftMargin: 24; top: parent.top; topMargin: 16 }
        text: root.screen.edited
        color: Theme.textFaint
        font.pixelSize: Theme.smallSize
    }
    IconButton {
        anchors { right: parent.right; rightMargin: 14; verticalCenter: edited.verticalCenter }
        visible: root.screen.currentRow >= 0
        symbol: "trash"
        label: "Delete the note"
        onClicked: root.screen.deleteNote()
    }

    Flickable {
        id: page
        anchors {
            left: parent.left; right: parent.right; top: edited.bottom; bottom: parent.bottom
            leftMargin: 24; rightMargin: 6; topMargin: 14; bottomMargin: 12
        }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentWidth: width
        contentHeight: Math.max(height, editor.implicitHeight)
        interactive: contentHeight > height

        function follow(cursor) {
            if (cursor.y < contentY)
                contentY = cursor.y
            else if (cursor.y + cursor.height > contentY + height)
                contentY = cursor.y + cursor.height - height
        }

        TextEdit {
            id: editor
            objectName: "editor"
            width: page.width - 18
            height: page.contentHeight
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.inkOnAccent
            selectByMouse: true
            persistentSelection: true
            activeFocusOnTab: true
            Keys.forwardTo: [root.keysFirst]
            font.pixelSize: 15
            Accessible.role: Accessible.EditableText
            Accessible.name: "Note"
            onTextChanged: if (!root.applying) root.screen.text = text
            onCursorRectangleChanged: page.follow(cursorRectangle)

            Text {
                visible: editor.length === 0 && editor.preeditText.length === 0
                text: "Write something…"
                color: Theme.textFaint
                font: editor.font
            }
        }
    }
    ScrollMark { view: page }
}
