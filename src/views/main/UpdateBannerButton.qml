import QtQuick
import QtQuick.Controls
import Quorvin

/// What the user can do about an update.
AbstractButton {
    id: button

    leftPadding: 14
    rightPadding: 14
    topPadding: 6
    bottomPadding: 6
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    font: Typeface.font(11)
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        objectName: "bannerButtonPane"
        radius: 6
        color: Qt.alpha(button.down ? Qt.darker(SystemColor.orange, 1.15) : SystemColor.orange,
                        button.hovered || button.down ? 1 : 0.85)

        FocusRing {
            visible: button.visualFocus
        }
    }
    contentItem: Text {
        text: button.text
        font: button.font
        color: "white"
    }
}
