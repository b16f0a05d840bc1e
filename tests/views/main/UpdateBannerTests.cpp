#include "HeaderViewTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int bannerWidth = 580;

class UpdateBanner : public HeaderViewTest {
protected:
    void showBanner() {
        show(u"Rectangle { id: root; width: 580; height: 200; color: 'black';"
             "property QtObject appState; UpdateBanner { objectName: 'banner'; width: parent.width;"
             "appState: root.appState } }"_s,
             updateState());
    }
    void showOffer() {
        updates.offer(u"2.0.0"_s);
        showBanner();
    }
    [[nodiscard]] double height() { return item(u"banner"_s)->height(); }
    /// Those that show, of all that a phase can have at the right.
    [[nodiscard]] QStringList actions() {
        QStringList shown;
        for (const QString& name :
             {u"updateNowButton"_s, u"downloadBar"_s, u"retryButton"_s, u"bannerSpinner"_s}) {
            if (item(name)->isVisible()) {
                shown += name;
            }
        }
        return shown;
    }
};

} // namespace

TEST_F(UpdateBanner, IsNotThereWithoutAnUpdate) {
    updates.enter(UpdatePhase::Failed{u"no network"_s});
    showBanner();
    EXPECT_FALSE(item(u"banner"_s)->isVisible());
    EXPECT_EQ(height(), 0);
}

TEST_F(UpdateBanner, ComesInFromAboveWithinAQuarterOfASecond) {
    showBanner();
    updates.offer(u"2.0.0"_s);
    advance(125ms);
    const double full = item(u"bannerPane"_s)->height();
    EXPECT_GT(height(), full * 0.3);
    EXPECT_LT(height(), full * 0.7);
    EXPECT_LT(frameOf(u"bannerPane"_s).top(), 0);
    EXPECT_NEAR(item(u"bannerPane"_s)->opacity(), 0.5, 0.2);
    EXPECT_TRUE(item(u"banner"_s)->clip());
    advance(150ms);
    EXPECT_EQ(height(), full);
    EXPECT_EQ(frameOf(u"bannerPane"_s).top(), 0);
    EXPECT_EQ(item(u"bannerPane"_s)->opacity(), 1);
    updates.withdraw();
    advance(125ms);
    EXPECT_GT(height(), 0);
    EXPECT_LT(height(), full);
    advance(150ms);
    EXPECT_EQ(height(), 0);
    EXPECT_FALSE(item(u"banner"_s)->isVisible());
}

TEST_F(UpdateBanner, IsThereAtOnceInANewWindow) {
    showOffer();
    EXPECT_EQ(height(), item(u"bannerPane"_s)->height());
}

TEST_F(UpdateBanner, OffersTheVersion) {
    showOffer();
    EXPECT_EQ(textOf(u"bannerTitle"_s), u"New version v2.0.0 available"_s);
    EXPECT_EQ(colorOf(u"bannerTitle"_s), QColor(Qt::white));
    EXPECT_EQ(propertyOf(u"bannerTitle"_s, "font").value<QFont>().pixelSize(), 12);
    EXPECT_EQ(textOf(u"bannerSubtitle"_s), u"Click Update to download & install automatically"_s);
    expectColor(colorOf(u"bannerSubtitle"_s), withAlpha(Qt::white, 0.6));
    EXPECT_EQ(propertyOf(u"bannerSubtitle"_s, "font").value<QFont>().pixelSize(), 10);
    EXPECT_EQ(actions(), QStringList({u"updateNowButton"_s}));
    click(u"updateNowButton"_s);
    EXPECT_EQ(updates.installs, 1);
}

