import QtQuick
import Zephyx.Screens

Card {
    id: card

    required property string title
    required property string text
    required property bool opensMenu
    signal dismissed

    height: words.height + 22
    radius: 12

    Rectangle {
        anchors { left: parent.left; top: parent.top; bottom: parent.bottom; margins: 10 }
        width: 3
        color: Theme.warning
    }
    Column {
        id: words
        anchors {
            left: parent.left; leftMargin: 22; right: parent.right; rightMargin: 12
            verticalCenter: parent.verticalCenter
        }
        spacing: 6

        Text {
            width: parent.width - close.width
            text: card.title
            color: Theme.text
            wrapMode: Text.Wrap
            font.pixelSize: Theme.smallSize
            font.weight: Font.DemiBold
        }
        Text {
            width: parent.width
            text: card.text
            textFormat: Text.PlainText
            color: Theme.textSoft
            wrapMode: Text.Wrap
            font.pixelSize: Theme.smallSize
            Accessible.role: Accessible.AlertMessage
            Accessible.name: card.title + ". " + text
        }
        PushButton {
            visible: card.opensMenu
            label: "Open the menu"
            onClicked: desktop.openMenu()
        }
    }
    IconButton {
        id: close
        anchors { right: parent.right; top: parent.top; margins: 4 }
        symbol: "close"
        label: "Do not show this again"
        onClicked: card.dismissed()
    }
}
