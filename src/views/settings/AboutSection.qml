import QtQuick
import Quorvin

/// What runs here, where it comes from, and ways to find out what is wrong.
SectionScaffold {
    id: section

    required property QtObject appState

    title: "About"
    subtitle: "Version info, links and diagnostics"

    SettingCard {
        label: "App Info"

        SettingRow {
            label: "Version"
            isDivided: true

            ValueText {
                objectName: "versionText"
                text: UpdateStatus.version(section.appState.version,
                                           section.appState.updateAvailable,
                                           section.appState.latestVersion)
                color: section.appState.updateAvailable ? SystemColor.orange
                                                        : Qt.rgba(1, 1, 1, 0.7)
            }
        }
        SettingRow {
            label: "Platform"
            isDivided: true

            ValueText {
                objectName: "platformText"
                text: SettingsTexts.platform
            }
        }
        SettingRow {
            label: "Whisper Engine"

            ValueText {
                objectName: "engineText"
                text: section.appState.modelLoaded ? "Loaded" : "Not loaded"
                color: section.appState.modelLoaded ? "#22c55e" : "#ef4444"
            }
        }
    }
    SettingCard {
        label: "Links"

        SettingRow {
            label: "GitHub Repository"
            isDivided: true

            SettingsButton {
                objectName: "repositoryButton"
                text: "Open"
                Accessible.description: "GitHub Repository"
                onClicked: section.appState.openRepositoryPage()
            }
        }
        SettingRow {
            label: "Release Notes"

            SettingsButton {
                objectName: "releasesButton"
                text: "Releases"
                Accessible.description: "Release Notes"
                onClicked: section.appState.openReleasesPage()
            }
        }
    }
    SettingCard {
        label: "Diagnostics"

        SettingRow {
            label: "Send Diagnostic Paste"
            description: "Sends TEST_QUORVIN to focused terminal"
            isDivided: true

            SettingsButton {
                objectName: "diagnosticButton"
                text: "Run Test"
                accent: true
                Accessible.description: "Send Diagnostic Paste"
                onClicked: section.appState.testSendDiagnostic()
            }
        }
        SettingRow {
            label: "Clear Activity Log"
            isDivided: true

            SettingsButton {
                objectName: "clearLogButton"
                text: "Clear"
                destructive: true
                Accessible.description: "Clear Activity Log"
                onClicked: section.appState.clearActivityLog()
            }
        }
        SettingRow {
            label: "Clear Transcription History"

            SettingsButton {
                objectName: "clearHistoryButton"
                text: "Clear"
                destructive: true
                Accessible.description: "Clear Transcription History"
                onClicked: section.appState.clearHistory()
            }
        }
    }
}