TEST_F(UpdateBanner, IsPaintedInOrange) {
    showOffer();
    expectColor(colorOf(u"bannerPane"_s), withAlpha(orange, 0.12));
    expectColor(colorOf(u"bannerLine"_s), withAlpha(orange, 0.45));
    EXPECT_EQ(frameOf(u"bannerLine"_s), QRectF(0, height() - 1, bannerWidth, 1));
    const QColor ground = color({300, 4});
    EXPECT_NEAR(ground.red(), 0.12 * 255, 2);
    EXPECT_NEAR(ground.green(), 0.12 * 159, 2);
    EXPECT_EQ(textOf(u"bannerSymbol"_s), QString());
    EXPECT_EQ(propertyOf(u"bannerSymbol"_s, "systemName").toString(), u"sparkles"_s);
    expectColor(colorOf(u"bannerSymbol"_s), orange);
    expectColor(colorOf(u"bannerSymbol"_s, "shadowColor"), withAlpha(orange, 0.7));
    EXPECT_EQ(propertyOf(u"bannerSymbol"_s, "shadowRadius").toDouble(), 4);
    EXPECT_EQ(frameOf(u"bannerSymbol"_s).left(), 14);
}

TEST_F(UpdateBanner, IsWrittenInTheThemesTextColorOnALightWindow) {
    showOffer();
    for (const auto& [name, ink] :
         {std::pair(u"latte"_s, u"4c4f69"), std::pair(u"glacier"_s, u"0d2137")}) {
        theme.setTheme(name);
        advance(500ms);
        expectColor(colorOf(u"bannerTitle"_s), hexColor(ink));
        expectColor(colorOf(u"bannerSubtitle"_s), withAlpha(hexColor(ink), 0.6));
        expectColor(colorOf(u"downloadPercentage"_s), withAlpha(hexColor(ink), 0.7));
    }
    theme.setTheme(u"nord"_s);
    advance(500ms);
    EXPECT_EQ(colorOf(u"bannerTitle"_s), QColor(Qt::white));
}

TEST_F(UpdateBanner, ItsButtonsAreOrange) {
    showOffer();
    (void)grab();
    QQuickItem* const pane = propertyOf(u"updateNowButton"_s, "background").value<QQuickItem*>();
    expectColor(pane->property("color").value<QColor>(), withAlpha(orange, 0.85));
    QQuickItem* const words = propertyOf(u"updateNowButton"_s, "contentItem").value<QQuickItem*>();
    EXPECT_EQ(words->property("color").value<QColor>(), QColor(Qt::white));
    EXPECT_EQ(words->property("font").value<QFont>().pixelSize(), 11);
    EXPECT_EQ(words->position(), QPointF(14, 6));
    EXPECT_EQ(frameOf(u"updateNowButton"_s).right(), bannerWidth - 14);
}

TEST_F(UpdateBanner, ShowsTheDownloadsProgress) {
    showOffer();
    updates.enter(UpdatePhase::Downloading{0.426});
    EXPECT_EQ(textOf(u"bannerSubtitle"_s), u"Downloading… 42%"_s);
    EXPECT_EQ(actions(), QStringList({u"downloadBar"_s}));
    EXPECT_EQ(textOf(u"downloadPercentage"_s), u"42%"_s);
    expectColor(colorOf(u"downloadPercentage"_s), withAlpha(Qt::white, 0.7));
    const QRectF bar = frameOf(u"downloadBar"_s);
    EXPECT_EQ(bar.width(), 90);
    EXPECT_NEAR(frameOf(u"downloadBarFill"_s).width(), 0.426 * 90, 0.01);
    EXPECT_EQ(frameOf(u"downloadPercentage"_s).left(), bar.right() + 8);
    updates.enter(UpdatePhase::Downloading{1});
    EXPECT_EQ(frameOf(u"downloadBar"_s), bar) << "stands still while the number grows";
    EXPECT_EQ(textOf(u"downloadPercentage"_s), u"100%"_s);
}

TEST_F(UpdateBanner, RetriesAfterAFailure) {
    showOffer();
    updates.enter(UpdatePhase::Failed{u"no network"_s});
    EXPECT_EQ(textOf(u"bannerSubtitle"_s), u"Update failed: no network"_s);
    EXPECT_EQ(actions(), QStringList({u"retryButton"_s}));
    EXPECT_EQ(textOf(u"retryButton"_s), u"Retry"_s);
    click(u"retryButton"_s);
    EXPECT_EQ(updates.retries, 1);
    EXPECT_EQ(updates.installs, 0);
}

