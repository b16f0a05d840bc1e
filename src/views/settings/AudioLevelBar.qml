import QtQuick
import Quorvin

/// How loud the microphone is at this moment.
Rectangle {
    id: bar

    /// 0 to 1.
    required property real level

    implicitWidth: 160
    implicitHeight: 10
    radius: 4
    color: Qt.rgba(1, 1, 1, 0.08)
    Accessible.role: Accessible.ProgressBar

    Rectangle {
        objectName: "levelFill"
        width: parent.width * Math.max(0, Math.min(1, bar.level))
        height: parent.height
        radius: parent.radius
        color: SettingsTexts.levelColor(bar.level)

        Behavior on width { NumberAnimation { duration: 50 } }
        Behavior on color { ColorAnimation { duration: 50 } }
    }
}
