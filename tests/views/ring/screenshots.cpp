// Makes a contact sheet of the ring, every style in every mode; see support/ScreenshotProgram.h.

#include "views/ring/MicLevelRingCanvas.h"
#include "views/support/ScreenshotProgram.h"

#include <cmath>
#include <cstdlib>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString sheet = uR"(
    Rectangle {
        width: rows.width + 2 * rows.x
        height: rows.height + 2 * rows.y
        color: Look.bgBase

        Column {
            id: rows

            x: 16
            y: 16
            spacing: 16

            Repeater {
                model: ["idle", "transcribing", "recording"]

                Row {
                    id: row

                    required property string modelData

                    spacing: 16

                    Repeater {
                        model: ["wave", "pulse", "comet", "bars", "orbit", "nova", "dna",
                                "plasma", "radar"]

                        Column {
                            required property string modelData

                            spacing: 8

                            MicLevelRing {
                                level: 0
                                isRecording: row.modelData === "recording"
                                isTranscribing: row.modelData === "transcribing"
                                isEnabled: true
                                animationStyle: parent.modelData
                            }
                            Text {
                                anchors.horizontalCenter: parent.horizontalCenter
                                text: parent.modelData + ", " + row.modelData
                                color: Look.textSecondary
                            }
                        }
                    }
                }
            }
        }
    })"_s;

class RingScene final : public Scene<ViewTest> {
public:
    using Scene::Scene;

    [[nodiscard]] QImage picture() {
        show(sheet);
        for (QQuickItem* const canvas : items(u"ringCanvas"_s)) {
            speakTo(*qobject_cast<MicLevelRingCanvas*>(canvas));
        }
        return grab();
    }

private:
    /// Some sentences, longer than the shock ring runs.
    static void speakTo(MicLevelRingCanvas& canvas) {
        constexpr int frames = 760;
        for (int frame = 0; frame < frames; ++frame) {
            canvas.setLevel(canvas.isRecording() ? 0.45 + 0.3 * std::sin(0.9 * frame) : 0);
            canvas.tick();
        }
    }
};

} // namespace

int main(int argc, char** argv) {
    const ScreenshotProgram program(argc, argv);
    for (const QString& theme : program.themes({u"razer"_s, u"latte"_s})) {
        program.save(u"ring-"_s + theme, RingScene(theme).picture());
    }
    return EXIT_SUCCESS;
}
