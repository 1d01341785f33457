import QtQuick

/// On or off. Whoever owns it sets `checked`, also after the user asked for a change.
Rectangle {
    id: toggle

    property string label
    property bool checked: false
    signal toggled

    activeFocusOnTab: true
    implicitWidth: 42
    implicitHeight: 24
    radius: height / 2
    color: checked ? Theme.accent : Theme.line
    border.width: activeFocus ? 2 : 0
    border.color: checked ? Theme.text : Theme.accent
    opacity: area.pressed ? 0.8 : 1

    Accessible.role: Accessible.CheckBox
    Accessible.name: label
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.focusable: true
    Accessible.onToggleAction: toggled()
    Accessible.onPressAction: toggled()

    Keys.onPressed: event => { if (Keyboard.presses(event)) toggled() }

    Rectangle {
        y: 3
        x: toggle.checked ? parent.width - width - 3 : 3
        width: 18
        height: 18
        radius: 9
        color: toggle.checked ? Theme.inkOnAccent : Theme.text

        Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }
    }
    MouseArea {
        id: area
        anchors.fill: parent
        anchors.margins: -6
        cursorShape: Qt.PointingHandCursor
        onClicked: toggle.toggled()
    }
}
