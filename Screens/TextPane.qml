import QtQuick
import Zephyx.Screens

/// A titled text that scrolls. What is put in stands at the right of the title.
Rectangle {
    id: pane

    property string title
    property string placeholder
    property alias edit: edit
    property alias page: page
    property bool readOnly: false
    readonly property real wantedHeight: edit.contentHeight + 58
    default property alias extras: slot.data
    signal keyPressed(var event)

    radius: 12
    color: readOnly ? "transparent" : Theme.card
    border.width: 1
    border.color: edit.activeFocus ? Theme.accent : Theme.lineSoft

    Text {
        id: heading
        anchors { left: parent.left; leftMargin: 14; top: parent.top; topMargin: 11 }
        text: pane.title
        color: Theme.textFaint
        font.pixelSize: Theme.tinySize
        font.weight: Font.DemiBold
    }
    Row {
        id: slot
        anchors { right: parent.right; rightMargin: 8; verticalCenter: heading.verticalCenter }
        spacing: 8
    }
    Flickable {
        id: page

        readonly property bool atEnd: contentY >= contentHeight - height - 24

        anchors {
            left: parent.left; right: parent.right; top: heading.bottom; bottom: parent.bottom
            leftMargin: 14; rightMargin: 6; topMargin: 8; bottomMargin: 10
        }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentWidth: width
        contentHeight: Math.max(height, edit.contentHeight + 4)
        interactive: contentHeight > height

        function follow(cursor) {
            if (cursor.y < contentY)
                contentY = cursor.y
            else if (cursor.y + cursor.height > contentY + height)
                contentY = cursor.y + cursor.height - height
        }

        TextEdit {
            id: edit
            width: page.width - 14
            height: page.contentHeight
            readOnly: pane.readOnly
            activeFocusOnTab: true
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.inkOnAccent
            selectByMouse: true
            selectByKeyboard: true
            font.pixelSize: Theme.textSize + 1
            Accessible.role: Accessible.EditableText
            Accessible.name: pane.title
            Accessible.readOnly: pane.readOnly
            Keys.onPressed: event => pane.keyPressed(event)
            onCursorRectangleChanged: if (activeFocus && !pane.readOnly) page.follow(cursorRectangle)

            Text {
                width: parent.width
                visible: edit.length === 0 && edit.preeditText.length === 0
                text: pane.placeholder
                color: Theme.textFaint
                wrapMode: Text.Wrap
                font: edit.font
            }
        }
    }
    ScrollMark { view: page }
}
