#include "CompactViewTest.h"

using namespace quorvin;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::CompactViewTest;

namespace {

constexpr QPoint emptySpot(180, 24);
constexpr QPoint lastDot(345, 35);

using CompactStrip = CompactViewTest;

} // namespace

TEST_F(CompactStrip, ATapStartsATakeAndTheNextOneEndsIt) {
    showView();
    clickAt(emptySpot);
    EXPECT_TRUE(app().isRecording());
    holdEngine();
    speak();
    clickAt(emptySpot);
    scheduler.runPosted();
    EXPECT_FALSE(app().isRecording());
    EXPECT_TRUE(app().isTranscribing());
    answerEngine(u"Fix the login."_s);
}

TEST_F(CompactStrip, ATapOnADotRemovesTheAttachmentAndStartsNoTake) {
    showView();
    attach(3);
    clickAt(lastDot - QPoint(10, 0));
    EXPECT_EQ(app().attachedImages(), QList({QUrl::fromLocalFile(u"/pictures/screen 0.png"_s),
                                             QUrl::fromLocalFile(u"/pictures/screen 2.png"_s)}));
    EXPECT_FALSE(app().isRecording());
}

TEST_F(CompactStrip, ATapBesideTheDotsStartsATake) {
    showView();
    attach(1);
    clickAt(lastDot - QPoint(10, 0));
    EXPECT_EQ(app().attachedImages().size(), 1);
    EXPECT_TRUE(app().isRecording());
}

TEST_F(CompactStrip, ADragStartsNoTake) {
    showView();
    drag(emptySpot, emptySpot + QPoint(60, 10));
    EXPECT_FALSE(app().isRecording());
}

TEST_F(CompactStrip, ShowsEightDotsForNineImages) {
    showView();
    EXPECT_EQ(items(u"attachmentDot"_s).size(), 0);
    attach(9);
    const auto dots = items(u"attachmentDot"_s);
    ASSERT_EQ(dots.size(), 8);
    EXPECT_EQ(dots.first()->position(), QPointF(272, 32));
    EXPECT_EQ(dots.last()->position(), QPointF(342, 32));
    EXPECT_EQ(dots.first()->size(), QSizeF(6, 6));
}

TEST_F(CompactStrip, NamesTheMicrophone) {
    audioHost.deviceList = {
        {.number = 7, .name = "MacBook Pro Microphone", .inputChannelCount = 1}};
    defaults.setString(u"selectedDevice"_s, u"7"_s);
    showView();
    EXPECT_EQ(item(u"micLabel"_s)->property("text"), u"MacBook"_s);
    app().setSelectedDevice(u"8"_s);
    EXPECT_EQ(item(u"micLabel"_s)->property("text"), u"Mic"_s);
}

TEST_F(CompactStrip, ShowsTheLengthOfTheTakeWhileItRuns) {
    showView();
    QQuickItem* const duration = item(u"duration"_s);
    EXPECT_FALSE(duration->isVisible());
    app().setVadAutoStop(false);
    app().startRecording();
    EXPECT_TRUE(duration->isVisible());
    EXPECT_EQ(duration->property("text"), u"0:00"_s);
    scheduler.advance(63500ms);
    EXPECT_EQ(duration->property("text"), u"1:03"_s);
    app().cancelRecording();
    EXPECT_FALSE(duration->isVisible());
}

TEST_F(CompactStrip, BreathesAtRestInTheAccentColour) {
    showView();
    theme.setTheme(u"synthwave"_s); // ff00cc
    scheduler.advance(100ms);
    const QImage before = grab();
    scheduler.advance(1s);
    const QImage after = grab();
    EXPECT_NE(before.copy(0, 0, 360, 48), after.copy(0, 0, 360, 48));
    QColor brightest = Qt::black;
    for (int y = 17; y < 31; ++y) {
        const QColor color = after.pixelColor(180, y);
        if (color.red() > brightest.red()) {
            brightest = color;
        }
    }
    EXPECT_GT(brightest.red(), brightest.green() + 20);
    EXPECT_GT(brightest.blue(), brightest.green() + 15);
}

TEST_F(CompactStrip, ShowsTheBarsOfATake) {
    showView();
    app().startRecording();
    for (int i = 0; i < 20; ++i) {
        feedMicrophone(std::vector<float>(1024, 0.3F));
        scheduler.advance(33ms);
    }
    const QImage shown = grab();
    // The leftmost bars are cyan, the rightmost ones pink.
    const QColor left = shown.pixelColor(15, 24);
    const QColor right = shown.pixelColor(344, 24);
    EXPECT_GT(left.green(), left.red() + 60);
    EXPECT_GT(right.red(), right.green() + 60);
}

TEST_F(CompactStrip, MovesFromItsAppearanceToItsEnd) {
    showView();
    const double before = app().compactElapsed();
    scheduler.advance(1s);
    EXPECT_GE(app().compactElapsed(), before + 900);
    close();
    const double after = app().compactElapsed();
    scheduler.advance(1s);
    EXPECT_EQ(app().compactElapsed(), after);
}
