import QtQuick
import QtQuick.Controls
import Quorvin

/// The program's version, and whether there is a newer one, which a click fetches.
AbstractButton {
    id: badge

    required property QtObject appState

    readonly property bool isUpdateAvailable: appState.updateAvailable
    readonly property color dotColor: isUpdateAvailable ? SystemColor.orange : Look.textSecondary
    readonly property string tooltip: UpdateLabels.tooltip(isUpdateAvailable,
                                                           appState.latestVersion,
                                                           appState.version)

    leftPadding: 10
    rightPadding: 10
    topPadding: 5
    bottomPadding: 5
    // There is nothing to press without an update.
    focusPolicy: isUpdateAvailable ? Qt.TabFocus : Qt.NoFocus
    hoverEnabled: true
    text: "v" + appState.version
    font: Typeface.font(9)
    Accessible.name: tooltip
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    onClicked: {
        if (isUpdateAvailable) {
            appState.installUpdate();
        }
    }

    background: Rectangle {
        objectName: "versionPane"
        radius: 6
        color: badge.isUpdateAvailable ? Qt.alpha(SystemColor.orange, 0.12)
                                       : Qt.rgba(1, 1, 1, 0.08)
        border.width: 1
        border.color: badge.isUpdateAvailable ? Qt.alpha(SystemColor.orange, 0.5)
                                              : Qt.rgba(1, 1, 1, 0.25)

        FocusRing {
            visible: badge.visualFocus
        }
    }
    contentItem: Item {
        implicitWidth: words.x + Math.ceil(words.implicitWidth)
        implicitHeight: words.implicitHeight

        CapsuleInk {
            objectName: "versionDot"
            anchors.verticalCenter: parent.verticalCenter
            width: 5
            height: 5
            color: badge.dotColor
            shadowColor: Qt.alpha(badge.dotColor, badge.isUpdateAvailable ? 0.8 : 0.4)
            shadowRadius: 3
        }
        Text {
            id: words

            objectName: "versionText"
            x: 11
            width: parent.width - x
            text: badge.text
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font: badge.font
            color: Look.textSecondary
        }
    }

    HelpTip {
        text: badge.tooltip
    }
}
