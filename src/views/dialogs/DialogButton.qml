import QtQuick
import QtQuick.Controls
import Quorvin

/// A button at the foot of a dialog. Space and Return press it.
AbstractButton {
    id: button

    required property color tint
    /// What Return does unless another button has the focus.
    property bool isDefault: false
    property color ringColor: Look.accent

    horizontalPadding: 16
    verticalPadding: 8
    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: topPadding + implicitContentHeight + bottomPadding
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    font: Typeface.font(13, isDefault ? Font.Medium : Font.Normal)
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: 8
        color: Qt.alpha(button.tint, button.isDefault ? (button.hovered ? 1 : 0.88)
                                                      : (button.hovered ? 0.22 : 0.1))
        border.color: Qt.alpha(button.tint, button.hovered ? 0.4 : 0.2)
        opacity: button.down ? 0.75 : 1

        Behavior on color { ColorAnimation { duration: 150 } }

        FocusRing {
            visible: button.visualFocus
            border.color: button.ringColor
        }
    }
    contentItem: Text {
        text: button.text
        font: button.font
        color: button.isDefault ? Look.bgBase : button.tint
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
