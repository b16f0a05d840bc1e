import QtQuick
import QtQuick.Controls
import Quorvin

/// A theme to choose, shown in its own colours.
AbstractButton {
    id: chip

    /// A ThemeColors.
    required property var theme
    required property bool isSelected

    text: SettingsTexts.capitalized(theme.name)
    horizontalPadding: 14
    verticalPadding: 8
    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: topPadding + implicitContentHeight + bottomPadding
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    font: Typeface.font(10, Font.Medium)
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        objectName: "themeChipGround"
        radius: 8
        color: chip.theme.bgBase
        border.width: chip.isSelected ? 2 : 1
        border.color: chip.isSelected ? chip.theme.accent
                                      : chip.hovered ? Qt.alpha(chip.theme.accent, 0.6)
                                                     : chip.theme.border

        FocusRing {
            visible: chip.visualFocus
            gap: 2
            border.color: "white"
        }
    }
    contentItem: Column {
        spacing: 6

        Row {
            spacing: 5

            Repeater {
                model: [chip.theme.accent, chip.theme.claude, chip.theme.success]

                Rectangle {
                    required property color modelData

                    objectName: "swatch"
                    width: 14
                    height: 14
                    radius: 7
                    color: modelData
                }
            }
        }
        Text {
            width: parent.width
            text: chip.text
            font: chip.font
            color: chip.theme.textPrimary
            elide: Text.ElideRight
        }
    }
}
