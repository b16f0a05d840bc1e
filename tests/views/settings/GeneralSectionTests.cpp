#include "SettingsViewTest.h"

#include <QFile>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class GeneralSection : public SettingsViewTest {
protected:
    struct Toggle {
        QString label;
        QString description;
        bool (AppState::*read)() const;
        QString key;
    };
    const QList<Toggle> toggles{
        {u"Translate to English"_s, u"Always output English regardless of spoken language"_s,
         &AppState::translateToEnglish, u"translateToEnglish"_s},
        {u"Auto-Stop on Silence"_s, u"Stop recording automatically when you stop speaking"_s,
         &AppState::vadAutoStop, u"vadAutoStop"_s},
        {u"Append Mode"_s, u"Join consecutive transcriptions instead of replacing"_s,
         &AppState::appendMode, u"appendMode"_s},
        {u"Orchestrator Prefix"_s,
         u"Prepend ORCHESTRATOR CONTEXT when sending to Claude/OpenCode"_s,
         &AppState::agentsIncluded, u"agentsIncluded"_s},
        {u"Always on Top"_s, u"Keep main window floating above other apps"_s,
         &AppState::alwaysOnTop, u"alwaysOnTop"_s},
        {u"UI Sounds"_s, u"Play sounds on recording start and transcription complete"_s,
         &AppState::soundsEnabled, u"soundsEnabled"_s},
    };
};

} // namespace

TEST_F(GeneralSection, HasItsRows) {
    open(Tab::general);
    EXPECT_EQ(cards(),
              QStringList({u"Transcription: Language, Translate to English, Whisper Model"_s,
                           u"Behavior: Auto-Stop on Silence, Silence Timeout, Append Mode, "
                           u"Orchestrator Prefix"_s,
                           u"Window: Always on Top, UI Sounds"_s}));
    EXPECT_EQ(descriptionOf(u"Language"_s), u"Whisper transcription language"_s);
    EXPECT_EQ(descriptionOf(u"Whisper Model"_s), u"Accuracy vs. speed tradeoff"_s);
    EXPECT_EQ(descriptionOf(u"Silence Timeout"_s), u"Seconds of silence before auto-stop"_s);
}

TEST_F(GeneralSection, ItsTogglesAreSettings) {
    open(Tab::general);
    for (const Toggle& expected : toggles) {
        EXPECT_EQ(descriptionOf(expected.label), expected.description);
        QQuickItem* const toggle = control(expected.label, u"toggle"_s);
        const bool before = (app().*expected.read)();
        EXPECT_EQ(toggle->property("isOn").toBool(), before);
        clickOn(toggle);
        EXPECT_EQ((app().*expected.read)(), !before) << expected.label.toStdString();
        EXPECT_EQ(toggle->property("isOn").toBool(), !before);
        EXPECT_EQ(defaults.boolean(expected.key), !before);
        press(toggle, Qt::Key_Space);
        EXPECT_EQ((app().*expected.read)(), before);
        press(toggle, Qt::Key_Return);
        EXPECT_EQ((app().*expected.read)(), !before);
        EXPECT_EQ(accessible(toggle)->text(QAccessible::Name), expected.label);
        EXPECT_EQ(accessible(toggle)->state().checked, !before);
        pressByAssistant(toggle);
        EXPECT_EQ((app().*expected.read)(), before);
    }
}

TEST_F(GeneralSection, OffersTheLanguages) {
    open(Tab::general);
    QQuickItem* const picker = item(u"languagePicker"_s);
    EXPECT_EQ(picker->width(), 150);
    EXPECT_EQ(picker->property("displayText"), u"English"_s);
    EXPECT_EQ(entriesOf(picker),
              QStringList({u"Auto Detect"_s, u"English"_s, u"Ukrainian"_s, u"Russian"_s,
                           u"Spanish"_s, u"French"_s, u"German"_s, u"Chinese"_s, u"Japanese"_s}));
    choose(picker, u"Ukrainian"_s);
    EXPECT_EQ(app().language(), u"uk"_s);
    EXPECT_EQ(defaults.string(u"language"_s), u"uk"_s);
    EXPECT_EQ(app().whisperService().language, u"uk"_s);
    EXPECT_EQ(picker->property("displayText"), u"Ukrainian"_s);
    press(picker, Qt::Key_Up);
    EXPECT_EQ(app().language(), u"en"_s);
    EXPECT_EQ(accessible(picker)->text(QAccessible::Name), u"Language"_s);
}

TEST_F(GeneralSection, AnUnknownLanguageShowsNothing) {
    defaults.setString(u"language"_s, u"tlh"_s);
    open(Tab::general);
    EXPECT_EQ(item(u"languagePicker"_s)->property("displayText"), u""_s);
    EXPECT_EQ(app().language(), u"tlh"_s);
}

TEST_F(GeneralSection, HandsTheTranslationOnToTheEngine) {
    open(Tab::general);
    clickOn(control(u"Translate to English"_s, u"toggle"_s));
    EXPECT_TRUE(app().whisperService().translateToEnglish);
}

