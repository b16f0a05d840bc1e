#include "HeaderViewTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

// Of the theme razer.
const QColor recordingColor = hexColor(u"ff3366");
const QColor successColor = hexColor(u"22c55e");
const QColor textSecondary = hexColor(u"b4b4b4");
const QColor mutedColor = hexColor(u"666666");
const QColor amber = hexColor(u"f59e0b");

class StatusBadge : public HeaderViewTest {
protected:
    void showBadge(bool isRecording, bool isTranscribing, bool isReady) {
        show(u"Rectangle { width: 300; height: 60; color: 'black'; StatusBadgeCanvas {"
             "objectName: 'badge'; x: 20; y: 10; height: 28; isRecording: false;"
             "isTranscribing: false; isReady: false; duration: 0; elapsed: 0 } }"_s);
        set("isRecording", isRecording);
        set("isTranscribing", isTranscribing);
        set("isReady", isReady);
    }
    void set(const char* name, const QVariant& value) {
        item(u"badge"_s)->setProperty(name, value);
    }
    [[nodiscard]] double dotOpacity() { return item(u"dot"_s)->opacity(); }

    void expectLook(const QString& label, const QColor& dot, const QColor& labelColor,
                    const QColor& fill, const QColor& border) {
        EXPECT_EQ(textOf(u"label"_s), label);
        expectColor(colorOf(u"dot"_s), dot);
        expectColor(colorOf(u"dot"_s, "shadowColor"), withAlpha(dot, 0.8));
        expectColor(colorOf(u"label"_s), labelColor);
        expectColor(colorOf(u"pill"_s), fill);
        expectColor(borderColor(item(u"pill"_s)), border);
    }
};

} // namespace

TEST_F(StatusBadge, Recording) {
    showBadge(true, true, true);
    expectLook(u"REC"_s, recordingColor, recordingColor, withAlpha(recordingColor, 0.08),
               withAlpha(recordingColor, 0.6));
    EXPECT_EQ(propertyOf(u"dot"_s, "shadowRadius").toDouble(), 4);
}

TEST_F(StatusBadge, Transcribing) {
    showBadge(false, true, true);
    expectLook(u"PROC"_s, amber, amber, withAlpha(amber, 0.06), withAlpha(amber, 0.4));
    EXPECT_EQ(propertyOf(u"dot"_s, "shadowRadius").toDouble(), 2);
}

TEST_F(StatusBadge, Ready) {
    showBadge(false, false, true);
    expectLook(u"READY"_s, successColor, textSecondary, withAlpha(Qt::white, 0.04),
               withAlpha(Qt::white, 0.1));
    EXPECT_EQ(propertyOf(u"dot"_s, "shadowRadius").toDouble(), 2);
}

TEST_F(StatusBadge, NotReady) {
    showBadge(false, false, false);
    expectLook(u"READY"_s, mutedColor, textSecondary, withAlpha(Qt::white, 0.04),
               withAlpha(Qt::white, 0.1));
}

TEST_F(StatusBadge, IsAPillAroundADotAndALabel) {
    showBadge(false, false, true);
    const QRectF pill = frameOf(u"pill"_s);
    const QRectF dot = frameOf(u"dot"_s);
    const QRectF label = frameOf(u"label"_s);
    EXPECT_EQ(pill.topLeft(), QPointF(20, 11));
    EXPECT_EQ(pill.height(), 26);
    EXPECT_EQ(propertyOf(u"pill"_s, "radius").toDouble(), 6);
    EXPECT_EQ(dot.size(), QSizeF(7, 7));
    EXPECT_EQ(dot.left(), pill.left() + 10);
    EXPECT_EQ(label.left(), dot.right() + 6);
    EXPECT_EQ(pill.right(), label.right() + 10);
    EXPECT_FALSE(item(u"divider"_s)->isVisible());
    EXPECT_FALSE(item(u"timer"_s)->isVisible());
}

TEST_F(StatusBadge, HasATimerBehindADivider) {
    showBadge(true, false, true);
    set("duration", 3725.9);
    EXPECT_EQ(textOf(u"timer"_s), u"62:05"_s);
    expectColor(colorOf(u"timer"_s), recordingColor);
    EXPECT_DOUBLE_EQ(item(u"timer"_s)->opacity(), 0.85);
    const QRectF divider = frameOf(u"divider"_s);
    EXPECT_EQ(divider.left(), frameOf(u"label"_s).right());
    EXPECT_EQ(divider.size(), QSizeF(8 + 1 + 8, 12));
    EXPECT_EQ(frameOf(u"timer"_s).left(), divider.right());
    EXPECT_EQ(frameOf(u"pill"_s).right(), frameOf(u"timer"_s).right() + 2 + 10);
    // White at 0.15 over the recording colour at 0.08 over black.
    const QColor line = color((divider.topLeft() + QPointF(8, 6)).toPoint());
    const QColor ground = color((divider.topLeft() + QPointF(4, 6)).toPoint());
    EXPECT_NEAR(ground.red(), 0.08 * 255, 2);
    EXPECT_NEAR(line.red(), ground.red() + 0.15 * (255 - ground.red()), 2);
}

