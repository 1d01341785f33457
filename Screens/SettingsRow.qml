import QtQuick

Item {
    id: row

    property string title
    property string explanation
    property bool isProblem: false
    /// A line separates it from the row above.
    property bool divided: false
    default property alias control: slot.data

    width: parent ? parent.width : 0
    height: Math.max(words.height, slot.childrenRect.height) + 26

    Rectangle {
        visible: row.divided
        anchors { left: parent.left; right: parent.right; leftMargin: 18; rightMargin: 1 }
        height: 1
        color: Theme.lineSoft
    }
    Column {
        id: words
        anchors {
            left: parent.left; leftMargin: 18; right: slot.left; rightMargin: 16
            verticalCenter: parent.verticalCenter
        }
        spacing: 4

        Text {
            width: parent.width
            text: row.title
            color: Theme.text
            wrapMode: Text.Wrap
            font.pixelSize: Theme.textSize
        }
        Text {
            width: parent.width
            visible: text.length > 0
            text: row.explanation
            color: row.isProblem ? Theme.danger : Theme.textFaint
            wrapMode: Text.Wrap
            font.pixelSize: Theme.smallSize
        }
    }
    Item {
        id: slot
        anchors { right: parent.right; rightMargin: 18; verticalCenter: parent.verticalCenter }
        width: childrenRect.width
        height: childrenRect.height
    }
}
