#include "HeaderViewTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class VersionBadge : public HeaderViewTest {
protected:
    void showBadge() {
        show(u"Item { id: root; width: 300; height: 60; property QtObject appState;"
             "VersionBadge { objectName: 'badge'; x: 20; y: 20; appState: root.appState } }"_s,
             updateState());
    }
    [[nodiscard]] QObject* tip() { return item(u"badge"_s)->findChild<QObject*>(u"helpTip"_s); }
};

} // namespace

TEST_F(VersionBadge, ShowsTheVersionBesideADot) {
    showBadge();
    EXPECT_EQ(textOf(u"versionText"_s), u"v1.2.3"_s);
    EXPECT_FALSE(propertyOf(u"versionText"_s, "truncated").toBool());
    EXPECT_EQ(propertyOf(u"versionText"_s, "font").value<QFont>().pixelSize(), 9);
    const QRectF pane = frameOf(u"versionPane"_s);
    const QRectF dot = frameOf(u"versionDot"_s);
    const QRectF words = frameOf(u"versionText"_s);
    EXPECT_EQ(propertyOf(u"versionPane"_s, "radius").toDouble(), 6);
    EXPECT_EQ(dot.size(), QSizeF(5, 5));
    EXPECT_EQ(propertyOf(u"versionDot"_s, "shadowRadius").toDouble(), 3);
    EXPECT_EQ(dot.left(), pane.left() + 10);
    EXPECT_NEAR(words.right(), pane.right() - 10, 0.5) << "the badge has a whole width";
    EXPECT_EQ(words.top(), pane.top() + 5);
    EXPECT_EQ(words.bottom(), pane.bottom() - 5);
}

TEST_F(VersionBadge, IsPaleWithoutAnUpdate) {
    showBadge();
    expectColor(colorOf(u"versionPane"_s), withAlpha(Qt::white, 0.08));
    expectColor(borderColor(item(u"versionPane"_s)), withAlpha(Qt::white, 0.25));
    EXPECT_EQ(tip()->property("text"), u"Quorvin v1.2.3"_s);
    click(u"badge"_s);
    EXPECT_EQ(updates.installs, 0);
    key(Qt::Key_Tab);
    EXPECT_FALSE(item(u"badge"_s)->hasActiveFocus()) << "nothing to press";
}

TEST_F(VersionBadge, IsOrangeWithAnUpdate) {
    updates.offer(u"2.0.0"_s);
    showBadge();
    expectColor(colorOf(u"versionPane"_s), withAlpha(orange, 0.12));
    expectColor(borderColor(item(u"versionPane"_s)), withAlpha(orange, 0.5));
    expectColor(colorOf(u"versionDot"_s), orange);
    expectColor(colorOf(u"versionDot"_s, "shadowColor"), withAlpha(orange, 0.8));
    EXPECT_EQ(tip()->property("text"), u"Update available: v2.0.0 — click to download"_s);
}

TEST_F(VersionBadge, TakesTheLightAppearancesOrange) {
    updates.offer(u"2.0.0"_s);
    showBadge();
    theme.setTheme(u"latte"_s);
    expectColor(colorOf(u"versionDot"_s), hexColor(u"ff9500"));
    theme.setTheme(u"glacier"_s);
    expectColor(colorOf(u"versionDot"_s), orange);
}

TEST_F(VersionBadge, InstallsTheUpdateByMouseKeyboardAndAssistant) {
    showBadge();
    updates.offer(u"2.0.0"_s);
    click(u"badge"_s);
    EXPECT_EQ(updates.installs, 1);
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"badge"_s)->hasActiveFocus());
    key(Qt::Key_Space);
    EXPECT_EQ(updates.installs, 2);
    key(Qt::Key_Return);
    EXPECT_EQ(updates.installs, 3);
    pressByAssistant(item(u"badge"_s));
    EXPECT_EQ(updates.installs, 4);
}

TEST_F(VersionBadge, ShowsItsTipUnderThePointerAndToAssistants) {
    showBadge();
    EXPECT_EQ(accessible(item(u"badge"_s))->text(QAccessible::Name), u"Quorvin v1.2.3"_s);
    EXPECT_EQ(accessible(item(u"badge"_s))->role(), QAccessible::Button);
    EXPECT_FALSE(tip()->property("visible").toBool());
    tip()->setProperty("delay", 0); // it passes in real time
    hover(u"badge"_s);
    EXPECT_TRUE(tip()->property("visible").toBool());
    leave();
    advance(50ms);
    EXPECT_FALSE(tip()->property("visible").toBool());
}
