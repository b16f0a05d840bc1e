import QtQuick

/// The panel's lower strip: the state, what there is to say, and the commands.
Rectangle {
    id: bar

    required property bool isRecording
    required property bool isTranscribing
    required property bool micOK
    required property bool axOK
    required property bool modelOK
    required property bool hasDraft
    required property int draftWordCount
    required property string feedback

    property var onStop
    property var onCancel
    property var onSend
    property var onDeleteLast
    property var onLoadPrevious
    property var onAttach

    readonly property bool isBusy: isRecording || isTranscribing

    color: Qt.rgba(0.09, 0.09, 0.09, 1)

    StatusDot {
        id: dot

        anchors.verticalCenter: parent.verticalCenter
        x: 14
        isRecording: bar.isRecording
        isTranscribing: bar.isTranscribing
        micOK: bar.micOK
        axOK: bar.axOK
        modelOK: bar.modelOK
    }
}
