import QtQuick
import Zephyx.Screens

Item {
    id: row

    required property int index
    required property string name
    required property string purpose
    required property var keys
    required property bool usual
    required property bool recording
    required property string problem
    required property HotkeySettings hotkeys

    width: parent ? parent.width : 0
    height: words.height + 22

    Rectangle {
        visible: row.index > 0
        anchors { left: parent.left; right: parent.right; leftMargin: 18; rightMargin: 1 }
        height: 1
        color: Theme.lineSoft
    }
    Column {
        id: words
        anchors {
            left: parent.left; leftMargin: 18; right: recorder.left; rightMargin: 16
            verticalCenter: parent.verticalCenter
        }
        spacing: 3

        Text {
            width: parent.width
            text: row.name
            color: Theme.text
            elide: Text.ElideRight
            font.pixelSize: Theme.textSize
        }
        Text {
            width: parent.width
            text: row.problem.length > 0 ? row.problem : row.purpose
            textFormat: Text.PlainText
            color: row.problem.length > 0 ? Theme.danger : Theme.textFaint
            wrapMode: Text.Wrap
            font.pixelSize: Theme.smallSize
            Accessible.role: row.problem.length > 0 ? Accessible.AlertMessage : Accessible.StaticText
            Accessible.name: text
        }
    }
    Rectangle {
        id: recorder
        anchors { right: reset.left; rightMargin: 4; verticalCenter: parent.verticalCenter }
        width: row.recording ? prompt.implicitWidth + 28 : caps.width + 16
        height: 34
        radius: 9
        color: row.recording ? Theme.accentSoft : area.containsMouse ? Theme.hover : "transparent"
        border.width: activeFocus || row.recording ? 2 : 1
        border.color: activeFocus || row.recording ? Theme.accent : Theme.lineSoft
        activeFocusOnTab: true

        Accessible.role: Accessible.Button
        Accessible.name: row.recording ? "Press the new combination for " + row.name
            : "Change the combination for " + row.name + ", now " + row.keys.join("+")
        Accessible.focusable: true
        Accessible.onPressAction: row.hotkeys.record(row.index)

        Keys.onPressed: event => {
            if (!row.recording) {
                if (Keyboard.presses(event)) row.hotkeys.record(row.index)
                return
            }
            event.accepted = true
            if (event.key === Qt.Key_Escape) row.hotkeys.cancelRecording()
        }

        KeyCaps {
            id: caps
            anchors.centerIn: parent
            visible: !row.recording
            keys: row.keys
        }
        Text {
            id: prompt
            anchors.centerIn: parent
            visible: row.recording
            text: "Press the new combination…  Esc cancels"
            color: Theme.accent
            font.pixelSize: Theme.smallSize
        }
        MouseArea {
            id: area
            anchors.fill: parent
            hoverEnabled: true
            cursorShape: Qt.PointingHandCursor
            onClicked: {
                recorder.forceActiveFocus()
                if (row.recording) row.hotkeys.cancelRecording()
                else row.hotkeys.record(row.index)
            }
        }
    }
    IconButton {
        id: reset
        anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
        opacity: row.usual ? 0 : 1
        enabled: !row.usual
        Accessible.ignored: row.usual
        symbol: "restart"
        label: "Back to the usual combination for " + row.name
        onClicked: row.hotkeys.reset(row.index)
    }
}
