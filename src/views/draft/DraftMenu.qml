import QtQuick
import QtQuick.Controls
import Quorvin

/// What can be done to the text of an editor, for the right mouse button.
Menu {
    id: menu

    required property TextArea area

    component Entry: MenuItem {
        id: entry

        implicitHeight: 28
        contentItem: Text {
            text: entry.text
            font: Typeface.font(12)
            color: entry.enabled ? Look.textPrimary : Look.textMuted
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            radius: 4
            color: Qt.alpha(Look.accent, entry.highlighted ? 0.3 : 0)
        }
    }
    component Divider: MenuSeparator {
        verticalPadding: 4
        contentItem: Rectangle {
            implicitHeight: 1
            color: Look.border
        }
    }

    padding: 4
    onClosed: area.forceActiveFocus(Qt.PopupFocusReason) // a menu doesn't give it back
    background: Rectangle {
        implicitWidth: 160
        radius: 8
        color: Look.bgSurface
        border.width: 1
        border.color: Look.border
    }

    Entry {
        objectName: "undoItem"
        text: qsTr("Undo")
        enabled: menu.area.canUndo
        onTriggered: menu.area.undo()
    }
    Entry {
        objectName: "redoItem"
        text: qsTr("Redo")
        enabled: menu.area.canRedo
        onTriggered: menu.area.redo()
    }
    Divider {}
    Entry {
        objectName: "cutItem"
        text: qsTr("Cut")
        enabled: menu.area.selectedText !== ""
        onTriggered: menu.area.cut()
    }
    Entry {
        objectName: "copyItem"
        text: qsTr("Copy")
        enabled: menu.area.selectedText !== ""
        onTriggered: menu.area.copy()
    }
    Entry {
        objectName: "pasteItem"
        text: qsTr("Paste")
        enabled: menu.area.canPaste
        onTriggered: menu.area.paste()
    }
    Divider {}
    Entry {
        objectName: "selectAllItem"
        text: qsTr("Select All")
        enabled: menu.area.length > 0
        onTriggered: menu.area.selectAll()
    }
}
