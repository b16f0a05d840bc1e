import QtQuick
import QtQuick.Controls
import Quorvin

/// What the program did lately, newest last and in sight.
Rectangle {
    id: feed

    required property QtObject appState

    /// Brings the last entry into view.
    function scrollToEnd() {
        rows.forceLayout();
        scrolling.to = Math.max(0, list.contentHeight - list.height);
        scrolling.restart();
    }

    implicitWidth: 540
    implicitHeight: head.height + list.height
    radius: 10
    color: Qt.rgba(1, 1, 1, 0.03)
    border.color: Qt.alpha(Look.border, 0.5)

    Component.onCompleted: {
        rows.forceLayout();
        list.contentY = Math.max(0, list.contentHeight - list.height);
        log.entriesChanged.connect(scrollToEnd);
    }

    ActivityFeedModel {
        id: log

        entries: feed.appState.activityLog
    }
    Item {
        id: head

        width: parent.width
        height: 36

        Text {
            id: title

            objectName: "feedTitle"
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Activity")
            font: Typeface.font(12, Font.Medium)
            color: Look.textPrimary
        }
        Rectangle {
            objectName: "feedBadge"
            anchors.left: title.right
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            width: count.width + 12
            height: count.height + 4
            radius: 4
            color: Qt.rgba(1, 1, 1, 0.06)

            DigitText {
                id: count

                objectName: "feedCount"
                anchors.centerIn: parent
                text: log.entries.length
                font: Typeface.font(10)
                color: Look.textSecondary
            }
        }
        AbstractButton {
            id: clearButton

            objectName: "clearActivityButton"
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            width: 24
            height: 24
            focusPolicy: Qt.TabFocus
            hoverEnabled: true
            text: qsTr("Clear the activity")
            Accessible.name: text
            Accessible.onPressAction: clicked()
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            onClicked: feed.appState.clearActivityLog()

            background: Rectangle {
                radius: 5
                color: Qt.alpha(Look.textPrimary, clearButton.hovered ? 0.1 : 0)

                Symbol {
                    objectName: "clearSymbol"
                    anchors.centerIn: parent
                    name: "trash"
                    size: 10
                    color: clearButton.hovered ? Look.textPrimary : Look.textSecondary
                }
                FocusRing {
                    visible: clearButton.visualFocus
                    gap: 0
                }
            }
        }
    }
    Flickable {
        id: list

        objectName: "feedList"
        anchors.top: head.bottom
        width: parent.width
        height: Math.min(140, contentHeight)
        contentWidth: width
        contentHeight: rows.height + 8
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        Accessible.role: Accessible.List
        Accessible.name: title.text

        ScrollBar.vertical: SlimScrollBar { tint: Look.textSecondary }

        NumberAnimation {
            id: scrolling

            target: list
            property: "contentY"
            duration: 200
            easing.type: Easing.OutQuad
        }
        Column {
            id: rows

            x: 8
            y: 4
            width: parent.width - 16
            spacing: 2

            Repeater {
                model: log

                ActivityEntryRow {
                    objectName: "entryRow"
                    width: rows.width
                }
            }
        }
    }
}
