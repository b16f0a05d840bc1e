#include "CompactViewTest.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>

using namespace quorvin;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::CompactViewTest;

namespace {

class CompactStatusBar : public CompactViewTest {
protected:
    [[nodiscard]] QString hint() {
        QQuickItem* const button = item(u"primaryHint"_s);
        return button->isVisible() ? button->property("label").toString() + u' ' +
                                         button->property("shortcut").toString()
                                   : QString();
    }
    [[nodiscard]] bool showsWordCount() { return item(u"wordCount"_s)->isVisible(); }
    [[nodiscard]] QColor dotColor() {
        return item(u"statusDot"_s)->property("color").value<QColor>();
    }
    /// Every item of the bar that shows, apart from its ground.
    void expectNoOverlap() {
        (void)grab(); // lays out what has changed
        const QStringList names{u"statusDot"_s,    u"warnTriangle"_s,      u"textArea"_s,
                                u"primaryHint"_s,  u"cancelButton"_s,      u"deleteLastButton"_s,
                                u"attachButton"_s, u"loadPreviousButton"_s};
        QList<QPair<QString, QRectF>> shown;
        for (const QString& name : names) {
            const QQuickItem* const candidate = item(name);
            if (candidate->isVisible()) {
                shown.append({name, candidate->mapRectToScene(candidate->boundingRect())});
            }
        }
        for (const auto& [name, rect] : shown) {
            EXPECT_GE(rect.left(), 12) << name.toStdString();
            EXPECT_LE(rect.right(), 350) << name.toStdString();
            for (const auto& [other, otherRect] : shown) {
                EXPECT_TRUE(name == other || !rect.intersects(otherRect))
                    << name.toStdString() << " over " << other.toStdString();
            }
        }
    }
};

} // namespace

TEST_F(CompactStatusBar, StopsTheTakeByTheHint) {
    showView();
    app().startRecording();
    EXPECT_EQ(hint(), u"Stop ⌥Space"_s);
    holdEngine();
    speak();
    click(u"primaryHint"_s);
    scheduler.runPosted();
    EXPECT_FALSE(app().isRecording());
    EXPECT_TRUE(app().isTranscribing());
    EXPECT_EQ(hint(), u"Stop ⌥Space"_s);
    click(u"primaryHint"_s); // nothing to stop any more: a new take
    EXPECT_TRUE(app().isRecording());
    answerEngine(u"Fix the login."_s);
}

TEST_F(CompactStatusBar, SendsTheDraftByTheHint) {
    workspace.running = {{.processIdentifier = 42,
                          .localizedName = u"Terminal"_s,
                          .bundleIdentifier = u"com.apple.Terminal"_s}};
    showView();
    EXPECT_EQ(hint(), QString());
    app().setDraftText(u"Fix the login."_s);
    EXPECT_EQ(hint(), u"Send ⌘→"_s);
    click(u"primaryHint"_s);
    EXPECT_EQ(app().draftText(), QString());
    EXPECT_EQ(pasteboard.contents, u"Fix the login."_s);
}

TEST_F(CompactStatusBar, CancelDropsATakeAndOtherwiseLeavesCompactMode) {
    showView();
    const auto window = windowSystem.add(u"Quorvin"_s);
    app().switchToCompactMode();
    app().startRecording();
    click(u"cancelButton"_s);
    EXPECT_FALSE(app().isRecording());
    EXPECT_FALSE(app().isTranscribing());
    EXPECT_TRUE(app().isCompactMode());
    EXPECT_EQ(item(u"feedback"_s)->property("text"), u"✕ Cancelled"_s);
    click(u"cancelButton"_s);
    EXPECT_FALSE(app().isCompactMode());
    EXPECT_TRUE(window->visible);
}

TEST_F(CompactStatusBar, DeletesTheLastPhrase) {
    showView();
    app().setDraftText(u"One. Two! Three"_s);
    click(u"deleteLastButton"_s);
    EXPECT_EQ(app().draftText(), u"One. Two!"_s);
}

TEST_F(CompactStatusBar, LoadsThePreviousPhrase) {
    showView();
    app().historyService()->add(u"Earlier words."_s, u"en"_s, 1, QString());
    click(u"loadPreviousButton"_s);
    EXPECT_EQ(app().draftText(), u"Earlier words."_s);
    EXPECT_EQ(item(u"feedback"_s)->property("text"), u"↑ loaded"_s);
}

