import QtQuick
import Quorvin

/// A remark with its symbol.
Item {
    id: row

    required property string icon
    required property string text
    property color iconColor: Qt.rgba(1, 1, 1, 0.5)
    property bool isDivided: false

    width: parent?.width ?? 0
    implicitHeight: words.height + 2 * 11

    Symbol {
        objectName: "infoSymbol"
        x: 16
        y: words.y + (firstLine.height - height) / 2
        name: row.icon
        size: 13
        color: row.iconColor
    }
    Text {
        id: words

        objectName: "infoText"
        anchors.left: parent.left
        anchors.leftMargin: 44
        anchors.right: parent.right
        anchors.rightMargin: 16
        y: 11
        text: row.text
        wrapMode: Text.Wrap
        font: Typeface.font(12)
        color: Qt.rgba(1, 1, 1, 0.75)
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    FontMetrics {
        id: firstLine

        font: words.font
    }
    RowDivider {
        visible: row.isDivided
    }
}
