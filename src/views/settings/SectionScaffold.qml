import QtQuick
import QtQuick.Controls
import Quorvin

/// A section of the settings: its title, and below it the cards, which scroll.
Item {
    id: scaffold

    required property string title
    required property string subtitle
    default property alias content: column.data

    readonly property int margin: 28
    /// Longer rows would part the labels from their controls.
    readonly property real columnWidth: Math.min(width - 2 * margin, 760)
    readonly property real columnX: Math.round((width - columnWidth) / 2)

    function scroll(pages: int) {
        page.contentY = Math.max(0, Math.min(page.maximumContentY,
                                             page.contentY + pages * (page.height - 40)));
    }

    Column {
        id: heading

        x: scaffold.columnX
        width: scaffold.columnWidth
        topPadding: scaffold.margin
        bottomPadding: 2
        spacing: 4

        Text {
            objectName: "sectionTitle"
            width: parent.width
            text: scaffold.title
            font: Typeface.font(20, Font.DemiBold)
            color: "white"
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            objectName: "sectionSubtitle"
            width: parent.width
            text: scaffold.subtitle
            font: Typeface.font(12)
            color: Qt.rgba(1, 1, 1, 0.35)
            elide: Text.ElideRight
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    ScrollPage {
        id: page

        objectName: "sectionPage"
        anchors.top: heading.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        contentHeight: column.height
        margin: 12

        ScrollBar.vertical: SlimScrollBar { tint: "white" }

        Column {
            id: column

            x: scaffold.columnX
            width: scaffold.columnWidth
            bottomPadding: scaffold.margin
        }
    }
    Rectangle {
        anchors.top: page.top
        width: parent.width
        height: 1
        color: Qt.rgba(1, 1, 1, 0.07)
        visible: page.contentY > 0
    }
}
