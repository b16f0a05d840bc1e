import QtQuick
import Quorvin

/// Language, engine, and how the program behaves.
SectionScaffold {
    id: section

    required property QtObject appState

    title: "General"
    subtitle: "Transcription, behavior and output settings"

    Connections {
        target: section.appState

        function onLanguageChanged() { section.appState.applyLanguage(); }
        function onTranslateToEnglishChanged() { section.appState.applyTranslateToEnglish(); }
        function onEngineTierChanged() { section.appState.applyEngineTier(); }
        function onAlwaysOnTopChanged() { section.appState.applyAlwaysOnTop(); }
    }

    SettingCard {
        label: "Transcription"

        SettingRow {
            label: "Language"
            description: "Whisper transcription language"
            isDivided: true
            isSaidByControl: true

            SettingPicker {
                objectName: "languagePicker"
                width: 150
                choices: SettingsChoices.languages
                value: section.appState.language
                label: "Language"
                onChosen: value => section.appState.language = value
            }
        }
        SettingToggleRow {
            objectName: "translateRow"
            label: "Translate to English"
            description: "Always output English regardless of spoken language"
            divided: true
            value: section.appState.translateToEnglish
            onFlipped: on => section.appState.translateToEnglish = on
        }
        SettingRow {
            label: "Whisper Model"
            description: "Accuracy vs. speed tradeoff"
            isSaidByControl: true

            SettingPicker {
                objectName: "modelPicker"
                width: 150
                choices: SettingsChoices.models
                value: section.appState.engineTier
                label: "Whisper Model"
                onChosen: value => section.appState.engineTier = value
            }
        }
    }
    SettingCard {
        label: "Behavior"

        SettingToggleRow {
            objectName: "autoStopRow"
            label: "Auto-Stop on Silence"
            description: "Stop recording automatically when you stop speaking"
            divided: true
            value: section.appState.vadAutoStop
            onFlipped: on => section.appState.vadAutoStop = on
        }
        SettingRow {
            label: "Silence Timeout"
            description: "Seconds of silence before auto-stop"
            isDivided: true
            isSaidByControl: true

            SettingSlider {
                objectName: "silenceSlider"
                label: "Silence Timeout"
                from: 3
                to: 30
                stepSize: 1
                value: section.appState.silenceTimeout
                valueText: section.appState.silenceTimeout
                valueWidth: 28
                onChosen: value => section.appState.silenceTimeout = value
            }
        }
        SettingToggleRow {
            objectName: "appendRow"
            label: "Append Mode"
            description: "Join consecutive transcriptions instead of replacing"
            divided: true
            value: section.appState.appendMode
            onFlipped: on => section.appState.appendMode = on
        }
        SettingToggleRow {
            objectName: "orchestratorRow"
            label: "Orchestrator Prefix"
            description: "Prepend ORCHESTRATOR CONTEXT when sending to Claude/OpenCode"
            value: section.appState.agentsIncluded
            onFlipped: on => section.appState.agentsIncluded = on
        }
    }
    SettingCard {
        label: "Window"

        SettingToggleRow {
            objectName: "onTopRow"
            label: "Always on Top"
            description: "Keep main window floating above other apps"
            divided: true
            value: section.appState.alwaysOnTop
            onFlipped: on => section.appState.alwaysOnTop = on
        }
        SettingToggleRow {
            objectName: "soundsRow"
            label: "UI Sounds"
            description: "Play sounds on recording start and transcription complete"
            value: section.appState.soundsEnabled
            onFlipped: on => section.appState.soundsEnabled = on
        }
    }
}
