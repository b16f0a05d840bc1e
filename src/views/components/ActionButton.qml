import QtQuick
import QtQuick.Controls
import Quorvin

/// A plain button.
Button {
    id: button

    implicitHeight: 36
    padding: Look.spacing
    focusPolicy: Qt.StrongFocus
    font.pixelSize: 14
    Accessible.name: text
    Accessible.onPressAction: click()

    background: Rectangle {
        radius: Look.radius
        color: button.down ? Look.border
                           : button.enabled && button.hovered ? Qt.lighter(Look.bgSurface, 1.3)
                                                              : Look.bgSurface
        border.color: button.visualFocus ? Look.accent : Look.border
    }
    contentItem: Text {
        text: button.text
        font: button.font
        color: Look.textPrimary
        opacity: button.enabled ? 1 : 0.4
        elide: Text.ElideMiddle
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
