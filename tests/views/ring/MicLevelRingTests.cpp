#include "theme/HexColor.h"
#include "views/support/ViewTest.h"

#include <QSignalSpy>

#include <optional>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const QColor accent = hexColor(u"3b82f6");
const QStringList styles{u"wave"_s, u"pulse"_s, u"comet"_s,  u"bars"_s, u"orbit"_s,
                         u"nova"_s, u"dna"_s,   u"plasma"_s, u"radar"_s};

class MicLevelRing : public ViewTest {
protected:
    /// Alone, before black.
    void showRing(const QString& style = u"wave"_s) {
        show(uR"(
            Rectangle {
                width: 300
                height: 300
                color: "black"
                property int clicks

                MicLevelRing {
                    objectName: "ring"
                    level: 0
                    isRecording: false
                    isTranscribing: false
                    isEnabled: true
                    animationStyle: ")"_s +
             style + uR"("
                    onClicked: ++parent.clicks
                }
            })"_s);
    }
    /// In the main window, which says what a click does.
    void showInWindow() {
        start();
        show(u"MainView { width: 580; height: 850 }"_s, appState());
        advance(1s);
    }

    QQuickItem* ring() { return item(u"ring"_s); }
    void set(const char* name, const QVariant& value) { ring()->setProperty(name, value); }
    int clicks() { return root()->property("clicks").toInt(); }
    QObject* timer() { return ring()->findChild<QObject*>(u"frameTimer"_s); }
    /// In milliseconds, while it runs.
    std::optional<int> interval() {
        return timer()->property("running").toBool()
                   ? std::optional(timer()->property("interval").toInt())
                   : std::nullopt;
    }
    qsizetype ticksWithin(std::chrono::milliseconds duration) {
        QSignalSpy fired(timer(), SIGNAL(triggered()));
        advance(duration);
        return fired.size();
    }
};

} // namespace

TEST_F(MicLevelRing, Is300By300) {
    showRing();
    EXPECT_EQ(ring()->size(), QSizeF(300, 300));
    EXPECT_EQ(item(u"ringCanvas"_s)->size(), QSizeF(300, 300));
    EXPECT_EQ(item(u"ringCanvas"_s)->position(), QPointF(0, 0));
}

TEST_F(MicLevelRing, TicksTwiceASecondAtRestAndFifteenTimesWhenBusy) {
    showRing();
    EXPECT_EQ(interval(), 500);
    EXPECT_NEAR(ticksWithin(10s), 20, 1);
    set("isRecording", true);
    EXPECT_EQ(interval(), 67);
    EXPECT_NEAR(ticksWithin(10s), 150, 4);
    set("isTranscribing", true);
    set("isRecording", false);
    EXPECT_EQ(interval(), 67);
    set("isTranscribing", false);
    EXPECT_EQ(interval(), 500);
}

TEST_F(MicLevelRing, HasNoTimerWhileItsWindowIsHiddenOrMinimized) {
    showRing();
    set("isRecording", true);
    window().hide();
    EXPECT_EQ(interval(), std::nullopt);
    window().show();
    EXPECT_EQ(interval(), 67) << "the recording goes on";
    window().setVisibility(QWindow::Minimized);
    EXPECT_EQ(interval(), std::nullopt);
    EXPECT_EQ(ticksWithin(5s), 0);
    set("isRecording", false);
    window().setVisibility(QWindow::Windowed);
    EXPECT_EQ(interval(), 500) << "it has ended meanwhile";
}

TEST_F(MicLevelRing, HasNoTimerWhileItIsInvisibleOrInNoWindow) {
    showRing();
    ring()->setVisible(false);
    EXPECT_EQ(interval(), std::nullopt);
    ring()->setVisible(true);
    EXPECT_EQ(interval(), 500);
    QObject* const itsTimer = timer();
    QQuickItem* const itself = ring();
    itself->setParentItem(nullptr);
    EXPECT_FALSE(itsTimer->property("running").toBool());
    itself->setParentItem(root());
    EXPECT_TRUE(itsTimer->property("running").toBool());
}

TEST_F(MicLevelRing, StandsStillBetweenTwoTicks) {
    for (const QString& style : styles) {
        showRing(style);
        ASSERT_EQ(ticksWithin(520ms), 1);
        const QImage first = grab();
        set("level", 0.9);
        ASSERT_EQ(ticksWithin(400ms), 0);
        EXPECT_EQ(grab(), first) << style.toStdString();
        ASSERT_EQ(ticksWithin(120ms), 1);
        EXPECT_NE(grab(), first) << style.toStdString();
    }
}

TEST_F(MicLevelRing, AppearsInTheMiddleOfARecordingWithItsShockRing) {
    showRing(u"bars"_s);
    // Which leave what is within them free.
    const auto isShocked = [this] {
        const QImage picture = grab();
        bool isRed = false;
        for (int x = 155; x < 240; ++x) {
            isRed = isRed || picture.pixelColor(x, 150).red() > 100;
        }
        return isRed;
    };
    set("isRecording", true);
    advance(400ms);
    EXPECT_TRUE(isShocked());
    advance(3s);
    EXPECT_FALSE(isShocked());
    window().hide();
    window().show();
    advance(400ms);
    EXPECT_TRUE(isShocked());
}

TEST_F(MicLevelRing, DrawsEachStyleDifferentlyInEachMode) {
    QList<QImage> seen;
    for (const QString& style : styles) {
        showRing(style);
        for (const auto& [isRecording, isTranscribing] :
             {std::pair(false, false), {false, true}, {true, false}}) {
            set("isTranscribing", isTranscribing);
            set("isRecording", isRecording);
            set("level", 0.5);
            advance(600ms);
            const QImage picture = grab();
            EXPECT_FALSE(seen.contains(picture)) << style.toStdString();
            seen.append(picture);
        }
    }
    EXPECT_EQ(seen.size(), 27);
}

