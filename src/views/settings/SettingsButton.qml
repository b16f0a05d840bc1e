import QtQuick
import QtQuick.Controls
import Quorvin

/// A small button on a card.
AbstractButton {
    id: button

    property bool accent: false
    property bool destructive: false

    readonly property color tint: destructive ? "#ef4444" : accent ? "#6366f1" : "white"

    horizontalPadding: 12
    verticalPadding: 5
    implicitWidth: Math.ceil(leftPadding + implicitContentWidth + rightPadding)
    implicitHeight: topPadding + implicitContentHeight + bottomPadding
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    font: Typeface.font(12, Font.Medium)
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        objectName: "settingsButtonGround"
        radius: 6
        color: button.accent && !button.destructive
               ? Qt.alpha(button.tint, button.hovered ? 1 : 0.88)
               : Qt.alpha(button.tint, button.hovered ? 0.2 : 0.1)
        border.color: Qt.alpha(button.tint, button.accent ? 0 : 0.2)
        opacity: button.down ? 0.75 : 1

        Behavior on color { ColorAnimation { duration: 120 } }

        FocusRing {
            control: button
            border.color: "white"
        }
    }
    contentItem: Text {
        text: button.text
        font: button.font
        color: button.destructive ? Qt.lighter(button.tint, 1.25) : "white"
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
