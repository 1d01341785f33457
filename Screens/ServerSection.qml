import QtQuick
import Zephyx.Screens

SettingsSection {
    id: section

    required property ServerSettings server
    property bool entersKey: false

    title: "AI server"

    // A keyring may come or go while the program runs.
    Component.onCompleted: server.lookForStore()
    Window.onActiveChanged: if (Window.active) server.lookForStore()

    function storeKey(text) {
        if (text.length === 0) return
        entersKey = false
        server.storeKey(text)
    }

    SettingsRow {
        title: "Address"
        explanation: section.server.addressProblem.length > 0 ? section.server.addressProblem
            : "Any server that speaks the chat-completions protocol."
        isProblem: section.server.addressProblem.length > 0
        LineField {
            objectName: "address"
            label: "Address of the AI server"
            placeholder: "http://localhost:8080"
            value: section.server.address
            onChosen: text => section.server.address = text
        }
    }
    SettingsRow {
        title: "Model"
        explanation: "As the server names it. May stay empty where there is but one."
        LineField {
            label: "Model"
            placeholder: "The server's own choice"
            value: section.server.model
            onChosen: text => section.server.model = text
        }
    }
    SettingsRow {
        title: "Key"
        explanation: section.server.keyProblem.length > 0 ? section.server.keyProblem
            : section.server.hasKey ? "Kept in the system's secret store, for this server alone."
            : section.server.isLocal ? "A server on this computer needs none."
            : "Goes into the system's secret store, not into a file."
        isProblem: section.server.keyProblem.length > 0
        Row {
            spacing: 8

            LineField {
                id: key
                objectName: "key"
                visible: !stored.visible
                implicitWidth: 300 - store.width - parent.spacing
                label: "Key for the AI server"
                placeholder: "Paste the key here"
                secret: true
                input.onAccepted: store.clicked()
            }
            PushButton {
                id: store
                visible: key.visible
                height: key.height
                label: "Keep"
                spokenLabel: "Keep the key"
                enabled: key.input.text.trim().length > 0 && !section.server.busy
                onClicked: {
                    section.storeKey(key.input.text)
                    key.input.clear()
                }
            }
            Text {
                id: stored
                anchors.verticalCenter: parent.verticalCenter
                visible: section.server.hasKey && !section.entersKey
                text: "••••••••••••"
                color: Theme.textSoft
                font.pixelSize: Theme.textSize
                Accessible.role: Accessible.StaticText
                Accessible.name: "A key is kept"
            }
            PushButton {
                visible: stored.visible
                label: "Replace"
                spokenLabel: "Replace the key"
                enabled: !section.server.busy
                onClicked: { section.entersKey = true; key.input.forceActiveFocus() }
            }
            PushButton {
                visible: stored.visible
                label: "Remove"
                spokenLabel: "Remove the key"
                enabled: !section.server.busy
                onClicked: section.server.removeKey()
            }
        }
    }
}
