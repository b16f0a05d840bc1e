import QtQuick
import Quorvin

/// A command as a symbol.
CompactButton {
    id: button

    required property string systemName

    implicitWidth: 22
    Accessible.name: toolTip

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: button.systemName
            size: 11
            color: button.tint
            opacity: 0.9
        }
    }
}
