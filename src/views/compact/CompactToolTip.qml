import QtQuick
import QtQuick.Controls
import Quorvin

/// What a control of the panel does, above the control and within the panel.
ToolTip {
    id: toolTip

    objectName: "toolTip"
    delay: 600
    margins: 6
    y: -height - 5
    leftPadding: 7
    rightPadding: 7
    topPadding: 3
    bottomPadding: 3
    font: Typeface.font(10)

    background: Rectangle {
        radius: 5
        color: Qt.rgba(0.16, 0.16, 0.17, 0.97)
        border.color: Qt.rgba(1, 1, 1, 0.14)
    }
    contentItem: Text {
        text: toolTip.text
        font: toolTip.font
        color: Qt.rgba(1, 1, 1, 0.9)
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 120 }
    }
    exit: null
}
