import QtQuick
import QtQuick.Controls
import Quorvin

/// A button that is nothing but its text.
AbstractButton {
    id: button

    required property color tint

    horizontalPadding: 8
    verticalPadding: 5
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Item {
        readonly property real radius: 6

        FocusRing {
            control: button
            gap: 0
        }
    }
    contentItem: Text {
        text: button.text
        font: button.font
        color: button.tint
        opacity: button.down ? 0.7 : 1

        Rectangle {
            objectName: "underline"
            y: parent.baselineOffset + 2
            width: parent.width
            height: 1
            color: button.tint
            visible: button.hovered
        }
    }
}
