import QtQuick
import Quorvin

/// Leads the user through the permissions at the first start, in place of the main view.
Rectangle {
    id: view

    required property QtObject appState
    readonly property QtObject wizard: appState.onboarding
    /// 0 to 2 for the permissions, 3 at the end.
    readonly property int step: wizard.currentStep
    readonly property bool isOnScreen: Window.window?.visible ?? false
    readonly property list<OnboardingPage> pages: [microphone, accessibility, automation, done]

    /// It has found out where to begin; from there on, steps fade.
    property bool hasBegun: false
    /// The user goes from button to button by keys, and has to see where they go.
    property bool isFocusVisible: false
    readonly property int focusReason: isFocusVisible ? Qt.TabFocusReason : Qt.OtherFocusReason

    color: Look.bgBase

    onIsOnScreenChanged: {
        if (isOnScreen) {
            hasBegun = false;
            wizard.checkInitialState();
            hasBegun = true;
            pages[step].takeFocus();
        } else {
            wizard.stop();
        }
    }

    Connections {
        target: view.Window.window

        function onActiveFocusItemChanged() {
            const item = view.Window.activeFocusItem;
            if (item && item.visualFocus !== undefined) {
                view.isFocusVisible = item.visualFocus;
            }
        }
    }

    Rectangle {
        objectName: "sheen"
        width: parent.width
        height: parent.height / 2
        gradient: Gradient {
            GradientStop { position: 0; color: Qt.rgba(1, 1, 1, 0.05) }
            GradientStop { position: 1; color: Qt.rgba(1, 1, 1, 0) }
        }
    }
    StepIndicator {
        id: indicator

        objectName: "stepIndicator"
        x: 20
        y: 24
        width: view.width - 2 * x
        step: view.step
        isAnimated: view.hasBegun
    }
    Item {
        anchors.top: indicator.bottom
        anchors.bottom: parent.bottom
        x: 20
        width: view.width - 2 * x

        OnboardingPage {
            id: microphone

            objectName: "microphonePage"
            anchors.fill: parent
            isCurrent: view.step === 0
            isAnimated: view.hasBegun
            focusReason: view.focusReason
            systemName: "mic.fill"
            iconSize: 48
            title: qsTr("Microphone Access")
            description: qsTr("Quorvin needs microphone access to\nrecord and transcribe your voice.")
            isGranted: view.wizard.micGranted
            hint: view.wizard.hint(0)
            onSkipped: view.wizard.completeWizard()

            OnboardingButton {
                objectName: "grantButton"
                isPrimary: true
                isOffered: !microphone.isGranted
                text: qsTr("Grant Access")
                onClicked: view.wizard.requestMicPermission()
            }
        }
        OnboardingPage {
            id: accessibility

            objectName: "accessibilityPage"
            anchors.fill: parent
            isCurrent: view.step === 1
            isAnimated: view.hasBegun
            focusReason: view.focusReason
            systemName: "keyboard"
            title: qsTr("Accessibility Access")
            description: qsTr("Quorvin needs Accessibility access to\ntype transcribed text into terminal apps.")
            isGranted: view.wizard.accGranted
            hint: view.wizard.hint(1)
            onSkipped: view.wizard.completeWizard()

            OnboardingButton {
                objectName: "accessibilitySettingsButton"
                isPrimary: true
                text: qsTr("Open Settings")
                onClicked: view.wizard.openAccessibilitySettings()
            }

            below: Reveal {
                objectName: "warning"
                width: parent.width
                gap: 18
                isShown: view.wizard.showAccessibilityWarning

                StaleEntryWarning {
                    width: parent.width
                    onContinued: view.wizard.continueWithoutTest()
                }
            }
        }
        OnboardingPage {
            id: automation

            objectName: "automationPage"
            anchors.fill: parent
            isCurrent: view.step === 2
            isAnimated: view.hasBegun
            focusReason: view.focusReason
            systemName: "gearshape.2"
            title: qsTr("Automation Access")
            description: qsTr("Quorvin needs Automation access to control\nTerminal, iTerm, and System Events.\n\nAllow each prompt that appears, or open\nSettings → Privacy → Automation to enable.")
            isGranted: view.wizard.autGranted
            hint: view.wizard.hint(2)
            onSkipped: view.wizard.completeWizard()

            OnboardingButton {
                objectName: "allowButton"
                isPrimary: true
                text: qsTr("Allow Prompts")
                onClicked: view.wizard.requestAutomationPermissions()
            }
            OnboardingButton {
                objectName: "automationSettingsButton"
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Open Settings")
                onClicked: view.wizard.openAutomationSettings()
            }
        }
        OnboardingPage {
            id: done

            objectName: "donePage"
            anchors.fill: parent
            isCurrent: view.step === 3
            isAnimated: view.hasBegun
            focusReason: view.focusReason
            systemName: "checkmark.circle.fill"
            iconSize: 56
            tint: Look.success
            title: qsTr("All Set!")
            description: qsTr("Quorvin is ready to use.\nPress Ctrl+` to start recording.")
            isPermission: false

            OnboardingButton {
                objectName: "getStartedButton"
                isPrimary: true
                text: qsTr("Get Started")
                onClicked: view.wizard.completeWizard()
            }
        }
    }
}