TEST_F(MicLevelRing, ShowsTheRecordingRatherThanATranscription) {
    showRing(u"orbit"_s);
    const auto redderThanGreen = [this] {
        const QColor outermost = color({150 + 141 + 1, 150}); // the last orbit's first dot
        return outermost.red() - outermost.green();
    };
    set("isTranscribing", true);
    const int amber = redderThanGreen();
    set("isRecording", true);
    EXPECT_GT(redderThanGreen(), amber + 50) << "pink";
}

TEST_F(MicLevelRing, DrawsWavesByAnUnknownName) {
    showRing(u"fireworks"_s);
    const QImage unknown = grab();
    showRing(u"wave"_s);
    EXPECT_EQ(grab(), unknown);
    showRing(QString());
    EXPECT_EQ(grab(), unknown);
}

TEST_F(MicLevelRing, LooksTheSameWithoutAModel) {
    showRing();
    const QImage with = grab();
    set("isEnabled", false);
    EXPECT_EQ(grab(), with);
    click(u"ring"_s);
    EXPECT_EQ(clicks(), 1);
}

TEST_F(MicLevelRing, LooksTheSameUnderThePointer) {
    showRing();
    const QImage before = grab();
    hover(u"ring"_s);
    EXPECT_TRUE(ring()->property("isHovered").toBool());
    EXPECT_EQ(grab(), before);
    leave();
    EXPECT_FALSE(ring()->property("isHovered").toBool());
}

TEST_F(MicLevelRing, LooksTheSameInEveryTheme) {
    showRing();
    const QImage before = grab();
    for (const QString& name : {u"latte"_s, u"mocha"_s, u"synthwave"_s}) {
        theme.setTheme(name);
        advance(400ms); // before the next tick
        EXPECT_EQ(grab(), before) << name.toStdString();
        advance(100ms);
        showRing();
    }
}

TEST_F(MicLevelRing, LeavesTheBackgroundVisible) {
    showRing(u"bars"_s);
    EXPECT_EQ(color({150, 150}), QColor(Qt::black));
    EXPECT_EQ(color({1, 1}), QColor(Qt::black));
    root()->setProperty("color", QColor(Qt::white));
    EXPECT_EQ(color({150, 150}), QColor(Qt::white));
}

TEST_F(MicLevelRing, IsReachedByTabAndShowsIt) {
    showRing(u"bars"_s);
    const auto hasFocusLook = [this] { return color({150, 1}) == accent; };
    EXPECT_FALSE(hasFocusLook());
    key(Qt::Key_Tab);
    EXPECT_TRUE(ring()->hasActiveFocus());
    EXPECT_TRUE(hasFocusLook());
    EXPECT_EQ(color({1, 150}), accent);
    EXPECT_EQ(color({1, 1}), QColor(Qt::black)) << "it is round";
}

TEST_F(MicLevelRing, IsPressedBySpaceReturnAndEnter) {
    showRing();
    key(Qt::Key_Tab);
    int expected = 0;
    for (const Qt::Key pressed : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        key(pressed);
        EXPECT_EQ(clicks(), ++expected);
    }
    key(Qt::Key_A);
    EXPECT_EQ(clicks(), expected);
}

TEST_F(MicLevelRing, AKeyHeldDownPressesItOnce) {
    showRing();
    key(Qt::Key_Tab);
    for (const Qt::Key held : {Qt::Key_Return, Qt::Key_Enter}) {
        QKeyEvent repeat(QEvent::KeyPress, held, Qt::NoModifier, u"\r"_s, true);
        QCoreApplication::sendEvent(&window(), &repeat);
    }
    EXPECT_EQ(clicks(), 0);
}

TEST_F(MicLevelRing, AClickLeavesTheFocusWhereItIs) {
    showRing();
    click(u"ring"_s);
    EXPECT_EQ(clicks(), 1);
    EXPECT_FALSE(ring()->hasActiveFocus());
}

TEST_F(MicLevelRing, SaysWhatItDoesToThoseWhoCantSeeIt) {
    showRing();
    QAccessibleInterface* const interface = accessible(ring());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Button);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Record"_s);
    set("isRecording", true);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Stop"_s);
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks(), 1);
}

TEST_F(MicLevelRing, AClickStartsARecordingAndTheNextEndsIt) {
    showInWindow();
    click(u"micLevelRing"_s);
    advance(100ms);
    EXPECT_TRUE(app().isRecording());
    speak();
    setLevel(0.4);
    EXPECT_EQ(item(u"micLevelRing"_s)->property("level").toDouble(), app().audioLevel());
    EXPECT_TRUE(item(u"micLevelRing"_s)->property("isRecording").toBool());
    click(u"micLevelRing"_s);
    EXPECT_FALSE(app().isRecording());
}

TEST_F(MicLevelRing, HasTheKeysOfTheMainWindowAtFirst) {
    showInWindow();
    key(Qt::Key_Space);
    advance(100ms);
    EXPECT_TRUE(app().isRecording());
    key(Qt::Key_Return);
    EXPECT_FALSE(app().isRecording());
}

TEST_F(MicLevelRing, TakesTheStyleThatTheUserPicked) {
    showInWindow();
    app().setAnimationStyle(u"radar"_s);
    EXPECT_EQ(item(u"micLevelRing"_s)->property("animationStyle").toString(), u"radar"_s);
    EXPECT_EQ(item(u"ringCanvas"_s)->property("animationStyle").toString(), u"radar"_s);
}
