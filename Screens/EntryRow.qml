import QtQuick
import Zephyx.Screens

Item {
    id: row

    required property int index
    required property string kind
    required property string preview
    required property string detail
    required property url thumbnail
    required property url appIcon
    required property bool pinned
    required property bool hasFile

    required property ClipboardController screen
    required property bool followsPointer
    readonly property bool current: ListView.isCurrentItem
    readonly property bool hovered: followsPointer && area.containsMouse
    readonly property bool hasPicture: thumbnail.toString().length > 0
    signal chosen(bool plainText)
    signal selected

    height: hasPicture ? 88 : words.lineCount > 1 ? 74 : 58

    Accessible.role: Accessible.ListItem
    Accessible.name: preview + ", " + detail
    Accessible.selectable: true
    Accessible.selected: current
    Accessible.focused: current
    Accessible.onPressAction: chosen(false)

    Rectangle {
        anchors { fill: parent; topMargin: 2; bottomMargin: 2 }
        radius: 12
        color: row.current ? Theme.accentSoft : row.hovered ? Theme.hover : "transparent"

        Rectangle {
            visible: row.current
            anchors { left: parent.left; verticalCenter: parent.verticalCenter }
            width: 3
            radius: 1.5
            height: parent.height - 24
            color: Theme.accent
        }
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: mouse => {
            row.selected()
            if (mouse.button === Qt.LeftButton)
                row.chosen((mouse.modifiers & Qt.ShiftModifier) !== 0)
        }
    }

    Rectangle {
        id: tile
        anchors { left: parent.left; leftMargin: 14; verticalCenter: parent.verticalCenter }
        width: row.hasPicture ? 108 : 38
        height: row.hasPicture ? 68 : 38
        radius: row.hasPicture ? 4 : Theme.radius
        color: Theme.field
        border.width: 1
        border.color: Theme.lineSoft

        Image {
            id: picture
            visible: row.hasPicture
            anchors { fill: parent; margins: 1 }
            source: row.thumbnail
            asynchronous: true
            cache: false
            fillMode: Image.PreserveAspectFit
            mipmap: true
        }
        Symbol {
            visible: !row.hasPicture || picture.status === Image.Error
            anchors.centerIn: parent
            width: 20
            height: 20
            name: ["url", "image", "file"].includes(row.kind) ? row.kind : "text"
            color: row.current ? Theme.accent : Theme.textSoft
        }
    }

    Column {
        anchors {
            left: tile.right; leftMargin: 12
            right: parent.right; rightMargin: 14
            verticalCenter: parent.verticalCenter
        }
        spacing: 5

        Text {
            id: words
            width: parent.width - (row.pinned ? 22 : 0)
            text: row.preview
            textFormat: Text.PlainText
            color: row.kind === "url" ? Theme.accent : Theme.text
            font.pixelSize: Theme.textSize
            wrapMode: row.kind === "url" || row.kind === "file" ? Text.WrapAnywhere : Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 2
        }
        Row {
            spacing: 6
            width: parent.width - (actions.active ? actions.width + 6 : 0)

            Image {
                id: icon
                visible: status === Image.Ready
                anchors.verticalCenter: parent.verticalCenter
                width: 15
                height: 15
                source: row.appIcon
                sourceSize: Qt.size(30, 30)
                asynchronous: true
                mipmap: true
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - (icon.visible ? 21 : 0)
                text: row.detail
                textFormat: Text.PlainText
                color: Theme.textFaint
                elide: Text.ElideRight
                font.pixelSize: Theme.tinySize
            }
        }
    }

    Symbol {
        visible: row.pinned && !actions.active
        anchors { right: parent.right; rightMargin: 14; top: parent.top; topMargin: 12 }
        width: 15
        height: 15
        name: "pin"
        color: Theme.accent
    }

    Loader {
        id: actions
        active: row.current || row.hovered
        anchors { right: parent.right; rightMargin: 8; bottom: parent.bottom; bottomMargin: 6 }
        sourceComponent: Row {
            IconButton {
                visible: row.kind === "url"
                symbol: "open"
                label: "Open the link"
                onClicked: row.screen.openLink(row.index)
            }
            IconButton {
                visible: row.hasFile
                symbol: "folder"
                label: "Show in the file manager"
                onClicked: row.screen.showInFileManager(row.index)
            }
            IconButton {
                symbol: "eye"
                label: "Preview"
                onClicked: row.screen.preview(row.index)
            }
            IconButton {
                symbol: "pin"
                label: row.pinned ? "Unpin" : "Pin"
                active: row.pinned
                onClicked: row.screen.togglePinned(row.index)
            }
            IconButton {
                symbol: "trash"
                label: "Remove"
                onClicked: row.screen.remove(row.index)
            }
        }
    }
}
