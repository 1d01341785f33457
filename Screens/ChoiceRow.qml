import QtQuick
import Zephyx.Screens

Row {
    id: row

    required property TranslateController screen

    visible: screen.choices.length > 0
    spacing: 6

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: row.screen.mode === "improve" ? "Tone" : "Into"
        color: Theme.textFaint
        rightPadding: 4
        font.pixelSize: Theme.smallSize
    }
    Repeater {
        model: row.screen.choices
        FilterChip {
            required property var modelData
            label: modelData.label
            checked: row.screen.choice === modelData.id
            onClicked: row.screen.choice = modelData.id
        }
    }
}
