import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quorvin

/// A modal panel in the middle of the window; its children stand in a column.
///
///     Sheet {
///         isPresented: appState.showHistory
///         onDismissed: appState.showHistory = false
///     }
Popup {
    id: sheet

    default property alias children: column.data
    /// For whoever shows the sheet to set. The sheet itself only asks, by `dismissed`.
    property bool isPresented: false
    /// For those who can't see it.
    property string title
    property real cornerRadius: 14
    property color fill: Look.bgSurface
    /// What `fill` turns into towards the lower edge.
    property color bottomFill: fill
    property color borderColor: Look.border
    property color shadowColor: Qt.rgba(0, 0, 0, 0.5)
    property real shadowRadius: 24
    property real shadowOffset: 10
    property color glowColor: "transparent"
    property real glowRadius: 0

    /// The user has closed it, or something in it has.
    signal dismissed

    visible: isPresented
    parent: Overlay.overlay
    // In whole points, or texts and edges would be blurred.
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    padding: 20
    spacing: 12

    onAboutToHide: {
        if (isPresented) {
            dismissed();
        }
    }

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 160
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            property: "scale"
            from: 0.96
            to: 1
            duration: 200
            easing.type: Easing.OutCubic
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: 120
            easing.type: Easing.InCubic
        }
        NumberAnimation {
            property: "scale"
            to: 0.98
            duration: 120
            easing.type: Easing.InCubic
        }
    }
    Overlay.modal: Rectangle {
        objectName: "sheetDimmer"
        color: Qt.rgba(0, 0, 0, 0.4)

        Behavior on opacity { NumberAnimation { duration: 160 } }
    }

    background: Item {
        SoftShadow {
            anchors.fill: parent
            anchors.topMargin: sheet.shadowOffset
            anchors.bottomMargin: -sheet.shadowOffset
            objectName: "sheetShadow"
            color: sheet.shadowColor
            radius: sheet.shadowRadius
            cornerRadius: sheet.cornerRadius
        }
        SoftShadow {
            anchors.fill: parent
            objectName: "sheetGlow"
            color: sheet.glowColor
            radius: sheet.glowRadius
            cornerRadius: sheet.cornerRadius
        }
        RoundedFrame {
            anchors.fill: parent
            objectName: "sheetGround"
            radius: sheet.cornerRadius
            fill: sheet.fill
            bottomFill: sheet.bottomFill
            color: sheet.borderColor
        }
    }
    contentItem: ColumnLayout {
        id: column

        objectName: "sheetContent"
        spacing: sheet.spacing
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title
    }
}
