import QtQuick
import QtQuick.Controls
import Quorvin

ThemedWindow {
    id: window

    required property QtObject appState

    title: "Settings"

    Shortcut {
        sequences: [StandardKey.Close, "Esc"]
        onActivated: window.close()
    }

    SettingsView {
        anchors.fill: parent
        appState: window.appState
    }
}
