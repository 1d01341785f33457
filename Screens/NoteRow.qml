import QtQuick

Item {
    id: row

    required property int index
    required property string title
    required property string snippet
    required property string age
    property bool current: false
    signal clicked

    height: 60

    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.selectable: true
    Accessible.selected: current
    Accessible.onPressAction: clicked()

    Rectangle {
        anchors { fill: parent; topMargin: 2; bottomMargin: 2 }
        radius: Theme.radius
        color: row.current ? Theme.accentSoft : area.containsMouse ? Theme.hover : "transparent"
    }
    Rectangle {
        visible: row.current
        anchors { left: parent.left; verticalCenter: parent.verticalCenter }
        width: 3
        radius: 1.5
        height: parent.height - 26
        color: Theme.accent
    }
    Column {
        anchors {
            left: parent.left; leftMargin: 14; right: parent.right; rightMargin: 12
            verticalCenter: parent.verticalCenter
        }
        spacing: 5

        Text {
            width: parent.width
            text: row.title
            textFormat: Text.PlainText
            color: Theme.text
            elide: Text.ElideRight
            font.pixelSize: Theme.textSize
            font.weight: Font.DemiBold
        }
        Text {
            width: parent.width
            text: row.snippet.length > 0 ? row.age + "   " + row.snippet : row.age
            textFormat: Text.PlainText
            color: Theme.textFaint
            elide: Text.ElideRight
            font.pixelSize: Theme.smallSize
        }
    }
    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onClicked: row.clicked()
    }
}
