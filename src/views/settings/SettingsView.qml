import QtQuick
import QtQuick.Controls
import Quorvin

/// The content of the settings window: the sections in a sidebar, and beside it the selected one.
SplitView {
    id: view

    required property QtObject appState
    property int selectedSection: SettingsTabs.SettingsTab.general

    handle: Item {
        implicitWidth: 1
        containmentMask: Item { // wide enough for a hand
            x: -4
            width: 9
            height: view.height
        }

        Rectangle {
            anchors.fill: parent
            color: view.palette.mid
        }
    }

    SettingsSidebar {
        objectName: "sidebar"
        SplitView.minimumWidth: 200
        SplitView.preferredWidth: 220
        SplitView.maximumWidth: Math.max(SplitView.minimumWidth,
                                         view.width - detail.SplitView.minimumWidth)
        selectedSection: view.selectedSection
        onSelected: section => view.selectedSection = section
        onScrolled: pages => section.item.scroll(pages)
    }
    // Dark in every theme, as the texts of the sections are white in every theme.
    Rectangle {
        id: detail

        objectName: "detail"
        SplitView.fillWidth: true
        SplitView.minimumWidth: 500
        color: "#0e0e15"

        Loader {
            id: section

            readonly property var sections: [general, audio, appearance, agents, shortcuts,
                                             permissions, updates, about]

            objectName: "section"
            anchors.fill: parent
            sourceComponent: sections[view.selectedSection]
        }
    }

    Component { id: general; GeneralSection { appState: view.appState } }
    Component { id: audio; AudioSection { appState: view.appState } }
    Component { id: appearance; AppearanceSection { appState: view.appState } }
    Component { id: agents; AgentsSection { appState: view.appState } }
    Component { id: shortcuts; ShortcutsSection {} }
    Component { id: permissions; PermissionsSection { appState: view.appState } }
    Component { id: updates; UpdatesSection { appState: view.appState } }
    Component { id: about; AboutSection { appState: view.appState } }
}
