import QtQuick
import Quorvin

/// The content of the compact panel: the waveform, which is one big record button, over the status
/// bar.
Item {
    id: view

    required property QtObject appState

    width: 360
    height: 72

    Component.onCompleted: appState.startCompactAnimation()
    Component.onDestruction: appState.stopCompactAnimation()

    CompactStrip {
        id: strip

        objectName: "compactStrip"
        width: parent.width
        height: 48
        appState: view.appState
    }
    CompactStatusBar {
        y: strip.height
        width: parent.width
        height: parent.height - strip.height
        radius: 22
        isRecording: view.appState.isRecording
        isTranscribing: view.appState.isTranscribing
        micOK: view.appState.microphoneAuthorized
        axOK: view.appState.accessibilityAuthorized
        modelOK: view.appState.modelLoaded
        hasDraft: view.appState.draftText !== ""
        draftWordCount: CompactLabels.wordCount(view.appState.draftText)
        feedback: view.appState.compactFeedback
        onStop: () => strip.toggleRecording()
        onCancel: () => {
            if (view.appState.isRecording) {
                view.appState.cancelRecording();
            } else {
                view.appState.switchToMainWindow(true);
            }
        }
        onSend: () => view.appState.compactSendCommand()
        onDeleteLast: () => view.appState.deleteLastPhrase()
        onLoadPrevious: () => view.appState.loadPreviousPhrase()
        onAttach: () => imagePicker.open()
    }
    ImagePicker {
        id: imagePicker

        onPicked: images => view.appState.attachImages(images)
    }
}
