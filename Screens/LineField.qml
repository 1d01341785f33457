import QtQuick

/// One line of text, taken over when it is left or with Enter.
Rectangle {
    id: field

    property string value
    property string label
    property string placeholder
    property bool secret: false
    property alias input: input
    signal chosen(string text)

    implicitWidth: 300
    implicitHeight: 32
    radius: 8
    color: Theme.field
    border.width: input.activeFocus ? 2 : 1
    border.color: input.activeFocus ? Theme.accent : Theme.line

    onValueChanged: input.text = value

    TextInput {
        id: input
        anchors { fill: parent; leftMargin: 10; rightMargin: 10 }
        clip: true
        text: field.value
        verticalAlignment: TextInput.AlignVCenter
        activeFocusOnTab: true
        echoMode: field.secret ? TextInput.Password : TextInput.Normal
        maximumLength: 4096
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.inkOnAccent
        selectByMouse: true
        font.pixelSize: Theme.smallSize + 1
        Accessible.role: Accessible.EditableText
        Accessible.name: field.label
        // The name of a field for a secret is kept secret, too.
        Accessible.description: field.secret ? field.label : ""
        Accessible.passwordEdit: field.secret
        onEditingFinished: field.chosen(text)

        Text {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            visible: input.text.length === 0 && input.preeditText.length === 0
            text: field.placeholder
            color: Theme.textFaint
            elide: Text.ElideRight
            font: input.font
        }
    }
}
