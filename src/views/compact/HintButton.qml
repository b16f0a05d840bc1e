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

            y: 13 - children[0].baselineOffset
            spacing: 4

            HintText {
                text: button.label
                opacity: button.hovered ? 1.0 : 0.78
            }
            HintText {
                text: button.shortcut
                opacity: button.hovered ? 0.85 : 0.45
            }
        }
    }

    component HintText: Text {
        objectName: "hintText"
        font: Typeface.font(11)
        color: "white"

        Behavior on opacity { NumberAnimation { duration: 200; easing.type: Easing.InOutQuad } }
    }
}
