import QtQuick
import Quorvin

/// The panel's ground with the content on it.
Rectangle {
    id: panel

    required property QtObject appState

    color: Qt.rgba(0.09, 0.09, 0.09, 1)
    radius: 22

    CompactView {
        appState: panel.appState
    }
}
