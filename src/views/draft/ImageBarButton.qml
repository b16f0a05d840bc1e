import QtQuick
import QtQuick.Controls
import Quorvin

/// A sign on a small square. What it does is said by `text`, for those who can't see it.
AbstractButton {
    id: button

    required property string sign

    implicitWidth: 22
    implicitHeight: 22
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    background: Rectangle {
        radius: 4
        color: Qt.rgba(1, 1, 1, 0.08)

        FocusRing {
            control: button
        }
    }
    contentItem: Text {
        text: button.sign
        font: Typeface.font(14)
        color: button.hovered ? Look.textPrimary : Look.textSecondary
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
}