TEST_F(GeneralSection, ChoosingAModelLoadsIt) {
    open(Tab::general);
    QFile model(bundle.home + u"/models/ggml-medium.bin"_s);
    ASSERT_TRUE(model.open(QIODevice::WriteOnly));
    QQuickItem* const picker = item(u"modelPicker"_s);
    EXPECT_EQ(entriesOf(picker),
              QStringList({u"Small  (fast)"_s, u"Medium (balanced)"_s, u"Large  (best)"_s}));
    choose(picker, u"Medium (balanced)"_s);
    scheduler.runPosted();
    EXPECT_EQ(app().engineTier(), u"medium"_s);
    EXPECT_EQ(app().whisperService().modelPath(), model.fileName());
    EXPECT_FALSE(app().showError());
    choose(picker, u"Large  (best)"_s);
    EXPECT_EQ(app().errorMessage(), u"Model not found: ggml-large-v3.bin"_s);
    EXPECT_EQ(picker->property("displayText"), u"Large  (best)"_s) << "the choice stays";
    app().dismissError();
    choose(picker, u"Large  (best)"_s);
    EXPECT_FALSE(app().showError()) << "nothing has changed";
}

TEST_F(GeneralSection, TheSilenceTimeoutGoesFromThreeToThirtySeconds) {
    open(Tab::general);
    QQuickItem* const slider = control(u"Silence Timeout"_s, u"slider"_s);
    QQuickItem* const value = control(u"Silence Timeout"_s, u"sliderValue"_s);
    EXPECT_EQ(slider->width(), 100);
    EXPECT_EQ(value->width(), 28);
    EXPECT_EQ(value->property("text"), u"12"_s);
    press(slider, Qt::Key_Right);
    EXPECT_EQ(app().silenceTimeout(), 13);
    EXPECT_EQ(value->property("text"), u"13"_s);
    press(slider, Qt::Key_Right, 30);
    EXPECT_EQ(app().silenceTimeout(), 30);
    press(slider, Qt::Key_Left, 40);
    EXPECT_EQ(app().silenceTimeout(), 3);
    EXPECT_EQ(defaults.number(u"silenceTimeout"_s), 3);
    press(slider, Qt::Key_End);
    EXPECT_EQ(app().silenceTimeout(), 30);
    EXPECT_EQ(slider->property("value").toDouble(), 30);
    press(slider, Qt::Key_Home);
    EXPECT_EQ(app().silenceTimeout(), 3);
    press(slider, Qt::Key_Right);
    EXPECT_EQ(app().silenceTimeout(), 4);
}

TEST_F(GeneralSection, TheSilenceTimeoutIsUsableWithoutAutoStop) {
    defaults.setBoolean(u"vadAutoStop"_s, false);
    open(Tab::general);
    QQuickItem* const slider = control(u"Silence Timeout"_s, u"slider"_s);
    EXPECT_TRUE(slider->isEnabled());
    const QRectF place = frameOf(slider);
    drag(place.center().toPoint(), QPoint(qRound(place.right()), qRound(place.center().y())));
    EXPECT_EQ(app().silenceTimeout(), 30);
    clickOn(control(u"Auto-Stop on Silence"_s, u"toggle"_s));
    EXPECT_EQ(app().silenceTimeout(), 30);
}

TEST_F(GeneralSection, KeepsTheMainWindowOnTop) {
    const auto mainWindow = windowSystem.add(u"Quorvin"_s);
    open(Tab::general);
    EXPECT_EQ(mainWindow->level, AppWindow::Level::normal) << "only a change is handed on";
    QQuickItem* const toggle = control(u"Always on Top"_s, u"toggle"_s);
    clickOn(toggle);
    clickOn(toggle);
    EXPECT_EQ(mainWindow->level, AppWindow::Level::floating);
    clickOn(toggle);
    EXPECT_EQ(mainWindow->level, AppWindow::Level::normal);
}

TEST_F(GeneralSection, SilencesTheSounds) {
    open(Tab::general);
    clickOn(control(u"UI Sounds"_s, u"toggle"_s));
    EXPECT_FALSE(SoundService::shared().isEnabled);
}

TEST_F(GeneralSection, KeepsItsValuesOverARestart) {
    open(Tab::general);
    for (const Toggle& toggle : toggles) {
        clickOn(control(toggle.label, u"toggle"_s));
    }
    choose(item(u"languagePicker"_s), u"German"_s);
    press(control(u"Silence Timeout"_s, u"slider"_s), Qt::Key_Right, 5);
    close();
    open(Tab::general);
    for (const Toggle& toggle : toggles) {
        const bool isOn = toggle.key == u"translateToEnglish"; // the only one that was off
        EXPECT_EQ(control(toggle.label, u"toggle"_s)->property("isOn").toBool(), isOn)
            << toggle.label.toStdString();
    }
    EXPECT_EQ(item(u"languagePicker"_s)->property("displayText"), u"German"_s);
    EXPECT_EQ(control(u"Silence Timeout"_s, u"sliderValue"_s)->property("text"), u"17"_s);
}
