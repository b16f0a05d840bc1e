import QtQuick
import Quorvin

/// What can be done, and by which keys.
SettingRow {
    id: row

    required property string keys
    property alias divided: row.isDivided

    Rectangle {
        objectName: "keysPill"
        implicitWidth: words.implicitWidth + 2 * 10
        implicitHeight: 24
        radius: 6
        color: Qt.rgba(1, 1, 1, 0.07)
        border.color: Qt.rgba(1, 1, 1, 0.1)

        Text {
            id: words

            objectName: "shortcutKeys"
            anchors.centerIn: parent
            text: row.keys
            font: Typeface.font(12, Font.Medium)
            color: Qt.rgba(1, 1, 1, 0.85)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
