pragma Singleton

import QtQuick

/// The colours and distances of the first window.
QtObject {
    readonly property color background: "#0f1115"
    readonly property color surface: "#171a21"
    readonly property color border: "#2a2f3a"
    readonly property color text: "#e8eaf0"
    readonly property color secondaryText: "#9aa3b2"
    readonly property color accent: "#44d62c"
    readonly property color recording: "#ef4444"
    readonly property color transcribing: "#f59e0b"
    readonly property int spacing: 12
    readonly property int radius: 10
}
