#include "HeaderViewTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class HeaderBar : public HeaderViewTest {
protected:
    void showHeader() {
        start();
        scheduler.runPosted(); // the model's load
        show(u"Item { id: root; width: 580; height: 100; property QtObject appState;"
             "property int requests; HeaderBar { objectName: 'header'; width: parent.width;"
             "appState: root.appState; onSettingsRequested: ++root.requests } }"_s,
             appState());
    }
    const QStringList buttons{u"activityLogButton"_s, u"compactModeButton"_s, u"settingsButton"_s};
};

} // namespace

TEST_F(HeaderBar, IsARow) {
    showHeader();
    EXPECT_EQ(item(u"header"_s)->height(), 10 + 28 + 10);
    const QRectF version = frameOf(u"versionBadge"_s);
    const QRectF status = frameOf(u"statusBadge"_s);
    EXPECT_EQ(version.left(), 16);
    EXPECT_EQ(status.left(), version.right() + 12);
    EXPECT_EQ(status.height(), 28);
    EXPECT_EQ(status.top(), 10);
    double right = 580 - 16;
    for (auto name = buttons.crbegin(); name != buttons.crend(); ++name) {
        EXPECT_EQ(frameOf(*name).right(), right);
        EXPECT_EQ(frameOf(*name).top(), 10);
        right -= 32 + 12;
    }
    EXPECT_EQ(propertyOf(u"activityLogButton"_s, "systemName"), u"list.bullet.rectangle"_s);
    EXPECT_EQ(propertyOf(u"compactModeButton"_s, "systemName"), u"line.3.horizontal"_s);
    EXPECT_EQ(propertyOf(u"settingsButton"_s, "systemName"), u"slider.horizontal.3"_s);
}

TEST_F(HeaderBar, HasASheenAndAHairline) {
    showHeader();
    const QImage picture = grab();
    const QColor surface = hexColor(u"111111");
    EXPECT_NEAR(picture.pixelColor(300, 0).red(), surface.red() + 0.04 * (255 - surface.red()), 1);
    EXPECT_NEAR(picture.pixelColor(300, 46).red(), surface.red(), 1);
    EXPECT_EQ(picture.pixelColor(300, 47), hexColor(u"2a2a2a"));
    EXPECT_EQ(picture.pixelColor(300, 48), QColor(Qt::white)) << "the window beneath";
}

TEST_F(HeaderBar, ShowsAndHidesTheActivityLog) {
    showHeader();
    const bool before = app().showActivityLog();
    click(u"activityLogButton"_s);
    EXPECT_NE(app().showActivityLog(), before);
    click(u"activityLogButton"_s);
    EXPECT_EQ(app().showActivityLog(), before);
}

TEST_F(HeaderBar, EntersCompactMode) {
    windowSystem.add(u"Quorvin"_s);
    showHeader();
    click(u"compactModeButton"_s);
    EXPECT_TRUE(app().isCompactMode());
}

TEST_F(HeaderBar, AsksForTheSettings) {
    showHeader();
    click(u"settingsButton"_s);
    EXPECT_EQ(root()->property("requests").toInt(), 1);
}

TEST_F(HeaderBar, SaysWhatItsButtonsDo) {
    showHeader();
    app().setShowActivityLog(false);
    const QStringList texts{u"Show the activity log"_s, u"Compact mode"_s, u"Settings"_s};
    for (int i = 0; i < buttons.size(); ++i) {
        EXPECT_EQ(accessible(item(buttons[i]))->text(QAccessible::Name), texts[i]);
        QObject* const tip = item(buttons[i])->findChild<QObject*>(u"helpTip"_s);
        ASSERT_NE(tip, nullptr);
        EXPECT_EQ(tip->property("text"), texts[i]);
        EXPECT_GT(tip->property("delay").toInt(), 0);
        tip->setProperty("delay", 0); // it passes in real time
        hover(buttons[i]);
        EXPECT_TRUE(tip->property("visible").toBool());
        leave();
        advance(50ms);
        EXPECT_FALSE(tip->property("visible").toBool());
    }
    app().setShowActivityLog(true);
    EXPECT_EQ(textOf(u"activityLogButton"_s), u"Hide the activity log"_s);
}

TEST_F(HeaderBar, IsOperatedByKeyboardAndAssistant) {
    showHeader();
    for (const QString& button : buttons) {
        key(Qt::Key_Tab);
        EXPECT_TRUE(item(button)->hasActiveFocus());
    }
    key(Qt::Key_Return);
    EXPECT_EQ(root()->property("requests").toInt(), 1);
    key(Qt::Key_Space);
    EXPECT_EQ(root()->property("requests").toInt(), 2);
    pressByAssistant(item(u"settingsButton"_s));
    EXPECT_EQ(root()->property("requests").toInt(), 3);
}

TEST_F(HeaderBar, TellsWhatTheProgramDoes) {
    showHeader();
    EXPECT_EQ(textOf(u"label"_s), u"READY"_s);
    EXPECT_EQ(colorOf(u"dot"_s), hexColor(u"22c55e"));
    app().setVadAutoStop(false);
    app().startRecording();
    EXPECT_EQ(textOf(u"label"_s), u"REC"_s);
    scheduler.advance(3500ms);
    EXPECT_EQ(textOf(u"timer"_s), u"00:03"_s);
    holdEngine();
    speak();
    app().stopRecording();
    scheduler.runPosted();
    EXPECT_EQ(textOf(u"label"_s), u"PROC"_s);
    EXPECT_EQ(textOf(u"timer"_s), u"."_s);
    answerEngine(u"Fix the login."_s);
    EXPECT_EQ(textOf(u"label"_s), u"READY"_s);
}

TEST_F(HeaderBar, ShowsTheVersionOfTheBundle) {
    showHeader();
    EXPECT_EQ(textOf(u"versionText"_s), u"v1.2.3"_s);
}

TEST_F(HeaderBar, CutsALongVersionAndKeepsItsButtons) {
    bundle.installedVersion = u"1.2.3-beta.4+"_s + QString(200, u'x');
    showHeader();
    app().startRecording();
    EXPECT_EQ(frameOf(u"settingsButton"_s).right(), 580 - 16);
    EXPECT_LE(frameOf(u"statusBadge"_s).right(), frameOf(u"activityLogButton"_s).left() - 12);
    EXPECT_TRUE(propertyOf(u"versionText"_s, "truncated").toBool());
}

TEST_F(HeaderBar, LeavesTheRoomOfAWideWindowInTheMiddle) {
    showHeader();
    const QRectF version = frameOf(u"versionBadge"_s);
    root()->setWidth(1400);
    EXPECT_EQ(frameOf(u"versionBadge"_s), version);
    EXPECT_EQ(frameOf(u"settingsButton"_s).right(), 1400 - 16);
}
