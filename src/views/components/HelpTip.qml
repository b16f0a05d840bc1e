import QtQuick
import QtQuick.Controls
import Quorvin

/// What the control that it is put into does, beneath the control and within the window.
ToolTip {
    id: tip

    objectName: "helpTip"
    visible: text !== "" && (parent.hovered || parent.visualFocus) && !parent.down
    delay: 600
    margins: 8
    y: parent.height + 6
    leftPadding: 8
    rightPadding: 8
    topPadding: 4
    bottomPadding: 4
    font: Typeface.font(11)

    background: Rectangle {
        radius: 6
        color: Look.bgOverlay
        border.color: Look.border
    }
    contentItem: Text {
        text: tip.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: tip.font
        color: Look.textPrimary
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 120 }
    }
    exit: null
}
