import QtQuick
import Quorvin

ThemedWindow {
    id: window

    required property QtObject appState

    signal settingsRequested()

    // No larger than the screen, or the lower edge with the send buttons could not be reached.
    minimumWidth: Math.min(580, Screen.desktopAvailableWidth)
    minimumHeight: Math.min(850, Screen.desktopAvailableHeight)
    width: minimumWidth
    height: minimumHeight
    visible: true
    title: "Quorvin"

    Shortcut {
        sequences: ["Ctrl+,", "Meta+,"]
        onActivated: window.settingsRequested()
    }
    Shortcut {
        sequences: ["Ctrl+Q", "Meta+Q"]
        context: Qt.ApplicationShortcut // while a sheet is open, too
        onActivated: Qt.quit()
    }
    Shortcut {
        sequence: "Ctrl+R"
        enabled: !window.appState.needsOnboarding
        onActivated: window.appState.toggleRecording()
    }
    Shortcut {
        sequence: "Esc"
        enabled: window.appState.isRecording
        onActivated: window.appState.cancelRecording()
    }

    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: window.appState.needsOnboarding ? onboardingView : mainView
    }
    Component {
        id: onboardingView

        OnboardingView {
            appState: window.appState
        }
    }
    Component {
        id: mainView

        MainView {
            appState: window.appState
            onSettingsRequested: window.settingsRequested()
        }
    }
}
