import QtQuick
import Quorvin

/// Rows that belong together, under a caption. They stand in a column of the card's width.
Column {
    id: card

    required property string label
    default property alias content: rows.data

    width: parent?.width ?? 0
    topPadding: 20
    spacing: 8

    Text {
        objectName: "cardCaption"
        text: card.label
        font: Typeface.tracked(10, 0.8, Font.Medium)
        color: Qt.rgba(1, 1, 1, 0.3)
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Rectangle {
        objectName: "cardGround"
        width: parent.width
        height: rows.height
        radius: 10
        color: "#161620"
        border.color: Qt.rgba(1, 1, 1, 0.07)

        Column {
            id: rows

            width: parent.width
        }
    }
}