TEST_F(CompactStatusBar, AttachesTheImagesThatThePickerGives) {
    showView();
    const QString image = directory.filePath(u"shot.png"_s);
    ASSERT_TRUE(QImage(2, 2, QImage::Format_RGB32).save(image));
    click(u"attachButton"_s);
    const auto windows = QApplication::topLevelWidgets();
    QFileDialog* dialog = nullptr;
    for (QWidget* widget : windows) {
        dialog = dialog ? dialog : qobject_cast<QFileDialog*>(widget);
    }
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->fileMode(), QFileDialog::ExistingFiles);
    EXPECT_EQ(dialog->windowFlags() & Qt::WindowType_Mask, Qt::Tool); // stays in compact mode
    click(u"attachButton"_s);
    EXPECT_EQ(windows.size(), QApplication::topLevelWidgets().size());
    dialog->findChild<QLineEdit*>()->setText(image);
    static_cast<QDialog*>(dialog)->accept();
    EXPECT_EQ(app().attachedImages(), QList({QUrl::fromLocalFile(image)}));
}

TEST_F(CompactStatusBar, CountsTheWordsOfADraft) {
    showView();
    EXPECT_FALSE(showsWordCount());
    app().setDraftText(u"Fix the login, please."_s);
    EXPECT_EQ(item(u"wordCount"_s)->property("text"), u"4w"_s);
    advance(250ms);
    EXPECT_TRUE(item(u"wordCount"_s)->opacity() == 1);
    app().setDraftText(u"   "_s);
    advance(250ms);
    EXPECT_TRUE(!showsWordCount());
    EXPECT_EQ(item(u"wordCount"_s)->property("text"), u"4w"_s); // it faded as it was
}

TEST_F(CompactStatusBar, CountsNoWordsDuringATakeAndATranscription) {
    showView();
    app().setDraftText(u"Fix the login, please."_s);
    advance(250ms);
    EXPECT_TRUE(showsWordCount());
    app().startRecording();
    advance(250ms);
    EXPECT_TRUE(!showsWordCount());
    transcribe();
    EXPECT_FALSE(showsWordCount());
    answerEngine(u"Now."_s);
    advance(250ms);
    EXPECT_TRUE(showsWordCount());
    EXPECT_EQ(item(u"wordCount"_s)->property("text"), u"5w"_s);
}

TEST_F(CompactStatusBar, ShowsFeedbackInPlaceOfTheWordCount) {
    showView();
    app().setDraftText(u"Fix the login, please."_s);
    advance(250ms);
    EXPECT_TRUE(showsWordCount());
    app().showCompactFeedback(u"↑ loaded"_s, 1.5);
    EXPECT_EQ(item(u"feedback"_s)->property("text"), u"↑ loaded"_s);
    EXPECT_FALSE(showsWordCount());
    scheduler.advance(2s);
    EXPECT_EQ(item(u"feedback"_s)->property("text"), QString());
    advance(250ms);
    EXPECT_TRUE(showsWordCount());
}

TEST_F(CompactStatusBar, KeepsEveryPartInItsPlaceWithTheLongestTexts) {
    audioHost.authorization = MicrophoneAuthorization::denied;
    showView();
    ASSERT_TRUE(item(u"warnTriangle"_s)->isVisible());
    expectNoOverlap();
    app().setDraftText(QString(u"word "_s).repeated(1234));
    app().showCompactFeedback(u"⚠ Accessibility — re-grant!"_s, 4);
    expectNoOverlap();
}

TEST_F(CompactStatusBar, ElidesFeedbackThatIsTooLong) {
    showView();
    app().setDraftText(u"Fix the login."_s);
    app().showCompactFeedback(u"✓ sent"_s, 4);
    (void)grab();
    EXPECT_FALSE(item(u"feedback"_s)->property("truncated").toBool());
    app().showCompactFeedback(u"⚠ Accessibility — re-grant! And some more of it"_s, 4);
    (void)grab();
    EXPECT_TRUE(item(u"feedback"_s)->property("truncated").toBool());
    expectNoOverlap();
}

TEST_F(CompactStatusBar, WarnsOfWhatIsMissing) {
    keyEvents.trusted = false;
    showView();
    ASSERT_TRUE(item(u"warnTriangle"_s)->isVisible());
    EXPECT_EQ(item(u"warnTriangle"_s)->size(), QSizeF(12, 11));
    EXPECT_EQ(item(u"warnTriangle"_s)->property("text"), u"Accessibility permission is missing"_s);
    EXPECT_EQ(dotColor(), QColor::fromRgbF(0.25F, 0.55F, 1.0F));
}

TEST_F(CompactStatusBar, WarnsOfNothingWhenAllIsThere) {
    showView();
    EXPECT_FALSE(item(u"warnTriangle"_s)->isVisible());
    EXPECT_EQ(dotColor(), QColor::fromRgbF(0.2F, 1.0F, 0.45F));
}

