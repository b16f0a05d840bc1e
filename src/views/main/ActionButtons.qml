import QtQuick
import QtQuick.Layouts
import Quorvin

/// The ways that the draft can go.
Item {
    id: buttons

    required property QtObject appState

    readonly property bool hasDraft: appState.draftText !== ""
                                     || appState.attachedImages.length > 0

    implicitWidth: row.implicitWidth + 2 * 20
    implicitHeight: row.implicitHeight + 2 * 12

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 20
        anchors.rightMargin: 20
        spacing: 10

        Text {
            objectName: "sendToLabel"
            text: qsTr("Send to")
            font: Typeface.font(12, Font.Medium)
            color: Look.textSecondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        SendChip {
            objectName: "claudeChip"
            target: SendChip.Target.Claude
            disabled: !buttons.hasDraft
            Accessible.description: hint.text
            onClicked: buttons.appState.sendToClaude()
        }
        SendChip {
            objectName: "openCodeChip"
            target: SendChip.Target.OpenCode
            disabled: !buttons.hasDraft
            Accessible.description: hint.text
            onClicked: buttons.appState.sendToOpenCode()
        }
        Text {
            id: hint

            objectName: "draftHint"
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignRight
            elide: Text.ElideRight
            text: buttons.hasDraft ? "" : qsTr("record or type first")
            font: Typeface.font(11)
            color: Look.textMuted
            opacity: 0.6
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
