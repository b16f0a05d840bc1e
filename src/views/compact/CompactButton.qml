import QtQuick
import QtQuick.Controls
import Quorvin

/// What the panel's buttons have in common: no focus, and a tinted ground under the pointer.
AbstractButton {
    id: button

    required property color tint

    implicitHeight: 18
    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    focusPolicy: Qt.NoFocus
    hoverEnabled: true

    background: Rectangle {
        radius: 5
        color: button.tint
        opacity: button.hovered ? 0.16 : 0

        Behavior on opacity { NumberAnimation { duration: 200; easing.type: Easing.InOutQuad } }
    }
}
