#include "SettingsViewTest.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class SettingsView : public SettingsViewTest {
protected:
    [[nodiscard]] QQuickItem* sidebarItem(Tab tab) {
        return items(u"sidebarItem"_s).at(static_cast<int>(tab));
    }
    [[nodiscard]] bool isSelected(Tab tab) {
        return sidebarItem(tab)->property("isSelected").toBool();
    }
};

} // namespace

TEST_F(SettingsView, OpensWithTheGeneralSection) {
    start();
    show(u"SettingsWindow { width: 960; height: 680 }"_s, appState());
    EXPECT_EQ(window().title(), u"Settings"_s);
    EXPECT_TRUE(isSelected(Tab::general));
    EXPECT_EQ(textOf(u"sectionTitle"_s), u"General"_s);
    key(Qt::Key_Down);
    EXPECT_TRUE(isSelected(Tab::audio)) << "the keyboard is in the sidebar";
    clickAt(middleOf(sidebarItem(Tab::updates)));
    key(Qt::Key_Up);
    EXPECT_TRUE(isSelected(Tab::permissions));
}

TEST_F(SettingsView, ListsTheSectionsInTheSidebar) {
    open(Tab::general);
    const QList<std::pair<QString, QString>> expected{
        {u"General"_s, u"gearshape.fill"_s},         {u"Audio"_s, u"mic.fill"_s},
        {u"Appearance"_s, u"paintpalette.fill"_s},   {u"Agents"_s, u"cpu.fill"_s},
        {u"Shortcuts"_s, u"keyboard.fill"_s},        {u"Permissions"_s, u"lock.shield.fill"_s},
        {u"Updates"_s, u"arrow.down.circle.fill"_s}, {u"About"_s, u"info.circle.fill"_s},
    };
    const auto rows = items(u"sidebarItem"_s);
    ASSERT_EQ(rows.size(), expected.size());
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i]->property("text"), expected[i].first);
        EXPECT_EQ(rows[i]->property("symbol"), expected[i].second);
        EXPECT_EQ(accessible(rows[i])->text(QAccessible::Name), expected[i].first);
    }
    EXPECT_EQ(frameOf(u"sidebar"_s).width(), 220);
}

TEST_F(SettingsView, ShowsTheSectionThatIsClicked) {
    open(Tab::general);
    const QList<std::pair<QString, QString>> expected{
        {u"General"_s, u"Transcription, behavior and output settings"_s},
        {u"Audio"_s, u"Microphone, levels and noise settings"_s},
        {u"Appearance"_s, u"Themes, animations and window opacity"_s},
        {u"Agents"_s, u"AI agent integration and orchestration settings"_s},
        {u"Shortcuts"_s, u"All keyboard shortcuts are global and fixed"_s},
        {u"Permissions"_s, u"System access required for core features"_s},
        {u"Updates"_s, u"Version management and release notes"_s},
        {u"About"_s, u"Version info, links and diagnostics"_s},
    };
    for (int i = 0; i < expected.size(); ++i) {
        selectSection(static_cast<Tab>(i));
        EXPECT_TRUE(isSelected(static_cast<Tab>(i)));
        EXPECT_EQ(items(u"sectionTitle"_s).size(), 1);
        EXPECT_EQ(textOf(u"sectionTitle"_s), expected[i].first);
        EXPECT_EQ(textOf(u"sectionSubtitle"_s), expected[i].second);
        expectDividedRows();
    }
}

TEST_F(SettingsView, IsWalkedThroughWithTheArrowKeys) {
    open(Tab::general);
    sidebarItem(Tab::general)->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Up);
    EXPECT_TRUE(isSelected(Tab::general));
    key(Qt::Key_Down);
    EXPECT_TRUE(isSelected(Tab::audio));
    EXPECT_TRUE(sidebarItem(Tab::audio)->hasActiveFocus());
    EXPECT_TRUE(itemIn(sidebarItem(Tab::audio), u"focusRing"_s)->isVisible());
    for (int i = 0; i < 20; ++i) {
        key(Qt::Key_Down);
    }
    EXPECT_TRUE(isSelected(Tab::about));
    pressByAssistant(sidebarItem(Tab::agents));
    EXPECT_EQ(textOf(u"sectionTitle"_s), u"Agents"_s);
}

TEST_F(SettingsView, TheHeadingIsWhiteOnDarkInEveryTheme) {
    open(Tab::general);
    for (const QString& name : {u"razer"_s, u"latte"_s, u"glacier"_s}) {
        theme.setTheme(name);
        advance(500ms);
        EXPECT_EQ(colorOf(u"sectionTitle"_s), QColor(Qt::white));
        expectColor(colorOf(u"sectionSubtitle"_s), withAlpha(Qt::white, 0.35));
        const QPointF corner = frameOf(u"detail"_s).topLeft();
        EXPECT_LT(color(corner.toPoint() + QPoint(4, 4)).lightness(), 30) << name.toStdString();
        const bool isSidebarLight = color({4, 400}).lightness() > 128;
        EXPECT_EQ(isSidebarLight, name == u"latte") << name.toStdString();
    }
}

