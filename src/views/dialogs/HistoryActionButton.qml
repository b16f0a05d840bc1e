import QtQuick
import QtQuick.Controls
import Quorvin

/// A small button in a row of the history.
AbstractButton {
    id: button

    required property string label
    required property color color
    /// By Tab.
    property bool isReachable: true
    readonly property bool isHovered: hovered

    text: label
    horizontalPadding: 10
    verticalPadding: 4
    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: topPadding + implicitContentHeight + bottomPadding
    hoverEnabled: true
    focusPolicy: isReachable || activeFocus ? Qt.TabFocus : Qt.NoFocus
    font: Typeface.font(10)
    Accessible.name: label
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        objectName: "actionGround"
        radius: 6
        color: Qt.alpha(button.color, button.isHovered ? 0.9 : 0.08)
        border.color: Qt.alpha(button.color, button.isHovered ? 0.6 : 0.3)

        Behavior on color { ColorAnimation { duration: 200; easing.type: Easing.InOutQuad } }

        FocusRing {
            visible: button.visualFocus
            gap: 2
            border.color: "white"
        }
    }
    contentItem: Text {
        text: button.text
        font: button.font
        color: button.isHovered ? "white" : Qt.lighter(button.color, 1.25)
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
