#include "AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A panel in memory, which the test drags about.
class FakePanel final : public CompactPanel {
public:
    explicit FakePanel(int& living) : m_living(living) { ++m_living; }
    ~FakePanel() override { --m_living; }

    void orderFront() override { ++timesInFront; }
    [[nodiscard]] QPointF origin() const override { return m_origin; }
    void setOrigin(QPointF origin) override { moveTo(origin); }

    void moveTo(QPointF origin) {
        m_origin = origin;
        if (onMoved) {
            onMoved();
        }
    }

    int timesInFront = 0;

private:
    int& m_living;
    QPointF m_origin;
};

class CompactWindow : public AppStateTest {
protected:
    AppState& startInCompactMode() {
        AppState& app = start();
        app.compactWindowController().setPanelFactory([this](AppState&) {
            auto made = std::make_unique<FakePanel>(panels);
            panel = made.get();
            return made;
        });
        app.switchToCompactMode();
        return app;
    }
    void store(double x, double y) {
        defaults.setDouble(u"compactPanelX"_s, x);
        defaults.setDouble(u"compactPanelY"_s, y);
    }
    [[nodiscard]] QPointF stored() const {
        return {defaults.number(u"compactPanelX"_s).value_or(-1),
                defaults.number(u"compactPanelY"_s).value_or(-1)};
    }
    QStringList drop(const QStringList& paths) {
        QList<QUrl> urls;
        for (const QString& path : paths) {
            urls.append(QUrl::fromLocalFile(path));
        }
        panel->onDropped(urls);
        scheduler.runPosted();
        QStringList attached;
        for (const QUrl& url : app().attachedImages()) {
            attached.append(url.toLocalFile());
        }
        return attached;
    }

    FakePanel* panel = nullptr;
    int panels = 0;
    /// The middle of the screen of 1440 points, 48 points above what its dock leaves free.
    const QPointF bottomCenter{540, 25 + 795 - 48 - 72};
};

} // namespace

TEST_F(CompactWindow, StandsAtTheBottomOfTheMainScreenAtFirst) {
    startInCompactMode();
    EXPECT_EQ(panel->origin(), bottomCenter);
    EXPECT_EQ(panel->timesInFront, 1);
}

TEST_F(CompactWindow, ComesBackToWhereTheUserPutIt) {
    store(20, 30);
    startInCompactMode();
    EXPECT_EQ(panel->origin(), QPointF(20, 30));
}

TEST_F(CompactWindow, WithOnlyOneOfTheTwoKeysTheDefaultPositionIsUsed) {
    defaults.setDouble(u"compactPanelX"_s, 20);
    startInCompactMode();
    EXPECT_EQ(panel->origin(), bottomCenter);
}

TEST_F(CompactWindow, APositionThatIsNoNumberIsNone) {
    defaults.setString(u"compactPanelX"_s, u"left"_s);
    defaults.setDouble(u"compactPanelY"_s, 30);
    startInCompactMode();
    EXPECT_EQ(panel->origin(), bottomCenter);
}

TEST_F(CompactWindow, OnADisconnectedDisplayTheDefaultIsUsedAndTheKeysStayUntilTheNextMove) {
    store(2000, 300);
    startInCompactMode();
    EXPECT_EQ(panel->origin(), bottomCenter);
    panel->moveTo(bottomCenter); // what a window manager tells of the placing
    scheduler.advance(10s);
    EXPECT_EQ(stored(), QPointF(2000, 300));
    panel->moveTo({100, 100});
    scheduler.advance(10s);
    EXPECT_EQ(stored(), QPointF(100, 100));
}

TEST_F(CompactWindow, OnlyTheCentreHasToBeOnAScreen) {
    store(-180, 864); // the centre at 0, 900: one point too low
    startInCompactMode();
    EXPECT_EQ(panel->origin(), bottomCenter);
    app().switchToMainWindow(true);
    store(-179, 863);
    app().switchToCompactMode();
    EXPECT_EQ(panel->origin(), QPointF(-179, 863));
}

TEST_F(CompactWindow, AnyScreenWillDo) {
    windowSystem.desktop.push_back(
        {.frame = {1440, 0, 800, 600}, .visibleFrame = {1440, 0, 800, 600}});
    store(1600, 200);
    startInCompactMode();
    EXPECT_EQ(panel->origin(), QPointF(1600, 200));
}

