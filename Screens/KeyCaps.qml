import QtQuick

/// A combination of keys, each as a key.
Row {
    id: caps

    property var keys: []

    spacing: 4
    Accessible.role: Accessible.StaticText
    Accessible.name: keys.join("+")

    Repeater {
        model: caps.keys
        Rectangle {
            required property string modelData
            width: Math.max(26, name.implicitWidth + 14)
            height: 24
            radius: 6
            color: Theme.field
            border.width: 1
            border.color: Theme.line

            Text {
                id: name
                anchors.centerIn: parent
                text: modelData
                textFormat: Text.PlainText
                color: Theme.text
                font.pixelSize: Theme.tinySize
                font.weight: Font.DemiBold
            }
        }
    }
}
