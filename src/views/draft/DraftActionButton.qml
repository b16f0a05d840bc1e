import QtQuick
import QtQuick.Controls
import Quorvin

/// A small button in a colour of its own, which turns its ground under the pointer. A symbol stands
/// in front of the label if `icon.name` is given.
AbstractButton {
    id: button

    required property string label
    required property color color

    /// From 0 to 1 while the pointer comes.
    property double hoverAmount: hovered ? 1 : 0
    readonly property color foreground: Qt.tint(color, Qt.rgba(1, 1, 1, hoverAmount))

    Behavior on hoverAmount { NumberAnimation { duration: 150; easing.type: Easing.InOutQuad } }

    text: label
    horizontalPadding: 9
    verticalPadding: 5
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    background: Rectangle {
        objectName: "actionGround"
        radius: 6
        color: Qt.alpha(button.color, 0.14 + (0.9 - 0.14) * button.hoverAmount)
        border.width: 1
        border.color: Qt.alpha(button.color, 0.25)

        FocusRing {
            control: button
        }
    }
    contentItem: Row {
        spacing: 4

        Symbol {
            objectName: "actionSymbol"
            anchors.verticalCenter: parent.verticalCenter
            visible: name !== ""
            name: button.icon.name
            size: 10
            color: button.foreground
        }
        Text {
            objectName: "actionLabel"
            anchors.verticalCenter: parent.verticalCenter
            text: button.label
            font: Typeface.font(11)
            color: button.foreground
        }
    }
    Accessible.name: label
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
}
