import QtQuick
import Quorvin

/// A symbol in a softly glowing disc.
Item {
    id: badge

    required property string systemName
    required property real iconSize
    required property color tint

    implicitWidth: 116
    implicitHeight: 116

    CapsuleInk {
        objectName: "badgeDisc"
        anchors.fill: parent
        color: Qt.alpha(badge.tint, 0.12)
        shadowColor: Qt.alpha(badge.tint, 0.28)
        shadowRadius: 28
    }
    CapsuleInk {
        anchors.fill: parent
        color: Qt.alpha(badge.tint, 0.35)
        lineWidth: 1
    }
    Symbol {
        objectName: "badgeSymbol"
        anchors.centerIn: parent
        name: badge.systemName
        size: badge.iconSize
        color: badge.tint
    }
}