TEST_F(CompactStatusBar, LightsUpWhatThePointerIsOver) {
    showView();
    const auto ground = [this](const QString& name) {
        return item(name)->property("background").value<QQuickItem*>();
    };
    EXPECT_EQ(ground(u"attachButton"_s)->opacity(), 0);
    hover(u"attachButton"_s);
    advance(100ms);
    EXPECT_GT(ground(u"attachButton"_s)->opacity(), 0);
    EXPECT_LT(ground(u"attachButton"_s)->opacity(), 0.16);
    advance(150ms);
    EXPECT_DOUBLE_EQ(ground(u"attachButton"_s)->opacity(), 0.16);
    EXPECT_EQ(ground(u"attachButton"_s)->property("color").value<QColor>(), QColor(u"#ec4899"_s));
    EXPECT_EQ(ground(u"attachButton"_s)->property("radius").toDouble(), 5);
    EXPECT_EQ(item(u"attachButton"_s)->size(), QSizeF(22, 18));
    leave();
    advance(250ms);
    EXPECT_EQ(ground(u"attachButton"_s)->opacity(), 0);
}

TEST_F(CompactStatusBar, BrightensTheHintUnderThePointer) {
    showView();
    const auto opacities = [this] {
        QList<double> found;
        for (const QQuickItem* text : items(u"hintText"_s)) {
            if (item(u"cancelButton"_s)->isAncestorOf(text)) {
                found.append(text->opacity());
            }
        }
        return found;
    };
    EXPECT_EQ(opacities(), QList({0.78, 0.45}));
    hover(u"cancelButton"_s);
    advance(250ms);
    EXPECT_EQ(opacities(), QList({1.0, 0.85}));
    leave();
    advance(250ms);
    EXPECT_EQ(opacities(), QList({0.78, 0.45}));
}

TEST_F(CompactStatusBar, TellsWhatASymbolDoes) {
    showView();
    const QList<QPair<QString, QString>> tips{
        {u"deleteLastButton"_s, u"Delete last phrase"_s},
        {u"loadPreviousButton"_s, u"Previous phrase"_s},
        {u"attachButton"_s, u"Attach image (or drag & drop)"_s}};
    for (const auto& [button, text] : tips) {
        QObject* const tip = item(button)->findChild<QObject*>(u"toolTip"_s);
        ASSERT_NE(tip, nullptr);
        EXPECT_EQ(tip->property("text"), text);
        EXPECT_FALSE(tip->property("visible").toBool());
        EXPECT_GT(tip->property("delay").toInt(), 0);
        tip->setProperty("delay", 0); // it passes in real time
        hover(button);
        EXPECT_TRUE(tip->property("visible").toBool());
        leave();
        advance(50ms);
        EXPECT_FALSE(tip->property("visible").toBool());
    }
}

TEST_F(CompactStatusBar, TheDotChangesItsRhythmShortlyAfterItsState) {
    showView();
    QQuickItem* const dot = item(u"statusDot"_s);
    EXPECT_EQ(dot->size(), QSizeF(7, 7));
    advance(1650ms);
    EXPECT_NEAR(dot->opacity(), 0.65, 0.01); // the lowest when ready
    app().startRecording();
    EXPECT_EQ(dotColor(), QColor::fromRgbF(1.0F, 0.18F, 0.18F));
    EXPECT_EQ(dot->opacity(), 1);
    advance(40ms);
    EXPECT_FALSE(dot->property("pulse").toBool());
    advance(32ms);
    EXPECT_TRUE(dot->property("pulse").toBool());
    advance(500ms);
    EXPECT_NEAR(dot->opacity(), 0.2, 0.05);
    advance(500ms);
    EXPECT_NEAR(dot->opacity(), 1, 0.05);
}

TEST_F(CompactStatusBar, TheDotPulsesInFewSteps) {
    showView();
    advance(100ms);
    int steps = 0;
    QObject::connect(item(u"statusDot"_s), &QQuickItem::opacityChanged, [&] { ++steps; });
    advance(1s);
    EXPECT_GE(steps, 9);
    EXPECT_LE(steps, 11);
}

TEST_F(CompactStatusBar, TheDotIsSteadyWhileTranscribing) {
    showView();
    app().startRecording();
    advance(300ms);
    EXPECT_LT(item(u"statusDot"_s)->opacity(), 0.9);
    transcribe();
    EXPECT_EQ(dotColor(), QColor::fromRgbF(1.0F, 0.6F, 0.1F));
    advance(500ms);
    EXPECT_EQ(item(u"statusDot"_s)->opacity(), 1);
    answerEngine(u"Now."_s);
}
