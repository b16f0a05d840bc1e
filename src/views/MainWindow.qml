import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ThemedWindow {
    id: window

    required property QtObject appState

    signal settingsRequested()

    width: 580
    height: 850
    minimumWidth: 380
    minimumHeight: 520
    visible: true
    title: "Quorvin"

    function toggleRecording() {
        if (appState.isRecording) {
            appState.stopRecording();
        } else {
            appState.startRecording();
        }
    }

    Shortcut {
        sequences: ["Ctrl+,", "Meta+,"]
        onActivated: window.settingsRequested()
    }
    Shortcut {
        sequences: ["Ctrl+Q", "Meta+Q"]
        onActivated: Qt.quit()
    }
    Shortcut {
        sequence: "Ctrl+R"
        onActivated: window.toggleRecording()
    }
    Shortcut {
        sequence: "Esc"
        enabled: window.appState.isRecording
        onActivated: window.appState.cancelRecording()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 20
        spacing: Look.spacing

        RecordButton {
            id: recordButton
            Layout.alignment: Qt.AlignHCenter
            focus: true
            recording: window.appState.isRecording
            transcribing: window.appState.isTranscribing
            level: window.appState.audioLevel
            onClicked: window.toggleRecording()
        }
        Text {
            Layout.alignment: Qt.AlignHCenter
            text: window.appState.isRecording
                  ? qsTr("Recording  %1 s").arg(window.appState.recordingDuration.toFixed(1))
                  : window.appState.isTranscribing ? qsTr("Transcribing…")
                  : window.appState.modelLoaded ? qsTr("Ready") : qsTr("Loading the speech engine…")
            color: Look.textSecondary
            font.pixelSize: 14
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.description: qsTr("State")
        }
        ProgressBar {
            id: meter
            Layout.fillWidth: true
            Layout.preferredHeight: 6
            value: window.appState.audioLevel
            Accessible.name: qsTr("Input level")
            Accessible.description: Math.round(meter.value * 100) + " %"
            background: Rectangle {
                color: Look.bgSurface
                radius: 3
            }
            contentItem: Item {
                Rectangle {
                    width: meter.visualPosition * parent.width
                    height: parent.height
                    radius: 3
                    color: recordButton.tint
                }
            }
        }
        DraftEditor {
            Layout.fillWidth: true
            Layout.fillHeight: true
            draft: window.appState.draftText
            onEdited: text => window.appState.draftText = text
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Look.spacing

            readonly property bool hasSomething: window.appState.draftText !== ""
                                                 || window.appState.attachedImages.length > 0

            ActionButton {
                Layout.fillWidth: true
                Layout.preferredWidth: 1 // the same for both, whatever their texts
                text: "Claude"
                enabled: parent.hasSomething
                onClicked: window.appState.sendToClaude()
            }
            ActionButton {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: "OpenCode"
                enabled: parent.hasSomething
                onClicked: window.appState.sendToOpenCode()
            }
        }
        ActivityList {
            Layout.fillWidth: true
            Layout.preferredHeight: 132
            entries: window.appState.activityLog
        }
    }

    Sheet {
        visible: window.appState.showError
        onClosed: window.appState.dismissError()

        Text {
            Layout.maximumWidth: window.width - 120
            text: window.appState.errorMessage
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Look.textPrimary
            font.pixelSize: 14
            Accessible.name: text
            Accessible.role: Accessible.AlertMessage
        }
        ActionButton {
            Layout.alignment: Qt.AlignRight
            text: qsTr("OK")
            focus: true
            onClicked: window.appState.dismissError()
        }
    }

    SessionPicker {
        visible: window.appState.showSessionPicker
        agentName: window.appState.sessionPickerTitle
        sessions: window.appState.sessionPickerSessions
        onClosed: window.appState.showSessionPicker = false
        onPicked: session => window.appState.sendToPickedSession(session)
    }
}
