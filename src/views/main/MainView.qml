import QtQuick
import Quorvin

/// The content of the main window.
Rectangle {
    id: view

    required property QtObject appState
    property bool draftExpanded: false

    signal settingsRequested()

    color: Look.bgBase

    HeaderBar {
        id: header

        width: parent.width
        appState: view.appState
        onSettingsRequested: view.settingsRequested()
    }
    UpdateBanner {
        id: banner

        anchors.top: header.bottom
        width: parent.width
        appState: view.appState
    }
    ScrollPage {
        id: page

        objectName: "page"
        anchors.top: banner.bottom
        anchors.bottom: bottomBar.top
        width: parent.width
        contentHeight: column.height
        margin: column.gap

        Column {
            id: column

            readonly property int gap: 20

            /// Keeps a part that comes or grows in view.
            function follow(part: Reveal) {
                if (part.isShown) {
                    forceLayout(); // the page would know its old height only
                    page.show(part);
                }
            }

            x: 20
            width: page.width - 2 * x
            topPadding: 12 + gap
            bottomPadding: gap

            MicLevelRing {
                objectName: "micLevelRing"
                anchors.horizontalCenter: parent.horizontalCenter
                width: 300
                height: 300
                focus: true
                level: view.appState.audioLevel
                isRecording: view.appState.isRecording
                isTranscribing: view.appState.isTranscribing
                isEnabled: view.appState.modelLoaded
                animationStyle: view.appState.animationStyle
                onClicked: view.appState.toggleRecording()
            }
            Item {
                width: 1
                height: column.gap
            }
            DraftToggleButton {
                objectName: "draftToggleButton"
                anchors.horizontalCenter: parent.horizontalCenter
                expanded: view.draftExpanded
                onClicked: view.draftExpanded = !view.draftExpanded
            }
            Reveal {
                id: draft

                objectName: "draft"
                width: parent.width
                gap: column.gap
                isShown: view.draftExpanded
                onImplicitHeightChanged: column.follow(draft)

                DraftPanel {
                    width: parent.width
                    appState: view.appState
                }
            }
            Reveal {
                id: feed

                objectName: "feed"
                width: parent.width
                gap: column.gap
                isFromTop: false
                duration: 250
                isShown: view.appState.showActivityLog && view.appState.activityLog.length > 0
                onImplicitHeightChanged: column.follow(feed)

                ActivityFeedView {
                    width: parent.width
                    appState: view.appState
                }
            }
        }
    }
    Rectangle {
        id: bottomBar

        anchors.bottom: parent.bottom
        width: parent.width
        height: actionButtons.implicitHeight + 2 * 14
        color: Qt.alpha(Look.bgSurface, 0.9)

        ActionButtons {
            id: actionButtons

            anchors.fill: parent
            anchors.margins: 14
            anchors.leftMargin: 20
            anchors.rightMargin: 20
            appState: view.appState
        }
    }

    HistoryDialog {
        appState: view.appState
        isPresented: view.appState.showHistory
        onDismissed: view.appState.showHistory = false
    }
    SessionPickerDialog {
        appState: view.appState
        rowHeight: 60
        isPresented: view.appState.showSessionPicker
        onDismissed: view.appState.showSessionPicker = false
    }
    ErrorAlert {
        appState: view.appState
    }
}
