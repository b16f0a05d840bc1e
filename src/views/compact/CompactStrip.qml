import QtQuick
import Quorvin

/// The panel's upper strip: the waveform, which is one big record button, and over it what is
/// recorded from, for how long, and a dot for each attached image.
Item {
    id: strip

    required property QtObject appState

    readonly property int attachedImageCount: appState.attachedImages.length

    function removeAttachmentAt(location: point): bool {
        const index = CompactAttachmentDots.dotAt(location, attachedImageCount,
                                                  Qt.size(width, height));
        if (index < 0) {
            return false;
        }
        removeAttachment(index);
        return true;
    }

    function removeAttachment(index: int) {
        appState.removeImage(appState.attachedImages[index]);
    }

    Accessible.role: Accessible.Button
    Accessible.name: appState.isRecording ? qsTr("Stop recording") : qsTr("Record")
    Accessible.onPressAction: appState.toggleRecording()

    TapHandler {
        onTapped: eventPoint => {
            if (!strip.removeAttachmentAt(eventPoint.position)) {
                strip.appState.toggleRecording();
            }
        }
    }

    CompactWaveformCanvas {
        objectName: "waveformCanvas"
        anchors.fill: parent
        barHeights: strip.appState.compactBarHeights
        isRecording: strip.appState.isRecording
        isTranscribing: strip.appState.isTranscribing
        elapsed: strip.appState.compactElapsed
        accentColor: ThemeManager.current.accent
    }

    NeonText {
        objectName: "micLabel"
        x: 14
        y: 4
        text: CompactLabels.micLabel(strip.appState.availableDevices,
                                     strip.appState.selectedDevice)
        font: Typeface.font(10, Font.Medium)
        color: Qt.alpha("#9becff", 0.92)
        glowColor: "#00e5ff"
        glowRadius: 4
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Accessible.description: qsTr("Microphone")
    }

    NeonText {
        objectName: "duration"
        anchors.right: parent.right
        anchors.rightMargin: 14
        y: 4
        visible: strip.appState.isRecording
        text: CompactLabels.duration(strip.appState.recordingDuration)
        font: Typeface.font(10, Font.DemiBold)
        color: Qt.alpha("#ffd0ec", 0.95)
        glowColor: "#ff3dbd"
        glowRadius: 4
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Accessible.description: qsTr("Length of the take")
    }

    Repeater {
        model: CompactAttachmentDots.dotCount(strip.attachedImageCount)

        Rectangle {
            required property int index
            readonly property rect place: CompactAttachmentDots.dot(index, strip.attachedImageCount,
                                                                    Qt.size(strip.width,
                                                                            strip.height))
            readonly property string file: String(strip.appState.attachedImages[index] ?? "")

            objectName: "attachmentDot"
            x: place.x
            y: place.y
            width: place.width
            height: place.height
            radius: width / 2
            color: "#ec4899"
            Accessible.role: Accessible.Button
            Accessible.name: qsTr("Remove %1").arg(decodeURIComponent(file.split("/").pop()))
            Accessible.onPressAction: strip.removeAttachment(index)
        }
    }
}
