import QtQuick
import Quorvin

/// When it was, what kind of thing, and what.
Item {
    id: row

    /// An ActivityEntry.
    required property var entry

    implicitHeight: Math.max(message.height, time.height) + 6
    Accessible.role: Accessible.ListItem
    Accessible.name: entry.message
    Accessible.description: entry.time

    DigitText {
        id: time

        objectName: "entryTime"
        x: 4
        y: message.y + message.baselineOffset - baselineOffset
        width: 52
        text: row.entry.time
        font: Typeface.font(9)
        color: Qt.alpha(Look.textMuted, 0.6)
        Accessible.ignored: true // the row says it
    }
    Item {
        id: iconFrame

        x: 64
        width: 14
        height: firstLine.height + 6

        Symbol {
            objectName: "entryIcon"
            anchors.centerIn: parent
            name: row.entry.icon
            size: 10
            color: "#" + row.entry.colorHex
        }
    }
    Text {
        id: message

        objectName: "entryMessage"
        anchors.left: iconFrame.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.rightMargin: 4
        y: 3
        text: row.entry.message
        textFormat: Text.PlainText
        font: Typeface.font(11)
        color: Look.textSecondary
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
    }
    FontMetrics {
        id: firstLine

        font: message.font
    }
}
