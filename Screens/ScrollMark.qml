import QtQuick

Item {
    required property Flickable view

    anchors { top: view.top; bottom: view.bottom; right: view.right; rightMargin: 2 }
    visible: view.visibleArea.heightRatio < 1
    width: 4

    Rectangle {
        width: parent.width
        height: Math.max(28, parent.height * view.visibleArea.heightRatio)
        y: (parent.height - height) * Math.min(1, view.visibleArea.yPosition
            / Math.max(0.001, 1 - view.visibleArea.heightRatio))
        radius: 2
        color: view.moving ? Theme.textFaint : Theme.line
    }
}
