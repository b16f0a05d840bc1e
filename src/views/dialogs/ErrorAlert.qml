import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quorvin

/// Tells what went wrong.
Sheet {
    id: alert

    required property QtObject appState
    // As they were when it came: they are gone while it fades away.
    property string message
    property bool offersSettings: false

    isPresented: appState.showError
    width: 400
    padding: 20
    spacing: 14
    borderColor: Qt.alpha(ThemeManager.current.error, 0.35)
    title: qsTr("Error")

    onAboutToShow: {
        page.contentY = 0;
        defaultButton.focus = true;
    }
    onDismissed: appState.dismissError()

    Binding {
        target: alert
        property: "message"
        value: alert.appState.errorMessage || qsTr("Unknown error")
        when: alert.isPresented
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: alert
        property: "offersSettings"
        value: alert.appState.isAccessibilityError
        when: alert.isPresented
        restoreMode: Binding.RestoreNone
    }

    RowLayout {
        spacing: 10

        Symbol {
            name: "xmark.octagon.fill"
            size: 20
            color: ThemeManager.current.error
        }
        Text {
            objectName: "alertTitle"
            text: alert.title
            font: Typeface.font(16, Font.DemiBold)
            color: Look.textPrimary
        }
    }
    Flickable {
        id: page

        objectName: "alertPage"
        Layout.fillWidth: true
        implicitHeight: Math.min(240, message.height)
        contentHeight: message.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        ScrollBar.vertical: SlimScrollBar { tint: Look.textSecondary }

        TextEdit {
            id: message

            objectName: "alertMessage"
            width: page.width - 12
            text: alert.message
            textFormat: TextEdit.PlainText
            readOnly: true
            selectByMouse: true
            activeFocusOnPress: false
            wrapMode: TextEdit.Wrap
            font: Typeface.font(13)
            color: Look.textSecondary
            selectionColor: Look.accent
            selectedTextColor: Look.bgBase
            Accessible.role: Accessible.AlertMessage
            Accessible.name: alert.message
        }
    }
    RowLayout {
        Layout.alignment: Qt.AlignRight
        Layout.topMargin: 4
        spacing: 8

        DialogButton {
            objectName: "cancelButton"
            text: qsTr("Cancel")
            tint: Look.textPrimary
            visible: alert.offersSettings
            onClicked: alert.close()
        }
        DialogButton {
            id: defaultButton

            objectName: "defaultButton"
            text: alert.offersSettings ? qsTr("Open Settings") : qsTr("OK")
            tint: Look.accent
            isDefault: true
            onClicked: {
                if (alert.offersSettings) {
                    alert.appState.openAccessibilitySettings();
                } else {
                    alert.close();
                }
            }
            Keys.onUpPressed: page.flick(0, 600)
            Keys.onDownPressed: page.flick(0, -600)
        }
    }
}
