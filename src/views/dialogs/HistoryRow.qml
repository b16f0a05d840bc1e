import QtQuick
import QtQuick.Controls
import Quorvin

/// A dictated text of the past and what can be done with it. A click takes it into the draft.
ItemDelegate {
    id: row

    required property QtObject appState
    /// A HistoryEntry.
    required property var entry
    readonly property bool isHovered: hovered
    readonly property bool isCurrent: ListView.isCurrentItem
    readonly property color tint: "#f97316"

    function load() {
        appState.draftText = entry.text;
        appState.showHistory = false;
    }

    padding: 12
    implicitHeight: topPadding + implicitContentHeight + bottomPadding
    hoverEnabled: true
    // The keyboard goes through the buttons of one row only, or there'd be no end of them.
    focusPolicy: isCurrent || activeFocus ? Qt.TabFocus : Qt.NoFocus
    text: HistoryTexts.excerpt(entry.text)
    Accessible.name: text
    Accessible.description: meta.full
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    onClicked: load()

    background: Rectangle {
        objectName: "rowGround"
        radius: 10
        color: row.isHovered ? Qt.alpha(row.tint, 0.12) : Qt.rgba(1, 1, 1, 0.06)
        border.color: row.isHovered ? row.tint : Qt.rgba(1, 1, 1, 0.15)

        Behavior on color { ColorAnimation { duration: 200; easing.type: Easing.InOutQuad } }
        Behavior on border.color {
            ColorAnimation { duration: 200; easing.type: Easing.InOutQuad }
        }

        FocusRing {
            visible: row.visualFocus
            gap: 0 // the list cuts off what is outside
            border.color: row.tint
        }
    }
    contentItem: Column {
        spacing: 6

        Item {
            width: parent.width
            height: 20

            Text {
                objectName: "excerpt"
                width: parent.width - (badge.visible ? badge.width + 10 : 0)
                anchors.verticalCenter: parent.verticalCenter
                text: row.text
                textFormat: Text.PlainText
                font: Typeface.font(13)
                color: Qt.rgba(1, 1, 1, 0.92)
                elide: Text.ElideRight
                maximumLineCount: 1
                horizontalAlignment: Text.AlignLeft
            }
            Rectangle {
                id: badge

                objectName: "badge"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: badgeText.width + 16
                height: badgeText.height + 6
                radius: 10
                color: AgentLook.accent(row.entry.sentTo)
                visible: row.entry.sentTo !== ""

                Text {
                    id: badgeText

                    objectName: "badgeText"
                    anchors.centerIn: parent
                    width: Math.min(implicitWidth, 140)
                    text: "→ " + row.entry.sentTo
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    textFormat: Text.PlainText
                    font: Typeface.font(10)
                    color: "white"
                    elide: Text.ElideRight
                    maximumLineCount: 1
                }
            }
        }
        Item {
            width: parent.width
            height: 22

            DigitText {
                id: meta

                readonly property string full: HistoryTexts.meta(row.entry)

                objectName: "meta"
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - actions.width - 10
                text: fitting.elidedText
                font: Typeface.font(11)
                color: Qt.rgba(1, 1, 1, 0.55)
                horizontalAlignment: Text.AlignLeft
                Accessible.ignored: true // the row says it

                TextMetrics {
                    id: fitting

                    text: meta.full
                    font: meta.font
                    elide: Text.ElideRight
                    elideWidth: meta.width - 12 // digits of one width take a little more
                }
            }
            Row {
                id: actions

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 6

                HistoryActionButton {
                    objectName: "claudeButton"
                    label: "Claude"
                    color: "#8b5cf6"
                    isReachable: row.isCurrent
                    onClicked: {
                        row.load();
                        row.appState.sendToClaude();
                    }
                }
                HistoryActionButton {
                    objectName: "openCodeButton"
                    label: "OpenCode"
                    color: "#10b981"
                    isReachable: row.isCurrent
                    onClicked: {
                        row.load();
                        row.appState.sendToOpenCode();
                    }
                }
                HistoryActionButton {
                    objectName: "copyButton"
                    label: qsTr("Copy")
                    color: row.tint
                    isReachable: row.isCurrent
                    onClicked: row.appState.copyToPasteboard(row.entry.text)
                }
                HistoryActionButton {
                    objectName: "loadButton"
                    label: qsTr("Load")
                    color: row.tint
                    isReachable: row.isCurrent
                    onClicked: row.load()
                }
            }
        }
    }
}
