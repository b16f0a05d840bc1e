#include "DialogsTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class ActivityFeed : public DialogsTest {
protected:
    void startWith(int entries) {
        start();
        scheduler.runPosted(); // the load of the model
        app().clearActivityLog();
        for (int i = 0; i < entries; ++i) {
            add(u"entry %1"_s.arg(i));
        }
    }
    void add(const QString& message, ActivityType type = ActivityType::info) {
        app().log(type, message);
    }
    void showFeed() {
        showOverWindow(u"ActivityFeedView { objectName: 'feed'; x: 20; y: 20; width: 540;"
                       "appState: window.appState }"_s);
    }
    double scrolled() { return propertyOf(u"feedList"_s, "contentY").toDouble(); }
    double end() {
        (void)grab(); // lays out what has changed
        return propertyOf(u"feedList"_s, "contentHeight").toDouble() -
               item(u"feedList"_s)->height();
    }
    QStringList messages() {
        QStringList texts;
        for (QQuickItem* row : items(u"entryMessage"_s)) {
            texts.append(row->property("text").toString());
        }
        return texts;
    }
};

} // namespace

TEST_F(ActivityFeed, ShowsItsHeadAndItsEntries) {
    startWith(2);
    showFeed();
    expectColor(propertyOf(u"feed"_s, "color").value<QColor>(), withAlpha(Qt::white, 0.03));
    expectColor(borderColor(item(u"feed"_s)), withAlpha(hexColor(u"2a2a2a"), 0.5));
    EXPECT_EQ(propertyOf(u"feed"_s, "radius").toDouble(), 10);
    EXPECT_EQ(textOf(u"feedTitle"_s), u"Activity"_s);
    EXPECT_EQ(textOf(u"feedCount"_s), u"2"_s);
    expectColor(propertyOf(u"feedBadge"_s, "color").value<QColor>(), withAlpha(Qt::white, 0.06));
    EXPECT_EQ(messages(), QStringList({u"entry 0"_s, u"entry 1"_s}));
}

TEST_F(ActivityFeed, AnEntryShowsTimeIconAndMessage) {
    startWith(0);
    add(u"Sent to Claude successfully"_s, ActivityType::success);
    showFeed();
    EXPECT_EQ(textOf(u"entryTime"_s), app().activityLog().first().time());
    EXPECT_EQ(propertyOf(u"entryTime"_s, "width").toDouble(), 52);
    EXPECT_EQ(propertyOf(u"entryTime"_s, "font").value<QFont>().pixelSize(), 9);
    expectColor(propertyOf(u"entryTime"_s, "color").value<QColor>(),
                withAlpha(hexColor(u"666666"), 0.6));
    EXPECT_EQ(propertyOf(u"entryIcon"_s, "name"), u"checkmark.circle.fill"_s);
    EXPECT_EQ(propertyOf(u"entryIcon"_s, "size").toDouble(), 10);
    expectColor(propertyOf(u"entryIcon"_s, "color").value<QColor>(), hexColor(u"22c55e"));
    EXPECT_EQ(textOf(u"entryMessage"_s), u"Sent to Claude successfully"_s);
    EXPECT_EQ(propertyOf(u"entryMessage"_s, "font").value<QFont>().pixelSize(), 11);
    expectColor(propertyOf(u"entryMessage"_s, "color").value<QColor>(), hexColor(u"b4b4b4"));
    // Behind 4 of padding: 52 of time, 8, 14 of icon, 8.
    EXPECT_EQ(frameOf(u"entryMessage"_s).left() - frameOf(u"entryRow"_s).left(), 86);
    EXPECT_EQ(frameOf(u"entryRow"_s).left() - frameOf(u"feed"_s).left(), 8);
}

TEST_F(ActivityFeed, IsAsHighAsItsEntriesUpTo140) {
    startWith(1);
    showFeed();
    const double one = item(u"entryRow"_s)->height();
    EXPECT_EQ(item(u"feedList"_s)->height(), one + 8);
    add(u"another"_s);
    settle();
    EXPECT_EQ(item(u"feedList"_s)->height(), 2 * one + 2 + 8);
    for (int i = 0; i < 20; ++i) {
        add(u"more"_s);
    }
    settle();
    EXPECT_EQ(item(u"feedList"_s)->height(), 140);
}

TEST_F(ActivityFeed, AppearsAtItsEndAtOnce) {
    startWith(30);
    show(u"ActivityFeedView { width: 540 }"_s, appState());
    EXPECT_GT(end(), 0);
    EXPECT_EQ(scrolled(), end());
}

TEST_F(ActivityFeed, ScrollsToANewEntryInAFifthOfASecond) {
    startWith(30);
    showFeed();
    const double before = scrolled();
    add(u"news"_s);
    advance(64ms);
    EXPECT_GT(scrolled(), before);
    EXPECT_LT(scrolled(), end());
    advance(160ms);
    EXPECT_EQ(scrolled(), end());
    EXPECT_EQ(messages().last(), u"news"_s);
    const QImage rest = grab();
    advance(1s);
    EXPECT_EQ(grab(), rest);
}

