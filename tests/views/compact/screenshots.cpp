// Makes pictures of the compact view in its states; see support/ScreenshotProgram.h.

#include "CompactViewTest.h"
#include "views/support/ScreenshotProgram.h"

#include <cmath>
#include <cstdlib>
#include <functional>
#include <numbers>

using namespace quorvin::testing;
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

class CompactScene final : public Scene<CompactViewTest> {
public:
    using Scene::Scene;

    [[nodiscard]] QImage picture(const std::function<void(CompactScene&)>& arrange) {
        showView();
        arrange(*this);
        // Fades come to their end.
        advance(350ms);
        QImage picture = grab();
        if (app().isTranscribing()) {
            answerEngine(QString());
        }
        return picture;
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
    std::function<void(CompactScene&)> arrange;
};

const QString sentence = u"Please look at the login form and fix the focus order."_s;

} // namespace

int main(int argc, char** argv) {
    const ScreenshotProgram program(argc, argv);
    const QList<Picture> pictures{
        {u"idle"_s, [](CompactScene& scene) { scene.rest(); }},
        {u"draft"_s,
         [](CompactScene& scene) {
             scene.rest();
             scene.draft(sentence.repeated(11));
         }},
        {u"recording"_s, [](CompactScene& scene) { scene.record(); }},
        {u"transcribing"_s, [](CompactScene& scene) { scene.wait(); }},
        {u"feedback"_s,
         [](CompactScene& scene) {
             scene.rest();
             scene.draft(sentence);
             scene.tell(u"✓ sent"_s);
         }},
        {u"feedback-long"_s,
         [](CompactScene& scene) {
             scene.rest();
             scene.draft(sentence);
             scene.tell(u"⚠ Accessibility — re-grant!"_s);
         }},
        {u"attachments"_s,
         [](CompactScene& scene) {
             scene.rest();
             scene.draft(sentence);
             scene.attachImages(9);
         }},
        {u"recording-attachments"_s,
         [](CompactScene& scene) {
             scene.attachImages(3);
             scene.record();
         }},
        {u"tooltip"_s,
         [](CompactScene& scene) {
             scene.rest();
             scene.draft(sentence);
             scene.point(u"attachButton"_s);
         }},
    };
    for (const QString& theme :
         program.themes({u"razer"_s, u"latte"_s, u"nord"_s, u"synthwave"_s})) {
        for (const Picture& picture : pictures) {
            program.save(u"compact-%1-%2"_s.arg(theme, picture.name),
                         CompactScene(theme).picture(picture.arrange));
        }
    }
    CompactScene warning(u"razer"_s);
    warning.takeAwayKeys();
    program.save(u"compact-razer-warning"_s, warning.picture([](CompactScene& scene) {
        scene.rest();
        scene.draft(sentence);
        scene.point(u"warnTriangle"_s);
    }));
    return EXIT_SUCCESS;
}
