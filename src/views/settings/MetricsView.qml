import QtQuick
import Quorvin

/// How long the latest steps took, kind by kind.
Column {
    id: metrics

    /// Of LatencySummary.
    required property var latencies

    signal cleared

    width: parent?.width ?? 0

    Repeater {
        model: metrics.latencies
        delegate: SettingRow {
            id: row

            required property var modelData

            objectName: "metricsRow"
            label: modelData.label
            isDivided: true

            ValueText {
                objectName: "noDataText"
                visible: row.modelData.count === 0
                text: "no data yet"
                color: Qt.rgba(1, 1, 1, 0.35)
            }
            Repeater {
                model: row.modelData.figures
                delegate: MetricChip {
                    required property var modelData

                    name: modelData.name
                    text: modelData.text
                    tint: "#" + modelData.colorHex
                }
            }
            MetricChip {
                visible: row.modelData.count > 0
                name: "n"
                text: row.modelData.count
                tint: Qt.rgba(1, 1, 1, 0.7)
            }
        }
    }
    SettingRow {
        label: ""
        description: "Profiled via os_signpost (view in Instruments)"

        SettingsButton {
            objectName: "clearMetricsButton"
            text: "Clear"
            Accessible.description: "Performance Metrics"
            onClicked: metrics.cleared()
        }
    }

    component MetricChip: Rectangle {
        id: chip

        required property string name
        required property string text
        required property color tint

        objectName: "metricChip"
        implicitWidth: Math.ceil(words.implicitWidth) + 2 * 8
        implicitHeight: 20
        radius: 5
        color: Qt.alpha(tint, 0.12)
        Accessible.role: Accessible.StaticText
        Accessible.name: name + " " + text

        Row {
            id: words

            anchors.centerIn: parent
            spacing: 4

            Text {
                text: chip.name
                font: Typeface.font(10)
                color: Qt.rgba(1, 1, 1, 0.45)
            }
            Text {
                objectName: "metricValue"
                text: chip.text
                font: Typeface.font(10, Font.Medium)
                color: chip.tint
            }
        }
    }
}
