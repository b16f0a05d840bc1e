// Saves a contact sheet of the ring, every style in every mode:
//
//     ring_sheet FILE [THEME]
//
// at the scale that QT_SCALE_FACTOR says.

#include "theme/GeistFont.h"
#include "views/ViewTypes.h"
#include "views/ring/MicLevelRingCanvas.h"
#include "views/support/ViewTest.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QQuickStyle>

#include <cmath>
#include <cstdlib>

using namespace quorvin;
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

class Sheet final : public quorvin::testing::ViewTest {
public:
    void TestBody() override {}

    bool save(const QString& path, const QString& themeName) {
        theme.setTheme(themeName);
        show(sheet);
        for (QQuickItem* const canvas : items(u"ringCanvas"_s)) {
            speakTo(*qobject_cast<MicLevelRingCanvas*>(canvas));
        }
        return grab().save(path);
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
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2 || arguments.size() > 3) {
        qCritical("usage: ring_sheet FILE [THEME]");
        return EXIT_FAILURE;
    }
    registerViewTypes();
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    QApplication::setFont(GeistFont::font(13));
    QQuickStyle::setStyle(u"Basic"_s);
    return Sheet().save(arguments[1], arguments.value(2)) ? EXIT_SUCCESS : EXIT_FAILURE;
}