TEST_F(ActivityFeed, ScrollsBackFromWhereTheUserIs) {
    startWith(30);
    showFeed();
    item(u"feedList"_s)->setProperty("contentY", 0);
    add(u"news"_s);
    settle();
    EXPECT_EQ(scrolled(), end());
}

TEST_F(ActivityFeed, KeepsTheRowsThatStay) {
    startWith(50);
    showFeed();
    QQuickItem* const second = items(u"entryRow"_s).at(1);
    add(u"news"_s);
    settle();
    EXPECT_EQ(items(u"entryRow"_s).size(), 50);
    EXPECT_EQ(items(u"entryRow"_s).first(), second) << "only the oldest one went";
    EXPECT_EQ(messages().last(), u"news"_s);
    EXPECT_EQ(scrolled(), end());
}

TEST_F(ActivityFeed, TheTrashEmptiesTheLog) {
    startWith(3);
    showFeed();
    EXPECT_EQ(propertyOf(u"clearSymbol"_s, "name"), u"trash"_s);
    EXPECT_EQ(propertyOf(u"clearSymbol"_s, "size").toDouble(), 10);
    click(u"clearActivityButton"_s);
    EXPECT_TRUE(app().activityLog().isEmpty());
    settle();
    EXPECT_EQ(textOf(u"feedCount"_s), u"0"_s);
    EXPECT_TRUE(items(u"entryRow"_s).isEmpty());
    add(u"again"_s);
    settle();
    EXPECT_EQ(messages(), QStringList{u"again"_s});
}

TEST_F(ActivityFeed, TheTrashIsReachedByTab) {
    startWith(3);
    showFeed();
    key(Qt::Key_Tab);
    EXPECT_TRUE(item(u"clearActivityButton"_s)->hasActiveFocus());
    EXPECT_TRUE(itemsIn(item(u"clearActivityButton"_s), u"focusRing"_s).first()->isVisible());
    key(Qt::Key_Space);
    EXPECT_TRUE(app().activityLog().isEmpty());
}

TEST_F(ActivityFeed, WrapsALongMessage) {
    startWith(1);
    showFeed();
    const double one = item(u"entryRow"_s)->height();
    add(u"A message that is a good deal longer than a line of the feed. "_s.repeated(3));
    settle();
    QQuickItem* const row = items(u"entryRow"_s).last();
    EXPECT_GT(row->height(), 2 * one - 6);
    EXPECT_FALSE(itemsIn(row, u"entryMessage"_s).first()->property("truncated").toBool());
    EXPECT_EQ(scrolled(), end());
}

TEST_F(ActivityFeed, IsAListOfItsMessagesForThoseWhoCantSeeIt) {
    startWith(2);
    showFeed();
    QAccessibleInterface* const list = accessible(item(u"feedList"_s));
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), u"Activity"_s);
    QAccessibleInterface* const entry = accessible(items(u"entryRow"_s).last());
    EXPECT_EQ(entry->role(), QAccessible::ListItem);
    EXPECT_EQ(entry->text(QAccessible::Name), u"entry 1"_s);
}

TEST_F(ActivityFeed, KeepsItsSizesAndDistances) {
    startWith(2);
    showFeed();
    EXPECT_EQ(propertyOf(u"feedTitle"_s, "font").value<QFont>().pixelSize(), 12);
    EXPECT_EQ(propertyOf(u"feedCount"_s, "font").value<QFont>().pixelSize(), 10);
    EXPECT_EQ(propertyOf(u"feedBadge"_s, "radius").toDouble(), 4);
    EXPECT_EQ(item(u"feedBadge"_s)->size() - item(u"feedCount"_s)->size(), QSizeF(12, 4));
    EXPECT_EQ(frameOf(u"feedTitle"_s).left() - frameOf(u"feed"_s).left(), 12);
    const QRectF row = frameOf(u"entryRow"_s);
    EXPECT_EQ(frameOf(u"entryTime"_s).left() - row.left(), 4);
    // In the middle of 14 behind 4 of padding, 52 of time and 8.
    EXPECT_EQ(frameOf(u"entryIcon"_s).center().x() - row.left(), 71);
    EXPECT_EQ(row.height(), frameOf(u"entryMessage"_s).height() + 6);
    EXPECT_EQ(frameOf(u"feedList"_s).top() + 4, row.top());
}

TEST_F(ActivityFeed, HoldsTogetherWithAnyMessage) {
    startWith(0);
    for (const QString& message :
         {u"שלום עולם "_s.repeated(20), u"👩‍👩‍👧‍👦"_s.repeated(60),
          QString(300, u'x'), u"<img src='http://example.com/a.png'>"_s}) {
        add(message);
    }
    showFeed();
    for (QQuickItem* message : items(u"entryMessage"_s)) {
        EXPECT_LE(message->property("contentWidth").toDouble(), message->width());
    }
    EXPECT_EQ(messages().last(), u"<img src='http://example.com/a.png'>"_s);
    EXPECT_EQ(propertyOf(u"entryMessage"_s, "textFormat").toInt(), int(Qt::PlainText));
}
