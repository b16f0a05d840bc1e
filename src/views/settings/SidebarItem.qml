import QtQuick
import QtQuick.Controls
import Quorvin

/// A section in the sidebar.
AbstractButton {
    id: row

    required property string symbol
    required property bool isSelected

    readonly property color inkColor: isSelected ? "white" : palette.windowText

    horizontalPadding: 10
    verticalPadding: 7
    implicitHeight: topPadding + implicitContentHeight + bottomPadding
    hoverEnabled: true
    // Tab goes to one row; it leaves the others to the arrow keys.
    focusPolicy: isSelected || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    font: Typeface.font(13, isSelected ? Font.Medium : Font.Normal)
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        objectName: "sidebarItemGround"
        radius: 7
        color: row.isSelected ? ReadableTint.of(Look.accent, row.palette.window)
                              : Qt.alpha(row.palette.windowText, row.hovered ? 0.08 : 0)

        FocusRing {
            visible: row.visualFocus
            gap: 2
        }
    }
    contentItem: Row {
        spacing: 10

        Symbol {
            objectName: "sidebarItemSymbol"
            anchors.verticalCenter: parent.verticalCenter
            name: row.symbol
            size: 14
            color: row.isSelected ? row.inkColor : Qt.alpha(row.inkColor, 0.65)
        }
        Text {
            objectName: "sidebarItemTitle"
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            font: row.font
            color: row.inkColor
        }
    }
}
