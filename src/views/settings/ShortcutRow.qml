import QtQuick
import Quorvin

/// What can be done, and by which keys.
SettingRow {
    id: row

    required property string keys
    property alias divided: row.isDivided

    /// Not every system has a typeface with it.
    readonly property string paperclip: "📎 "
    readonly property bool hasPaperclip: keys.startsWith(paperclip)

    Rectangle {
        objectName: "keysPill"
        implicitWidth: Math.ceil(content.implicitWidth) + 2 * 10
        implicitHeight: 24
        radius: 6
        color: Qt.rgba(1, 1, 1, 0.07)
        border.color: Qt.rgba(1, 1, 1, 0.1)
        Accessible.role: Accessible.StaticText
        Accessible.name: row.keys

        Row {
            id: content

            anchors.centerIn: parent
            spacing: 4

            Symbol {
                objectName: "keysSymbol"
                anchors.verticalCenter: parent.verticalCenter
                visible: row.hasPaperclip
                name: "paperclip"
                size: 11
                color: words.color
            }
            Text {
                id: words

                objectName: "shortcutKeys"
                text: row.hasPaperclip ? row.keys.slice(row.paperclip.length) : row.keys
                font: Typeface.font(12, Font.Medium)
                color: Qt.rgba(1, 1, 1, 0.85)
            }
        }
    }
}
