import QtQuick

Row {
    property string keys
    property string action
    spacing: 5

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: cap.implicitWidth + 10
        height: 18
        radius: 5
        color: Theme.field
        border.width: 1
        border.color: Theme.lineSoft

        Text {
            id: cap
            anchors.centerIn: parent
            text: keys
            color: Theme.textSoft
            font.pixelSize: 10
        }
    }
    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: action
        color: Theme.textFaint
        font.pixelSize: Theme.tinySize
    }
}
