import QtQuick
import QtQuick.Controls

/// A scroll bar that shows only while there is more than fits.
ScrollBar {
    id: bar

    required property color tint

    padding: 2
    minimumSize: 0.1
    policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    contentItem: Rectangle {
        implicitWidth: 4
        implicitHeight: 4
        radius: 2
        color: bar.tint
        opacity: bar.pressed || bar.hovered ? 0.6 : 0.25
    }
}
