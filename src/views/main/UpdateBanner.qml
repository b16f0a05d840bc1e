import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quorvin

/// Offers a newer version and tells how far its installation has come. It comes in from above and
/// pushes down what follows.
Item {
    id: banner

    required property QtObject appState

    readonly property var phase: appState.updatePhase
    readonly property bool isIdle: phase.kind === "idle"
    readonly property bool isDownloading: phase.kind === "downloading"
    readonly property bool hasFailed: phase.kind === "failed"
    readonly property bool isInstalling: phase.kind === "installing"
    /// White, but on a light window, where it couldn't be read.
    readonly property color ink: Look.bgBase.hslLightness < 0.5 ? "white" : Look.textPrimary
    /// 0 to 1.
    property real presence: appState.updateAvailable ? 1 : 0

    implicitHeight: Math.round(pane.height * presence)
    visible: presence > 0
    clip: presence < 1

    Behavior on presence { NumberAnimation { duration: 250; easing.type: Easing.InOutQuad } }

    Rectangle {
        id: pane

        objectName: "bannerPane"
        anchors.bottom: parent.bottom
        width: parent.width
        height: content.implicitHeight + 2 * 10
        opacity: banner.presence
        color: Qt.alpha(SystemColor.orange, 0.12)

        Rectangle {
            objectName: "bannerLine"
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: Qt.alpha(SystemColor.orange, 0.45)
        }

        RowLayout {
            id: content

            anchors.fill: parent
            anchors.leftMargin: 14
            anchors.rightMargin: 14
            spacing: 12

            LabelInk {
                objectName: "bannerSymbol"
                implicitWidth: 19 // of a Symbol of size 16
                implicitHeight: 19
                systemName: "sparkles"
                symbolRect: Qt.rect(0, 0, width, height)
                color: SystemColor.orange
                shadowColor: Qt.alpha(SystemColor.orange, 0.7)
                shadowRadius: 4
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2

                BannerText {
                    objectName: "bannerTitle"
                    text: qsTr("New version v%1 available").arg(banner.appState.latestVersion)
                    font: Typeface.font(12)
                    color: banner.ink
                }
                BannerText {
                    id: subtitle

                    objectName: "bannerSubtitle"
                    text: UpdateLabels.subtitle(banner.phase)
                    wrapMode: Text.Wrap
                    maximumLineCount: 3
                    font: Typeface.font(10)
                    color: Qt.alpha(banner.ink, 0.6)
                }
            }
            UpdateBannerButton {
                objectName: "updateNowButton"
                visible: banner.isIdle
                text: qsTr("Update Now")
                onClicked: banner.appState.installUpdate()
            }
            UpdateBannerButton {
                objectName: "retryButton"
                visible: banner.hasFailed
                text: qsTr("Retry")
                onClicked: banner.appState.retryUpdate()
            }
            RowLayout {
                visible: banner.isDownloading
                spacing: 8

                ProgressBar {
                    id: bar

                    objectName: "downloadBar"
                    Layout.preferredWidth: 90
                    Layout.preferredHeight: 4
                    value: banner.phase.fraction
                    Accessible.name: qsTr("Download")
                    background: Rectangle {
                        radius: 2
                        color: Qt.alpha(banner.ink, 0.2)
                    }
                    contentItem: Item {
                        Rectangle {
                            objectName: "downloadBarFill"
                            width: bar.visualPosition * parent.width
                            height: parent.height
                            radius: 2
                            color: SystemColor.orange
                        }
                    }
                }
                NeonText {
                    objectName: "downloadPercentage"
                    Layout.minimumWidth: widestPercentage.advanceWidth
                    text: UpdateLabels.percentage(banner.phase.fraction)
                    font: Typeface.font(10)
                    color: Qt.alpha(banner.ink, 0.7)

                    // The bar stands still while the number grows.
                    TextMetrics {
                        id: widestPercentage
                        text: "000%"
                        font: Typeface.font(10)
                    }
                }
            }
            Spinner {
                objectName: "bannerSpinner"
                visible: banner.isInstalling
                color: SystemColor.orange
                Accessible.name: subtitle.text
            }
        }
    }

    component BannerText: Text {
        Layout.fillWidth: true
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
