import QtQuick

Rectangle {
    color: Theme.card
    radius: Theme.cardRadius
    border.color: Theme.line
    border.width: 1
}
