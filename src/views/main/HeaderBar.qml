import QtQuick
import QtQuick.Layouts
import Quorvin

/// The window's upper edge: the version, what the program does, and the ways to its other views.
Rectangle {
    id: header

    required property QtObject appState

    signal settingsRequested()

    implicitHeight: content.implicitHeight + 2 * 10
    color: Look.bgSurface

    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: Qt.rgba(1, 1, 1, 0.04) }
            GradientStop { position: 1; color: Qt.rgba(1, 1, 1, 0) }
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Look.border
    }

    RowLayout {
        id: content

        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 16
        spacing: 12

        VersionBadge {
            objectName: "versionBadge"
            Layout.fillWidth: true // down from its own width
            Layout.maximumWidth: implicitWidth
            appState: header.appState
        }
        StatusBadgeCanvas {
            objectName: "statusBadge"
            Layout.preferredHeight: 28
            isRecording: header.appState.isRecording
            isTranscribing: header.appState.isTranscribing
            isReady: header.appState.modelLoaded
            duration: header.appState.recordingDuration
            elapsed: header.appState.compactElapsed
        }
        Item {
            Layout.fillWidth: true
        }
        HeaderButton {
            objectName: "activityLogButton"
            systemName: "list.bullet.rectangle"
            text: header.appState.showActivityLog ? qsTr("Hide the activity log")
                                                  : qsTr("Show the activity log")
            onClicked: header.appState.showActivityLog = !header.appState.showActivityLog
        }
        HeaderButton {
            objectName: "compactModeButton"
            systemName: "line.3.horizontal"
            text: qsTr("Compact mode")
            onClicked: header.appState.switchToCompactMode()
        }
        HeaderButton {
            objectName: "settingsButton"
            systemName: "slider.horizontal.3"
            text: qsTr("Settings")
            onClicked: header.settingsRequested()
        }
    }

    component HeaderButton: GlassIconButton {
        id: button

        Accessible.onPressAction: clicked()
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()

        HelpTip {
            text: button.text
        }
    }
}
