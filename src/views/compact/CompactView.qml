import QtQuick
import Quorvin

/// The content of the compact panel.
Item {
    id: view

    required property QtObject appState

    /// The window's own word: once closed it is deleted later, when the next one may be open.
    readonly property bool isShown: Window.window?.visible ?? false

    width: 360
    height: 72
    onIsShownChanged: isShown ? appState.startCompactAnimation() : appState.stopCompactAnimation()
    Component.onDestruction: {
        if (appState && isShown) { // the state may go first when the program ends
            appState.stopCompactAnimation();
        }
    }

    CompactStrip {
        objectName: "waveformStrip"
        width: parent.width
        height: 48
        appState: view.appState
    }

    CompactStatusBar {
        objectName: "statusBar"
        y: 48
        width: parent.width
        height: 24
        elapsed: view.appState.compactElapsed
        isRecording: view.appState.isRecording
        isTranscribing: view.appState.isTranscribing
        micOK: view.appState.microphoneAuthorized
        axOK: view.appState.accessibilityAuthorized
        modelOK: view.appState.modelLoaded
        hasDraft: view.appState.draftText !== ""
        draftWordCount: CompactLabels.wordCount(view.appState.draftText)
        feedback: view.appState.compactFeedback
        onStop: view.appState.isRecording ? view.appState.stopRecording()
                                          : view.appState.startRecording()
        onCancel: view.appState.isRecording ? view.appState.cancelRecording()
                                            : view.appState.switchToMainWindow(true)
        onSend: view.appState.compactSendCommand()
        onDeleteLast: view.appState.deleteLastPhrase()
        onLoadPrevious: view.appState.loadPreviousPhrase()
        onAttach: imagePicker.open()
    }

    ImagePicker {
        id: imagePicker

        objectName: "imagePicker"
        onPicked: images => view.appState.attachImages(images)
    }
}
