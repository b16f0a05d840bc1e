import QtQuick
import Quorvin

/// One step of the wizard: what it is about, what can be done, and whether that has been done. The
/// step before fades into it.
ScrollPage {
    id: page

    required property bool isCurrent
    required property bool isAnimated
    required property string systemName
    property real iconSize: 44
    property color tint: Look.accent
    required property string title
    required property string description
    /// There is something to be granted, and so something to wait for and to skip.
    property bool isPermission: true
    property bool isGranted: false
    /// What the user can do here while it waits.
    property string hint
    /// Of the first row.
    default property alias buttons: buttonRow.data
    /// What comes below all that now and then.
    property alias below: extra.data

    readonly property real footHeight: 64
    /// The same for all pages, so that the badge stands still when they change.
    readonly property real columnTop:
        Math.round(Math.max(24, (height - footHeight - usualHeight) * 0.42))
    readonly property real usualHeight: 390

    signal skipped()

    /// How the keys come to it.
    required property int focusReason
    readonly property bool canHaveFocus: visible && enabled

    /// Return presses its first button from now on.
    function takeFocus() {
        buttonRow.children[0].forceActiveFocus(focusReason);
    }

    contentHeight: Math.max(height, columnTop + column.height + extra.height + footHeight)
    opacity: isCurrent ? 1 : 0
    visible: isCurrent || opacity > 0
    enabled: isCurrent

    onCanHaveFocusChanged: {
        if (canHaveFocus) {
            takeFocus();
        }
    }

    Behavior on opacity {
        enabled: page.isAnimated

        NumberAnimation { duration: 200; easing.type: Easing.InOutQuad }
    }

    Column {
        id: column

        y: page.columnTop
        width: page.width

        StepBadge {
            objectName: "badge"
            anchors.horizontalCenter: parent.horizontalCenter
            systemName: page.systemName
            iconSize: page.iconSize
            tint: page.tint
        }
        Gap { height: 30 }
        CentredText {
            objectName: "title"
            text: page.title
            font: Typeface.font(26, Font.Bold)
            color: Look.textPrimary
            Accessible.role: Accessible.Heading
        }
        Gap { height: 12 }
        CentredText {
            objectName: "description"
            text: page.description
            font: Typeface.font(15)
            lineHeight: 1.3
            color: Look.textSecondary
        }
        Gap { height: 30 }
        Row {
            id: buttonRow

            objectName: "buttons"
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12
        }
        Gap {
            height: 22
            visible: page.isPermission
        }
        PermissionStatus {
            objectName: "status"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: page.isPermission
            isGranted: page.isGranted
        }
        Gap {
            height: 10
            visible: hintText.visible
        }
        CentredText {
            id: hintText

            objectName: "hint"
            visible: page.isPermission && text !== ""
            opacity: page.isGranted ? 0 : 1
            text: page.hint
            font: Typeface.font(12)
            color: Look.textSecondary
            Accessible.ignored: page.isGranted

            Behavior on opacity { NumberAnimation { duration: 200; easing.type: Easing.InOutQuad } }
        }
    }
    Item {
        id: extra

        y: column.y + column.height
        width: Math.min(440, page.width)
        height: childrenRect.height
        anchors.horizontalCenter: parent.horizontalCenter
    }
    LinkButton {
        objectName: "skipButton"
        anchors.horizontalCenter: parent.horizontalCenter
        y: page.contentHeight - page.footHeight + (page.footHeight - height) / 2 - 4
        visible: page.isPermission
        text: qsTr("Skip for now")
        tint: Look.textSecondary
        font: Typeface.font(12)
        onClicked: page.skipped()
    }

    component Gap: Item {
        width: 1
    }
    component CentredText: Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