TEST_F(UpdateBanner, SpinsWhileItInstalls) {
    showOffer();
    QObject* const timer = item(u"bannerSpinner"_s)->findChild<QObject*>(u"spinnerTimer"_s);
    ASSERT_NE(timer, nullptr);
    EXPECT_FALSE(timer->property("running").toBool());
    updates.enter(UpdatePhase::Installing{});
    EXPECT_EQ(textOf(u"bannerSubtitle"_s), u"Installing — the app will relaunch…"_s);
    EXPECT_EQ(actions(), QStringList({u"bannerSpinner"_s}));
    EXPECT_EQ(colorOf(u"bannerSpinner"_s), orange);
    const auto dots = items(u"spinnerDot"_s);
    ASSERT_EQ(dots.size(), 8);
    EXPECT_EQ(dots[0]->opacity(), 1);
    EXPECT_NEAR(dots[1]->opacity(), 0.15, 1e-6) << "the next to be lit";
    int steps = 0;
    QObject::connect(dots[0], &QQuickItem::opacityChanged, [&] { ++steps; });
    advance(120ms); // timers of QML fire with the next frame
    EXPECT_EQ(dots[1]->opacity(), 1);
    advance(880ms);
    EXPECT_NEAR(steps, 10, 1) << "a second";
    window().hide();
    EXPECT_FALSE(timer->property("running").toBool());
}

TEST_F(UpdateBanner, GrowsWithALongFailureAndCutsAnEndlessOne) {
    showOffer();
    const double before = height();
    updates.enter(UpdatePhase::Failed{QString(u"words about a failure "_s).repeated(6)});
    (void)grab();
    EXPECT_GT(height(), before);
    EXPECT_FALSE(propertyOf(u"bannerSubtitle"_s, "truncated").toBool());
    updates.enter(UpdatePhase::Failed{QString(u"words about a failure "_s).repeated(60)});
    (void)grab();
    EXPECT_TRUE(propertyOf(u"bannerSubtitle"_s, "truncated").toBool());
    EXPECT_LT(height(), 100);
    EXPECT_LE(frameOf(u"bannerSubtitle"_s).right(), frameOf(u"retryButton"_s).left() - 12);
    EXPECT_EQ(frameOf(u"retryButton"_s).right(), bannerWidth - 14);
    updates.enter(UpdatePhase::Failed{QString(600, u'x')});
    (void)grab();
    EXPECT_LE(frameOf(u"bannerSubtitle"_s).right(), frameOf(u"retryButton"_s).left() - 12);
}

TEST_F(UpdateBanner, ShowsAMessageAsItIsWritten) {
    showOffer();
    updates.enter(UpdatePhase::Failed{u"<b>404</b>"_s});
    const double width = propertyOf(u"bannerSubtitle"_s, "contentWidth").toDouble();
    updates.enter(UpdatePhase::Failed{u"404"_s});
    EXPECT_GT(width, propertyOf(u"bannerSubtitle"_s, "contentWidth").toDouble() + 20);
}

TEST_F(UpdateBanner, IsOperatedByKeyboardAndAssistant) {
    showOffer();
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"updateNowButton"_s)->hasActiveFocus());
    key(Qt::Key_Space);
    EXPECT_EQ(updates.installs, 1);
    key(Qt::Key_Return);
    EXPECT_EQ(updates.installs, 2);
    pressByAssistant(item(u"updateNowButton"_s));
    EXPECT_EQ(updates.installs, 3);
    EXPECT_EQ(accessible(item(u"updateNowButton"_s))->text(QAccessible::Name), u"Update Now"_s);
    EXPECT_EQ(accessible(item(u"bannerSubtitle"_s))->text(QAccessible::Name),
              textOf(u"bannerSubtitle"_s));
}
