import QtQuick
import QtQuick.Controls
import Quorvin

/// The activity feed, newest line last and kept in sight.
ListView {
    id: list

    required property var entries

    clip: true
    spacing: 4
    model: entries.length
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Activity")

    onCountChanged: Qt.callLater(positionViewAtEnd)

    TextMetrics {
        id: widestTime
        text: "00:00:00"
        font.pixelSize: 12
    }

    delegate: Row {
        id: line

        required property int index
        readonly property var entry: list.entries[index]

        spacing: 8
        width: list.width
        Accessible.role: Accessible.ListItem
        Accessible.name: message.text

        Text {
            width: Math.ceil(widestTime.advanceWidth)
            text: line.entry.time
            color: Look.textSecondary
            font.pixelSize: 12
        }
        Text {
            id: message
            width: line.width - x
            text: line.entry.message
            textFormat: Text.PlainText
            color: "#" + line.entry.colorHex
            font.pixelSize: 12
            elide: Text.ElideRight
            maximumLineCount: 1
        }
    }
}
