import QtQuick
import Quorvin

/// A number on a capsule.
Rectangle {
    id: chip

    required property int count

    implicitWidth: Math.max(Math.ceil(words.implicitWidth) + 2 * 9, height)
    implicitHeight: 22
    radius: 11

    Text {
        id: words

        objectName: "count"
        anchors.centerIn: parent
        text: chip.count
        font: Typeface.font(12, Font.DemiBold)
        color: "white"
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
