import QtQuick
import Zephyx.Screens

/// Why there is no answer, and what can be done.
Column {
    id: notice

    required property TranslateController screen
    readonly property bool unset: screen.errorCode === "not_configured"

    spacing: 10

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 30
        height: 30
        name: notice.unset ? "sliders" : "warning"
        color: notice.unset ? Theme.accent : Theme.danger
    }
    Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: notice.unset ? "Set up a server first" : "This did not work"
        color: Theme.text
        font.pixelSize: Theme.textSize + 1
        font.weight: Font.DemiBold
    }
    Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: notice.screen.errorMessage
        textFormat: Text.PlainText
        color: Theme.textSoft
        wrapMode: Text.Wrap
        maximumLineCount: 5
        elide: Text.ElideRight
        font.pixelSize: Theme.smallSize + 1
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    Text {
        width: parent.width
        visible: notice.unset
        horizontalAlignment: Text.AlignHCenter
        text: "Open Zephyx, choose Settings (" + notice.screen.settings.settingsShortcut
            + ") and enter its address there.\nOne on this computer, such as "
            + "localhost:8080, needs no key."
        color: Theme.textFaint
        wrapMode: Text.Wrap
        lineHeight: 1.15
        font.pixelSize: Theme.smallSize
    }
    PushButton {
        anchors.horizontalCenter: parent.horizontalCenter
        label: "Try again"
        onClicked: notice.screen.run()
    }
}
