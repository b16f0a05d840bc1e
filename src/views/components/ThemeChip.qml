import QtQuick
import QtQuick.Controls
import Quorvin

/// A theme to choose, shown in its own colours.
AbstractButton {
    id: chip

    required property var theme
    required property bool isSelected

    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: theme.name
    Accessible.name: theme.name
    Accessible.checkable: true
    Accessible.checked: isSelected

    background: Rectangle {
        radius: 10
        color: chip.theme.bgBase
        border.width: chip.isSelected || chip.visualFocus ? 2 : 1
        border.color: chip.isSelected ? chip.theme.accent
                                      : chip.hovered || chip.visualFocus
                                        ? Qt.alpha(chip.theme.accent, 0.6) : chip.theme.border
    }
    contentItem: Item {
        Column {
            anchors.fill: parent
            anchors.margins: 12
            spacing: 12

            Text {
                text: chip.theme.name.charAt(0).toUpperCase() + chip.theme.name.slice(1)
                font: Typeface.font(13, Font.Medium)
                color: chip.theme.textPrimary
            }
            Row {
                spacing: 6

                Repeater {
                    model: [chip.theme.accent, chip.theme.success, chip.theme.recording,
                            chip.theme.transcribing, chip.theme.claude, chip.theme.opencode]

                    Rectangle {
                        required property color modelData

                        width: 14
                        height: 14
                        radius: 7
                        color: modelData
                    }
                }
            }
        }
    }
}
