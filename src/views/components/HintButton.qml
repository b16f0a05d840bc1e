import QtQuick
import Quorvin

/// A command and the key that does the same.
CompactButton {
    id: button

    required property string label
    required property string shortcut

    tint: "#00e5ff"
    leftPadding: 5
    rightPadding: 5
    Accessible.name: label
    Accessible.description: shortcut

    contentItem: Item {
        implicitWidth: words.implicitWidth

        Row {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            Text {
                text: button.label
                font.pixelSize: 11
                color: "white"
                opacity: button.hovered ? 1.0 : 0.78

                Behavior on opacity { NumberAnimation { duration: 200 } }
            }
            Text {
                text: button.shortcut
                font.pixelSize: 11
                color: "white"
                opacity: button.hovered ? 0.85 : 0.45

                Behavior on opacity { NumberAnimation { duration: 200 } }
            }
        }
    }
}
