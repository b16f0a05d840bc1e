import QtQuick
import QtQuick.Controls
import Quorvin

/// Shows that the keys go to a control. Stands in its background, in front of what else is there.
Rectangle {
    property AbstractButton control: null
    /// From the background's edge outward.
    property real gap: 3

    anchors.fill: parent
    anchors.margins: -gap
    objectName: "focusRing"
    radius: (parent?.radius ?? 0) + gap
    color: "transparent"
    border.width: 2
    border.color: Look.accent
    visible: control?.visualFocus ?? false
}
