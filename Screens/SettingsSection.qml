import QtQuick

Column {
    id: section

    property string title
    default property alias rows: body.data

    width: parent ? parent.width : 0
    spacing: 8

    Text {
        leftPadding: 4
        text: section.title
        color: Theme.textSoft
        font.pixelSize: Theme.smallSize
        font.weight: Font.DemiBold
    }
    Card {
        width: parent.width
        height: body.height
        radius: 12

        Column {
            id: body
            width: parent.width
        }
    }
}