TEST_F(SettingsView, LooksAsLaidDown) {
    open(Tab::general);
    const auto pixels = [this](const QString& name) {
        return item(name)->property("font").value<QFont>().pixelSize();
    };
    EXPECT_EQ(pixels(u"sectionTitle"_s), 20);
    EXPECT_EQ(pixels(u"sectionSubtitle"_s), 12);
    EXPECT_EQ(pixels(u"cardCaption"_s), 10);
    const QFont caption = item(u"cardCaption"_s)->property("font").value<QFont>();
    EXPECT_NEAR(caption.letterSpacing(), 0.8, 0.01); // fonts count in 64ths
    expectColor(colorOf(u"cardCaption"_s), withAlpha(Qt::white, 0.3));
    EXPECT_EQ(pixels(u"rowLabel"_s), 13);
    EXPECT_EQ(pixels(u"rowDescription"_s), 11);
    expectColor(colorOf(u"rowDescription"_s), withAlpha(Qt::white, 0.35));
    QQuickItem* const ground = item(u"cardGround"_s);
    EXPECT_EQ(colorOf(u"cardGround"_s), QColor(u"#161620"_s));
    EXPECT_EQ(ground->property("radius").toDouble(), 10);
    QObject* const border = ground->property("border").value<QObject*>();
    EXPECT_EQ(border->property("width").toDouble(), 1);
    expectColor(border->property("color").value<QColor>(), withAlpha(Qt::white, 0.07));
    const auto cardTops = items(u"cardCaption"_s);
    EXPECT_EQ(cardTops.first()->y(), 20);
    const QRectF place = frameOf(ground);
    const QRectF language = frameOf(row(u"Language"_s));
    EXPECT_EQ(language.left(), place.left());
    EXPECT_EQ(language.width(), place.width());
    EXPECT_EQ(frameOf(itemIn(row(u"Language"_s), u"rowLabel"_s)).left(), place.left() + 16);
    EXPECT_EQ(frameOf(u"languagePicker"_s).right(), place.right() - 16);
    const QRectF texts = frameOf(itemIn(row(u"Language"_s), u"rowLabel"_s))
                             .united(frameOf(itemIn(row(u"Language"_s), u"rowDescription"_s)));
    EXPECT_EQ(language.height(), texts.height() + 24);
}

TEST_F(SettingsView, FitsIntoItsSmallestWindowAndScrolls) {
    open(Tab::general, {780, 560});
    for (int i = 0; i < SettingsTabs::count(); ++i) {
        selectSection(static_cast<Tab>(i));
        QQuickItem* const page = item(u"sectionPage"_s);
        const double right = frameOf(page).right();
        for (const QString& name :
             {u"rowLabel"_s, u"rowControl"_s, u"metricChip"_s, u"grantButton"_s, u"themeChip"_s}) {
            for (QQuickItem* part : items(name)) {
                EXPECT_LE(frameOf(part).right(), right - 28 - 16) << i << name.toStdString();
            }
        }
        for (QQuickItem* label : items(u"rowLabel"_s)) {
            EXPECT_FALSE(label->property("truncated").toBool());
        }
        sidebarItem(static_cast<Tab>(i))->forceActiveFocus(Qt::TabFocusReason);
        for (int pages = 0; pages < 6; ++pages) {
            key(Qt::Key_PageDown);
        }
        EXPECT_EQ(page->property("contentY").toDouble(),
                  page->property("maximumContentY").toDouble());
        key(Qt::Key_PageUp);
        const QRectF last = frameOf(items(u"cardGround"_s).last());
        EXPECT_TRUE(page->property("maximumContentY").toDouble() == 0 ||
                    last.bottom() > frameOf(page).bottom() - 60);
    }
}

TEST_F(SettingsView, EveryControlIsReachedByTab) {
    open(Tab::general, {780, 560});
    sidebarItem(Tab::general)->forceActiveFocus(Qt::TabFocusReason);
    QSet<QQuickItem*> reached;
    for (int i = 0; i < 12; ++i) {
        key(Qt::Key_Tab);
        QQuickItem* const focused = window().activeFocusItem();
        reached.insert(focused);
        const QRectF place = frameOf(focused);
        EXPECT_GE(place.top(), 0);
        EXPECT_LE(place.bottom(), 560) << "it scrolls into view";
    }
    for (const QString& name : {u"toggle"_s, u"slider"_s, u"languagePicker"_s, u"modelPicker"_s}) {
        for (QQuickItem* control : items(name)) {
            EXPECT_TRUE(reached.contains(control)) << name.toStdString();
        }
    }
}

TEST_F(SettingsView, ClosesWithTheEscapeKey) {
    open(Tab::general);
    key(Qt::Key_Escape);
    EXPECT_FALSE(window().isVisible());
}
