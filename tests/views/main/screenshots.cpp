// Makes pictures of the main window in its states; see support/ScreenshotProgram.h.

#include "theme/ThemeLibrary.h"
#include "views/dialogs/DialogsTest.h"
#include "views/draft/ImageThumbnailReader.h"
#include "views/support/ScreenshotProgram.h"

#include <QLinearGradient>
#include <QPainter>

#include <cmath>
#include <cstdlib>
#include <functional>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A landscape in colours of that hue, in degrees.
QImage landscape(int hue) {
    const auto color = [hue](int turn, int saturation, int value) {
        return QColor::fromHsv((hue + turn) % 360, saturation, value);
    };
    QImage image(320, 240, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, image.height());
    sky.setColorAt(0, color(0, 190, 160));
    sky.setColorAt(1, color(50, 120, 255));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(70, 60, 255));
    painter.drawEllipse(QPointF(210, 90), 34, 34);
    painter.setBrush(color(20, 180, 110));
    painter.drawPolygon(
        QPolygonF({{-20, 240}, {90, 110}, {150, 175}, {230, 95}, {380, 240}, {-20, 240}}));
    painter.setBrush(color(35, 200, 70));
    painter.drawEllipse(QPointF(60, 290), 220, 90);
    return image;
}

class MainScene final : public Scene<DialogsTest> {
public:
    using Scene::Scene;

    [[nodiscard]] QImage picture(const std::function<void(MainScene&)>& arrange) {
        start();
        scheduler.runPosted(); // the model's load
        show(u"MainView { width: 580; height: 850 }"_s, appState());
        arrange(*this);
        imageThumbnail::threads().waitForDone();
        // Fades come to their end.
        advance(600ms);
        QImage picture = grab();
        if (app().isTranscribing()) {
            answerEngine(QString());
        }
        return picture;
    }

    void rest() { advance(3s); }
    void record() {
        app().startRecording();
        constexpr int frames = 400;
        for (int frame = 0; frame < frames; ++frame) {
            setLevel(0.6 + 0.3 * std::sin(0.2 * frame));
            advance(32ms);
        }
    }
    void transcribe() {
        record();
        holdEngine();
        app().stopRecording();
        advance(1s);
    }

    void draft(const QString& text, int images) {
        click(u"draftToggleButton"_s);
        leave();
        app().setDraftText(text);
        QList<QUrl> urls;
        for (int i = 0; i < images; ++i) {
            const QString path = directory.filePath(u"landscape%1.png"_s.arg(i));
            if (!landscape(67 * i + 205).save(path)) {
                std::abort();
            }
            urls.append(QUrl::fromLocalFile(path));
        }
        app().attachImages(urls);
        advance(600ms);
    }

    void offerUpdate() {
        network.answer(0, R"({"version": "2.0.0", "dmg": "https://updates.test/quorvin"})");
    }
    void downloadUpdate(double fraction) {
        offerUpdate();
        app().installUpdate();
        scheduler.runPosted();
        network.progress(fraction);
    }
    void failUpdate() {
        downloadUpdate(0);
        network.fail(u"Host updates.test not found"_s);
    }
    void installUpdate() {
        downloadUpdate(1);
        scheduler.runPosted(); // the last of the progress, before the end
        network.finish();
    }

    void sendToNobody() {
        app().setDraftText(u"fix it"_s);
        app().sendToOpenCode();
        scheduler.advance(2s);
    }
    void sendWithoutPermission() {
        keyEvents.trusted = false;
        runAgent(u"claude"_s, 1001);
        app().setDraftText(u"fix it"_s);
        app().sendToClaude();
        scheduler.advance(2s);
    }

    void openHistory() {
        remember(u"Add a changelog entry for the new export format."_s, {}, 3.1);
        remember(u"Warum schlägt der Test für die Anmeldung nur unter Linux fehl?"_s, u"OpenCode"_s,
                 4.6, u"de"_s);
        remember(u"Rename the helper to parseAmount and use it in the invoice view, too."_s,
                 u"Claude"_s, 5.8);
        remember(u"Look at the login form and fix the focus order: Tab should go from the name to "
                 "the password, then to the button, and Return should send the form from anywhere "
                 "in it. Then write a test for it."_s,
                 u"Claude"_s, 14.7);
        app().loadHistory();
        app().setShowHistory(true);
    }
    void openSessionPicker() {
        const QStringList projects{u"webshop"_s, u"invoice-parser"_s, u"quorvin"_s};
        openPicker(static_cast<int>(projects.size()));
        app().setShowSessionPicker(false);
        for (int i = 0; i < projects.size(); ++i) {
            processes.workingDirectories[1001 + i] = u"/home/dev/"_s + projects[i];
        }
        app().sendToClaude();
        scheduler.advance(2s);
    }
    void openFeed() {
        app().clearActivityLog(); // of what a start of the fakes tells
        dictate(u"Look at the login form and fix the focus order."_s);
        app().log(ActivityType::success, u"Sent to Claude successfully"_s);
        app().setShowActivityLog(true);
        advance(20s); // until the ring has told of the success
    }
};

struct Picture {
    QString name;
    std::function<void(MainScene&)> arrange;
};

} // namespace

int main(int argc, char** argv) {
    const ScreenshotProgram program(argc, argv);
    QStringList allThemes;
    for (const ThemeColors& theme : ThemeLibrary::allThemes()) {
        allThemes.append(theme.name);
    }

    const QString text = u"Look at the login form and fix the focus order: Tab should go from the "
                         "name to the password, then to the button. The pictures show where it "
                         "jumps now. Then write a test for it."_s;
    const QList<Picture> pictures{
        {u"idle"_s, [](MainScene& scene) { scene.rest(); }},
        {u"recording"_s, [](MainScene& scene) { scene.record(); }},
        {u"transcribing"_s, [](MainScene& scene) { scene.transcribe(); }},
        {u"draft"_s, [&](MainScene& scene) { scene.draft(text, 5); }},
        {u"draft-long"_s, [&](MainScene& scene) { scene.draft(text.repeated(20), 18); }},
        {u"banner-idle"_s, [](MainScene& scene) { scene.offerUpdate(); }},
        {u"banner-downloading"_s, [](MainScene& scene) { scene.downloadUpdate(0.42); }},
        {u"banner-failed"_s, [](MainScene& scene) { scene.failUpdate(); }},
        {u"banner-installing"_s, [](MainScene& scene) { scene.installUpdate(); }},
        {u"error"_s, [](MainScene& scene) { scene.sendToNobody(); }},
        {u"error-accessibility"_s, [](MainScene& scene) { scene.sendWithoutPermission(); }},
        {u"history"_s, [](MainScene& scene) { scene.openHistory(); }},
        {u"picker"_s, [](MainScene& scene) { scene.openSessionPicker(); }},
        {u"feed"_s, [](MainScene& scene) { scene.openFeed(); }},
    };
    for (const QString& theme : program.themes(allThemes)) {
        for (const Picture& picture : pictures) {
            program.save(u"main-%1-%2"_s.arg(theme, picture.name),
                         MainScene(theme).picture(picture.arrange));
        }
    }
    return EXIT_SUCCESS;
}
