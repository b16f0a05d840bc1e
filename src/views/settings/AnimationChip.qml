import QtQuick
import QtQuick.Controls
import Quorvin

/// A style of the ring, to choose.
AbstractButton {
    id: chip

    required property string name
    required property bool isSelected

    text: SettingsTexts.capitalized(name)
    implicitHeight: 34
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    font: Typeface.font(12, isSelected ? Font.Medium : Font.Normal)
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        objectName: "animationChipGround"
        radius: 8
        color: chip.isSelected ? Qt.alpha(Look.accent, 0.16)
                               : Qt.rgba(1, 1, 1, chip.hovered ? 0.08 : 0.04)
        border.width: chip.isSelected ? 1.5 : 1
        border.color: chip.isSelected ? Look.accent : Qt.rgba(1, 1, 1, 0.08)

        FocusRing {
            visible: chip.visualFocus
            gap: 2
            border.color: "white"
        }
    }
    contentItem: Text {
        text: chip.text
        font: chip.font
        color: chip.isSelected ? "white" : Qt.rgba(1, 1, 1, chip.hovered ? 0.9 : 0.7)
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