TEST_F(StatusBadge, ShowsTheDotsOfATranscriptionWithoutChangingItsWidth) {
    showBadge(false, true, true);
    EXPECT_EQ(textOf(u"timer"_s), u"."_s);
    const double width = frameOf(u"pill"_s).width();
    set("elapsed", 800);
    EXPECT_EQ(textOf(u"timer"_s), u"..."_s);
    EXPECT_EQ(frameOf(u"pill"_s).width(), width);
    expectColor(colorOf(u"timer"_s), amber);
}

TEST_F(StatusBadge, StandsStillWhileTheSecondsGoBy) {
    showBadge(true, false, true);
    set("duration", 11);
    const QRectF place = frameOf(u"pill"_s);
    set("duration", 54);
    EXPECT_EQ(frameOf(u"pill"_s), place);
}

TEST_F(StatusBadge, ChangesItsTimerOnceASecond) {
    showBadge(true, false, true);
    set("duration", 0.0);
    int changes = 0;
    QObject::connect(item(u"timer"_s), SIGNAL(textChanged()), &updates, SIGNAL(changed()));
    QObject::connect(&updates, &UpdateState::changed, [&] { ++changes; });
    for (int tick = 1; tick <= 100; ++tick) {
        set("duration", tick * 0.033);
    }
    EXPECT_EQ(changes, 3);
}

TEST_F(StatusBadge, BlinksWhileRecording) {
    showBadge(true, false, true);
    EXPECT_EQ(dotOpacity(), 1);
    advance(590ms);
    EXPECT_EQ(dotOpacity(), 1);
    advance(32ms);
    EXPECT_DOUBLE_EQ(dotOpacity(), 0.2);
    advance(600ms);
    EXPECT_EQ(dotOpacity(), 1);
    advance(600ms);
    EXPECT_DOUBLE_EQ(dotOpacity(), 0.2);
    set("isRecording", false);
    EXPECT_EQ(dotOpacity(), 1) << "at once";
    advance(2s);
    EXPECT_EQ(dotOpacity(), 1);
}

TEST_F(StatusBadge, BlinksWhenItAppearsDuringATake) {
    show(u"StatusBadgeCanvas { objectName: 'badge'; isRecording: true; isTranscribing: false;"
         "isReady: true; duration: 0; elapsed: 0 }"_s);
    advance(650ms);
    EXPECT_DOUBLE_EQ(dotOpacity(), 0.2);
}

TEST_F(StatusBadge, DoesntBlinkUnseen) {
    showBadge(true, false, true);
    QObject* timer = item(u"badge"_s)->findChild<QObject*>(u"dotTimer"_s);
    ASSERT_NE(timer, nullptr);
    EXPECT_TRUE(timer->property("running").toBool());
    window().hide();
    EXPECT_FALSE(timer->property("running").toBool());
    window().show();
    EXPECT_TRUE(timer->property("running").toBool());
    root()->setVisible(false);
    EXPECT_FALSE(timer->property("running").toBool());
}

TEST_F(StatusBadge, ShowsTheDotWithItsGlow) {
    showBadge(false, true, true);
    const QImage picture = grab();
    const QPoint middle = frameOf(u"dot"_s).center().toPoint();
    EXPECT_EQ(picture.pixelColor(middle), amber);
    const int ground = picture.pixelColor(middle + QPoint(0, 8)).red();
    EXPECT_GT(picture.pixelColor(middle + QPoint(0, 3)).red(), ground + 20);
}

TEST_F(StatusBadge, TellsItsStateToThoseWhoCantSeeIt) {
    showBadge(true, false, true);
    set("duration", 12);
    QAccessibleInterface* const badge = accessible(item(u"badge"_s));
    ASSERT_NE(badge, nullptr);
    EXPECT_EQ(badge->role(), QAccessible::StaticText);
    EXPECT_EQ(badge->text(QAccessible::Description), u"State"_s);
    EXPECT_EQ(badge->text(QAccessible::Name), u"REC 00:12"_s);
    set("isRecording", false);
    EXPECT_EQ(badge->text(QAccessible::Name), u"READY"_s);
}

TEST_F(StatusBadge, FollowsTheTheme) {
    showBadge(false, false, true);
    theme.setTheme(u"latte"_s);
    advance(500ms);
    expectColor(colorOf(u"dot"_s), hexColor(u"40a02b"));
    expectColor(colorOf(u"label"_s), hexColor(u"5c5f77"));
}
