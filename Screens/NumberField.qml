import QtQuick

Row {
    id: field

    property int value
    property int step: 50
    property int minimum: 10
    property int maximum: 100000
    property string label
    signal chosen(int value)

    spacing: 6

    function take(number) {
        if (!isNaN(number))
            chosen(Math.max(minimum, Math.min(maximum, number)))
        input.text = value
    }

    onValueChanged: input.text = value

    PushButton {
        label: "−"
        spokenLabel: field.label + ": fewer"
        implicitWidth: 32
        onClicked: field.take(field.value - field.step)
    }
    Rectangle {
        width: 76
        height: 30
        radius: 8
        color: Theme.field
        border.width: input.activeFocus ? 2 : 1
        border.color: input.activeFocus ? Theme.accent : Theme.line

        TextInput {
            id: input
            anchors.fill: parent
            horizontalAlignment: TextInput.AlignHCenter
            verticalAlignment: TextInput.AlignVCenter
            text: field.value
            validator: IntValidator { bottom: 0 }
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.inkOnAccent
            selectByMouse: true
            activeFocusOnTab: true
            font.pixelSize: Theme.textSize
            Accessible.role: Accessible.SpinBox
            Accessible.name: field.label
            Accessible.onIncreaseAction: field.take(field.value + field.step)
            Accessible.onDecreaseAction: field.take(field.value - field.step)
            Keys.onUpPressed: field.take(field.value + field.step)
            Keys.onDownPressed: field.take(field.value - field.step)
            onEditingFinished: field.take(parseInt(text))
        }
    }
    PushButton {
        label: "+"
        spokenLabel: field.label + ": more"
        implicitWidth: 32
        onClicked: field.take(field.value + field.step)
    }
}
