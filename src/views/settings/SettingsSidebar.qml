import QtQuick
import QtQuick.Controls
import Quorvin

/// The list of the sections. Up and Down go through them; the pages of the section that shows are
/// turned from here as well.
Pane {
    id: sidebar

    required property int selectedSection

    signal selected(int section)
    /// By that many pages, down or up.
    signal scrolled(int pages)

    function step(by: int) {
        const section = selectedSection + by;
        if (section >= 0 && section < SettingsTabs.count) {
            selected(section);
            rows.itemAt(section).forceActiveFocus(Qt.TabFocusReason);
        }
    }

    padding: 10
    topPadding: 18
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Sections")
    Component.onCompleted: rows.itemAt(selectedSection).forceActiveFocus()
    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
            event.accepted = true;
            scrolled(event.key === Qt.Key_PageUp ? -1 : 1);
        }
    }

    background: Rectangle {
        color: ThemeManager.current.usesLightAppearance ? sidebar.palette.window : "#17171f"
    }

    Column {
        width: parent.width
        spacing: 2

        Repeater {
            id: rows

            model: SettingsTabs.count
            delegate: SidebarItem {
                required property int index

                objectName: "sidebarItem"
                width: parent.width
                text: SettingsTabs.title(index)
                symbol: SettingsTabs.symbol(index)
                isSelected: index === sidebar.selectedSection
                onClicked: sidebar.selected(index)
            }
        }
    }
}