TEST_F(CompactWindow, WithoutAScreenItStaysAtTheOrigin) {
    windowSystem.desktop.clear();
    store(20, 30);
    startInCompactMode();
    EXPECT_EQ(panel->origin(), QPointF(0, 0));
}

TEST_F(CompactWindow, AMoveIsRememberedWhenThePanelRests) {
    startInCompactMode();
    panel->moveTo({10, 20});
    scheduler.advance(200ms);
    panel->moveTo({11, 22});
    scheduler.advance(200ms);
    EXPECT_EQ(stored(), QPointF(-1, -1)) << "still on its way";
    scheduler.advance(50ms);
    EXPECT_EQ(stored(), QPointF(11, 22));
}

TEST_F(CompactWindow, ClosingRemembersThePositionAtOnce) {
    startInCompactMode();
    panel->moveTo({10, 20});
    app().switchToMainWindow(true);
    EXPECT_EQ(stored(), QPointF(10, 20));
    EXPECT_EQ(panels, 0);
    scheduler.advance(10s);
}

TEST_F(CompactWindow, ASecondShowOnlyRaisesThePanel) {
    startInCompactMode();
    const FakePanel* const first = panel;
    app().switchToCompactMode();
    EXPECT_EQ(panel, first);
    EXPECT_EQ(panels, 1);
    EXPECT_EQ(panel->timesInFront, 2);
}

TEST_F(CompactWindow, AfterClosingANewOneIsMade) {
    startInCompactMode();
    app().switchToMainWindow(true);
    app().switchToCompactMode();
    EXPECT_EQ(panels, 1);
    EXPECT_EQ(panel->timesInFront, 1);
}

TEST_F(CompactWindow, ClosingWithoutAPanelDoesNothing) {
    start().compactWindowController().close();
    EXPECT_EQ(stored(), QPointF(-1, -1));
}

TEST_F(CompactWindow, ADroppedImageIsAttachedAndAnotherFileWritesItsPathIntoTheDraft) {
    startInCompactMode();
    EXPECT_EQ(drop({u"/home/me/shot.png"_s, u"/home/me/plan.pdf"_s}),
              QStringList{u"/home/me/shot.png"_s});
    EXPECT_EQ(app().draftText(), u"/home/me/plan.pdf");
}

TEST_F(CompactWindow, AnUpperCaseExtensionCountsAsAnImage) {
    startInCompactMode();
    EXPECT_EQ(drop({u"/a/SHOT.PNG"_s, u"/a/b.JPeg"_s}),
              (QStringList{u"/a/SHOT.PNG"_s, u"/a/b.JPeg"_s}));
    EXPECT_EQ(app().draftText(), u"");
}

TEST_F(CompactWindow, TheEightKindsOfImagesAreKnownAndOthersAreFiles) {
    const QStringList names{u"a.png"_s,  u"a.jpg"_s,  u"a.jpeg"_s, u"a.gif"_s,
                            u"a.webp"_s, u"a.heic"_s, u"a.tiff"_s, u"a.bmp"_s,
                            u"a.svg"_s,  u"png"_s,    u".png"_s,   u"a.png.gz"_s};
    QList<QUrl> urls;
    for (const QString& name : names) {
        urls.append(QUrl::fromLocalFile(u"/a/"_s + name));
    }
    const CompactDrop parts = CompactDrop::split(urls);
    EXPECT_EQ(parts.images, urls.first(8));
    EXPECT_EQ(parts.files, urls.last(4));
}

TEST_F(CompactWindow, TwoFilesDroppedIntoADraftFollowItWithBlanks) {
    AppState& app = startInCompactMode();
    app.setDraftText(u"hello"_s);
    drop({u"/a/one.txt"_s, u"/a/two words.txt"_s});
    EXPECT_EQ(app.draftText(), u"hello /a/one.txt /a/two words.txt");
}

TEST_F(CompactWindow, WithoutAWayToMakePanelsTheModeSwitchesAllTheSame) {
    AppState& app = start();
    app.switchToCompactMode();
    EXPECT_TRUE(app.isCompactMode());
    app.switchToMainWindow(true);
    EXPECT_FALSE(app.isCompactMode());
}
