import QtQuick
import Quorvin

/// Colours, the ring's style, and how much shines through the main window.
SectionScaffold {
    id: section

    required property QtObject appState

    title: "Appearance"
    subtitle: "Themes, animations and window opacity"

    Connections {
        target: section.appState

        function onSelectedThemeChanged() { ThemeManager.setTheme(section.appState.selectedTheme); }
        function onWindowOpacityChanged() { section.appState.applyWindowOpacity(); }
    }

    SettingCard {
        label: "Theme"

        ChipGrid {
            id: themes

            columns: 4

            Repeater {
                model: Themes.all
                delegate: ThemeChip {
                    required property var modelData

                    objectName: "themeChip"
                    width: themes.chipWidth
                    theme: modelData
                    isSelected: ThemeManager.current.name === theme.name
                    onClicked: section.appState.selectedTheme = theme.name
                }
            }
        }
    }
    SettingCard {
        label: "Animation Ring"

        ChipGrid {
            id: animations

            columns: 3

            Repeater {
                model: SettingsChoices.animations
                delegate: AnimationChip {
                    required property string modelData

                    objectName: "animationChip"
                    width: animations.chipWidth
                    name: modelData
                    isSelected: section.appState.animationStyle === name
                    onClicked: section.appState.animationStyle = name
                }
            }
        }
    }
    SettingCard {
        label: "Window"

        SettingRow {
            label: "Window Opacity"
            isSaidByControl: true

            SettingSlider {
                objectName: "opacitySlider"
                label: "Window Opacity"
                from: 0.3
                to: 1
                stepSize: 0.05
                value: section.appState.windowOpacity
                valueText: SettingsTexts.percentOfFraction(section.appState.windowOpacity)
                valueWidth: 38
                onChosen: value => section.appState.windowOpacity = value
            }
        }
    }
}
