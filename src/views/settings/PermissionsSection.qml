import QtQuick
import Quorvin

/// What the system lets the program do.
SectionScaffold {
    id: section

    required property QtObject appState

    title: "Permissions"
    subtitle: "System access required for core features"
    Component.onCompleted: appState.refreshPermissions()

    SettingCard {
        label: "Required"

        PermissionRow {
            objectName: "microphoneRow"
            icon: "mic.fill"
            title: "Microphone"
            description: "Record and transcribe your voice"
            status: PermissionStatuses.of(section.appState.microphoneAuthorized, true)
            divided: true
            onAction: section.appState.openMicrophoneSettings()
        }
        PermissionRow {
            objectName: "accessibilityRow"
            icon: "keyboard"
            title: "Accessibility"
            description: "Type transcribed text into terminal apps"
            status: PermissionStatuses.of(section.appState.accessibilityAuthorized, true)
            onAction: section.appState.grantAccessibility()
        }
    }
    SettingCard {
        label: "Optional"

        PermissionRow {
            objectName: "automationRow"
            icon: "gearshape.2"
            title: "Automation"
            description: "Control terminal apps (iTerm, Terminal.app) for tab switching"
            status: PermissionStatuses.of(section.appState.automationAuthorized,
                                          section.appState.isAutomationKnown)
            onAction: section.appState.grantAutomation()
        }
    }
    SettingCard {
        label: "Actions"

        SettingRow {
            label: "Re-run Permission Wizard"
            description: "Start onboarding flow from scratch"

            SettingsButton {
                objectName: "wizardButton"
                text: "Open Wizard"
                Accessible.description: "Re-run Permission Wizard"
                onClicked: section.appState.resetOnboarding()
            }
        }
    }
}
