import QtQuick
import QtQuick.Controls

/// What can be done to the text of an editor, for the right mouse button.
Menu {
    required property TextArea area

    MenuItem {
        text: qsTr("Undo")
        enabled: area.canUndo
        onTriggered: area.undo()
    }
    MenuItem {
        text: qsTr("Redo")
        enabled: area.canRedo
        onTriggered: area.redo()
    }
    MenuSeparator {}
    MenuItem {
        text: qsTr("Cut")
        enabled: area.selectedText !== ""
        onTriggered: area.cut()
    }
    MenuItem {
        text: qsTr("Copy")
        enabled: area.selectedText !== ""
        onTriggered: area.copy()
    }
    MenuItem {
        text: qsTr("Paste")
        enabled: area.canPaste
        onTriggered: area.paste()
    }
    MenuSeparator {}
    MenuItem {
        text: qsTr("Select All")
        enabled: area.length > 0
        onTriggered: area.selectAll()
    }
}
