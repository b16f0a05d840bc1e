import QtQuick

/// The line beneath a row of a card that is followed by another one.
Rectangle {
    objectName: "rowDivider"
    anchors.left: parent.left
    anchors.leftMargin: 16
    anchors.right: parent.right
    anchors.bottom: parent.bottom
    height: 1
    color: Qt.rgba(1, 1, 1, 0.06)
}
