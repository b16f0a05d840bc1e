import QtQuick
import Quorvin

/// The version, how fast it is, and what is new in it.
SectionScaffold {
    id: section

    required property QtObject appState

    readonly property bool isChecking: appState.isCheckingForUpdates
    readonly property bool isUpToDate: UpdateStatus.isUpToDate(appState.updatePhase,
                                                               appState.updateAvailable)

    title: "Updates"
    subtitle: "Version management and release notes"

    SettingCard {
        label: "Check for Updates"

        SettingRow {
            label: "Current Version"
            isDivided: true

            ValueText {
                objectName: "currentVersion"
                text: section.appState.version
            }
        }
        SettingRow {
            id: statusRow

            label: "Status"
            isDivided: true

            Symbol {
                objectName: "upToDateSymbol"
                anchors.verticalCenter: parent.verticalCenter
                visible: section.isUpToDate
                name: "checkmark.circle.fill"
                size: 14
                color: "#22c55e"
            }
            ValueText {
                objectName: "updateStatus"
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, statusRow.width * 0.5)
                text: UpdateStatus.text(section.appState.updatePhase,
                                        section.appState.updateAvailable,
                                        section.appState.latestVersion)
                wrapMode: Text.Wrap
                maximumLineCount: 4
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignRight
            }
            SettingsButton {
                objectName: "updateNowButton"
                anchors.verticalCenter: parent.verticalCenter
                visible: section.appState.updateAvailable
                text: "Update Now"
                accent: true
                onClicked: section.appState.installUpdate()
            }
        }
        SettingRow {
            label: "Auto-check on launch"
            description: "Checks GitHub releases API"
            isDivided: true

            ValueText {
                objectName: "autoCheckText"
                text: "Enabled"
            }
        }
        SettingRow {
            label: "Manual check"

            ValueText {
                objectName: "checkingText"
                anchors.verticalCenter: parent.verticalCenter
                visible: section.isChecking
                height: checkButton.height
                verticalAlignment: Text.AlignVCenter
                text: "Checking"
            }
            SettingsButton {
                id: checkButton

                objectName: "checkNowButton"
                visible: !section.isChecking
                text: "Check Now"
                onClicked: section.appState.checkForUpdatesNow()
            }
        }
    }
    SettingCard {
        label: "Performance Metrics"

        MetricsView {
            latencies: section.appState.latencies
            onCleared: section.appState.clearLatencies()
        }
    }
    SettingCard {
        id: notes

        label: "Release Notes — v" + section.appState.version

        Repeater {
            model: UpdateStatus.releaseNotes
            delegate: InfoRow {
                required property var modelData
                required property int index

                objectName: "releaseNote"
                icon: modelData.symbol
                iconColor: modelData.color
                text: modelData.text
                isDivided: index < UpdateStatus.releaseNotes.length - 1
            }
        }
    }
}
