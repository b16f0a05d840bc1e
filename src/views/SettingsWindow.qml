import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quorvin

/// The settings: at present, the appearance.
ThemedWindow {
    id: window

    required property QtObject appState

    title: "Settings"

    Shortcut {
        sequences: [StandardKey.Close, "Esc"]
        onActivated: window.close()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 32
        spacing: 4

        Text {
            text: "Appearance"
            font: Typeface.font(20, Font.DemiBold)
            color: Look.textPrimary
        }
        Text {
            text: qsTr("The colours of all windows")
            font: Typeface.font(12)
            color: Look.textSecondary
        }
        GridView {
            id: themes

            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.topMargin: 20
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            cellWidth: Math.floor(width / Math.max(1, Math.floor(width / 200)))
            cellHeight: 92
            clip: true
            model: Themes.all
            delegate: Item {
                id: cell

                required property var modelData
                required property int index

                width: themes.cellWidth
                height: themes.cellHeight

                ThemeChip {
                    anchors.fill: parent
                    anchors.margins: 6
                    theme: cell.modelData
                    isSelected: ThemeManager.current.name === theme.name
                    onClicked: {
                        ThemeManager.setTheme(theme.name);
                        window.appState.selectedTheme = theme.name;
                    }
                }
            }
        }
    }
}
