import QtQuick
import Quorvin

/// A command as a symbol.
CompactButton {
    id: button

    required property string systemName
    required property string tooltip

    implicitWidth: 22
    Accessible.name: tooltip

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: button.systemName
            size: 11
            color: button.tint
            opacity: 0.9
        }
    }

    CompactToolTip {
        text: button.tooltip
        visible: button.hovered && !button.down
    }
}
