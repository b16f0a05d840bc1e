import QtQuick
import Quorvin

/// The microphone and what is done with its signal.
SectionScaffold {
    id: section

    required property QtObject appState

    title: "Audio"
    subtitle: "Microphone, levels and noise settings"

    Connections {
        target: section.appState

        function onSelectedDeviceChanged() { section.appState.applySelectedDevice(); }
        function onInputGainDBChanged() { section.appState.applyInputGain(); }
        function onNoiseGatePercentChanged() { section.appState.applyNoiseGate(); }
    }

    SettingCard {
        label: "Input Device"

        SettingRow {
            label: "Microphone"
            isSaidByControl: true

            SettingPicker {
                objectName: "microphonePicker"
                anchors.verticalCenter: parent.verticalCenter
                width: 180
                choices: SettingsChoices.microphones(section.appState.availableDevices)
                value: section.appState.selectedDevice
                label: "Microphone"
                onChosen: value => section.appState.selectedDevice = value
            }
            GlassIconButton {
                id: refreshButton

                objectName: "refreshDevicesButton"
                systemName: "arrow.clockwise"
                text: "Refresh device list"
                onClicked: section.appState.refreshInputDevices()

                HelpTip {
                    text: refreshButton.text
                }
            }
        }
    }
    SettingCard {
        label: "Live Level"

        SettingRow {
            label: "Input Level"
            description: "Real-time microphone signal"

            AudioLevelBar {
                objectName: "levelBar"
                level: section.appState.audioLevel
                Accessible.name: "Input Level"
            }
        }
    }
    SettingCard {
        label: "Processing"

        SettingRow {
            label: "Input Gain"
            description: "Boost or cut microphone signal"
            isDivided: true
            isSaidByControl: true

            SettingSlider {
                objectName: "gainSlider"
                label: "Input Gain"
                from: -12
                to: 12
                stepSize: 1
                value: section.appState.inputGainDB
                valueText: SettingsTexts.gain(section.appState.inputGainDB)
                valueWidth: 44
                onChosen: value => section.appState.inputGainDB = value
            }
        }
        SettingRow {
            label: "Noise Gate"
            description: "Filter background noise below threshold"
            isSaidByControl: true

            SettingSlider {
                objectName: "gateSlider"
                label: "Noise Gate"
                from: 0
                to: 5
                stepSize: 0.5
                value: section.appState.noiseGatePercent
                valueText: SettingsTexts.percent(section.appState.noiseGatePercent)
                valueWidth: 44
                onChosen: value => section.appState.noiseGatePercent = value
            }
        }
    }
}
