// Saves pictures of the compact view in its states and in some themes to the directory given, at
// the scale that QT_SCALE_FACTOR says.

#include "CompactViewTest.h"
#include "theme/GeistFont.h"
#include "views/ViewTypes.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QQuickStyle>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <numbers>

using namespace quorvin;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int sampleRate = 16000;

/// A vowel: harmonics of a voice under two formants.
std::vector<float> vowel(int frame) {
    constexpr int length = 1024;
    constexpr double pitch = 130;
    std::vector<float> samples;
    for (int n = 0; n < length; ++n) {
        const double t = (frame * length + n) / static_cast<double>(sampleRate);
        double sum = 0;
        for (int harmonic = 1; harmonic * pitch < sampleRate / 2.0; ++harmonic) {
            const double frequency = harmonic * pitch;
            const double gain = std::exp(-std::pow((frequency - 600) / 450, 2)) +
                                0.5 * std::exp(-std::pow((frequency - 2400) / 700, 2)) + 0.04;
            sum += gain * std::sin(2 * std::numbers::pi * frequency * t + harmonic * harmonic);
        }
        samples.push_back(static_cast<float>(0.08 * sum));
    }
    return samples;
}

class Scene final : public quorvin::testing::CompactViewTest {
public:
    void TestBody() override {}

    void shoot(const QString& path, const QString& themeName,
               const std::function<void(Scene&)>& arrange) {
        audioHost.deviceList = {{.number = 7, .name = "Desk Microphone", .inputChannelCount = 1}};
        defaults.setString(u"selectedDevice"_s, u"7"_s);
        defaults.setString(u"selectedTheme"_s, themeName);
        theme.setTheme(themeName);
        showView();
        arrange(*this);
        // Fades come to their end.
        advance(350ms);
        if (!grab().save(path)) {
            std::abort();
        }
    }
    void draft(const QString& text) { app().setDraftText(text); }
    void speakVowels(int frames) {
        for (int frame = 0; frame < frames; ++frame) {
            feedMicrophone(vowel(frame));
            scheduler.advance(33ms);
        }
    }
    void rest() { scheduler.advance(2300ms); }
    void record() {
        app().startRecording();
        speakVowels(230);
    }
    void wait() {
        record();
        transcribe();
        scheduler.advance(550ms);
    }
    void finish() {
        if (app().isTranscribing()) {
            answerEngine(QString());
        }
    }
    void tell(const QString& text) { app().showCompactFeedback(text, 60); }
    void attachImages(int count) { attach(count); }
    void takeAwayKeys() { keyEvents.trusted = false; }
    void point(const QString& name) {
        item(name)->findChild<QObject*>(u"toolTip"_s)->setProperty("delay", 0);
        hover(name);
        advance(800ms);
    }
};

struct Picture {
    QString name;
    std::function<void(Scene&)> arrange;
};

const QString sentence = u"Please look at the login form and fix the focus order."_s;

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    registerViewTypes();
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    QApplication::setFont(GeistFont::font(13));
    QQuickStyle::setStyle(u"Basic"_s);
    const QDir directory(QApplication::arguments().value(1));

    const QList<Picture> pictures{
        {u"idle"_s, [](Scene& scene) { scene.rest(); }},
        {u"draft"_s,
         [](Scene& scene) {
             scene.rest();
             scene.draft(sentence.repeated(11));
         }},
        {u"recording"_s, [](Scene& scene) { scene.record(); }},
        {u"transcribing"_s, [](Scene& scene) { scene.wait(); }},
        {u"feedback"_s,
         [](Scene& scene) {
             scene.rest();
             scene.draft(sentence);
             scene.tell(u"✓ sent"_s);
         }},
        {u"feedback-long"_s,
         [](Scene& scene) {
             scene.rest();
             scene.draft(sentence);
             scene.tell(u"⚠ Accessibility — re-grant!"_s);
         }},
        {u"attachments"_s,
         [](Scene& scene) {
             scene.rest();
             scene.draft(sentence);
             scene.attachImages(9);
         }},
        {u"recording-attachments"_s,
         [](Scene& scene) {
             scene.attachImages(3);
             scene.record();
         }},
        {u"tooltip"_s,
         [](Scene& scene) {
             scene.rest();
             scene.draft(sentence);
             scene.point(u"attachButton"_s);
         }},
    };
    const QString scale = u"@%1x"_s.arg(qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s));
    for (const QString& theme : {u"razer"_s, u"latte"_s, u"nord"_s, u"synthwave"_s}) {
        for (const Picture& picture : pictures) {
            Scene scene;
            scene.shoot(directory.filePath(theme + u'-' + picture.name + scale + u".png"_s), theme,
                        picture.arrange);
            scene.finish();
        }
    }
    Scene warning;
    warning.takeAwayKeys();
    warning.shoot(directory.filePath(u"razer-warning"_s + scale + u".png"_s), u"razer"_s,
                  [](Scene& scene) {
                      scene.rest();
                      scene.draft(sentence);
                      scene.point(u"warnTriangle"_s);
                  });
    return EXIT_SUCCESS;
}
