import QtQuick
import Zephyx.Screens

SettingsSection {
    id: section

    required property AgentSettings agents

    title: "Coding agents, in the menu"

    Component.onCompleted: agents.refresh()

    Repeater {
        model: section.agents
        SettingsRow {
            id: row

            required property int index
            required property string name
            required property string purpose
            required property bool shown
            required property string problem

            title: name
            explanation: problem.length > 0 ? problem : purpose
            isProblem: problem.length > 0
            divided: index > 0
            Toggle {
                label: "Show " + row.name + " in the menu"
                checked: row.shown
                onToggled: section.agents.setShown(row.index, !row.shown)
            }
        }
    }
}
