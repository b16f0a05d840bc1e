import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quorvin

/// A panel in front of the window's content; its children stand in a column.
Popup {
    default property alias children: column.data

    anchors.centerIn: Overlay.overlay
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    padding: 20
    background: Rectangle {
        color: Look.bgSurface
        radius: Look.radius
        border.color: Look.border
    }
    Overlay.modal: Rectangle {
        color: Qt.alpha(Look.bgBase, 0.7)
    }
    contentItem: ColumnLayout {
        id: column
        spacing: Look.spacing
    }
}
