#include "HistoryTest.h"
#include "views/dialogs/HistoryTexts.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class HistoryRow : public HistoryTest {
protected:
    static QColor fill(QQuickItem* rectangle) {
        return rectangle->property("color").value<QColor>();
    }
    void hoverIn(QQuickItem* row, const QString& name) {
        hoverAt(middleOf(part(row, name)));
        advance(300ms);
    }
};

} // namespace

TEST_F(HistoryRow, ShowsTextBadgeAndMeta) {
    start();
    remember(QString(50, u'x'));
    remember(QString(51, u'y'), u"Claude"_s, 12.34, u"de"_s);
    remember(u"other"_s, u"OpenCode"_s, 3, QString());
    remember(u"unknown"_s, u"Somebody"_s);
    showDialog();
    open();
    QQuickItem* const whole = row(QString(50, u'x'));
    QQuickItem* const cut = row(QString(50, u'y') + u"..."_s);
    QQuickItem* const other = row(u"other"_s);
    EXPECT_FALSE(part(whole, u"badge"_s)->isVisible());
    EXPECT_EQ(part(cut, u"badgeText"_s)->property("text"), u"→ Claude"_s);
    expectColor(fill(part(cut, u"badge"_s)), purple);
    EXPECT_EQ(part(other, u"badgeText"_s)->property("text"), u"→ OpenCode"_s);
    expectColor(fill(part(other, u"badge"_s)), green);
    expectColor(fill(part(row(u"unknown"_s), u"badge"_s)), green);
    EXPECT_EQ(part(cut, u"badge"_s)->property("radius").toDouble(), 10);
    const HistoryEntry entry = app().historyEntries().at(2);
    EXPECT_EQ(part(cut, u"meta"_s)->property("text").toString(), HistoryTexts::meta(entry));
    EXPECT_TRUE(HistoryTexts::meta(entry).endsWith(u" | 12.3s | de"_s));
    EXPECT_TRUE(part(other, u"meta"_s)->property("text").toString().endsWith(u" | 3.0s"_s));
}

TEST_F(HistoryRow, LightsUpUnderThePointer) {
    openWith({u"fix it"_s});
    QQuickItem* const ground = part(row(u"fix it"_s), u"rowGround"_s);
    EXPECT_EQ(ground->property("radius").toDouble(), 10);
    expectColor(fill(ground), withAlpha(Qt::white, 0.06));
    expectColor(borderColor(ground), withAlpha(Qt::white, 0.15));
    hoverIn(row(u"fix it"_s), u"excerpt"_s);
    EXPECT_TRUE(row(u"fix it"_s)->property("isHovered").toBool());
    expectColor(fill(ground), withAlpha(orange, 0.12));
    expectColor(borderColor(ground), orange);
    hoverIn(row(u"fix it"_s), u"copyButton"_s);
    expectColor(fill(ground), withAlpha(orange, 0.12));
    leave();
    advance(300ms);
    expectColor(fill(ground), withAlpha(Qt::white, 0.06));
}

TEST_F(HistoryRow, ItsButtonsHaveTheirLooks) {
    openWith({u"fix it"_s});
    struct Expected {
        QString name;
        QString label;
        QColor color;
    };
    for (const Expected& expected : {Expected{u"claudeButton"_s, u"Claude"_s, purple},
                                     Expected{u"openCodeButton"_s, u"OpenCode"_s, green},
                                     Expected{u"copyButton"_s, u"Copy"_s, orange},
                                     Expected{u"loadButton"_s, u"Load"_s, orange}}) {
        SCOPED_TRACE(expected.label.toStdString());
        QQuickItem* const button = part(row(u"fix it"_s), expected.name);
        QQuickItem* const ground = part(button, u"actionGround"_s);
        EXPECT_EQ(button->property("label"), expected.label);
        EXPECT_EQ(button->property("font").value<QFont>().pixelSize(), 10);
        EXPECT_EQ(ground->property("radius").toDouble(), 6);
        leave();
        advance(300ms);
        expectColor(fill(ground), withAlpha(expected.color, 0.08));
        expectColor(borderColor(ground), withAlpha(expected.color, 0.3));
        hoverIn(row(u"fix it"_s), expected.name);
        expectColor(fill(ground), withAlpha(expected.color, 0.9));
        expectColor(borderColor(ground), withAlpha(expected.color, 0.6));
    }
}

TEST_F(HistoryRow, AClickOrLoadTakesItIntoTheDraft) {
    openWith({u"first"_s, u"second"_s});
    app().setDraftText(u"old"_s);
    clickIn(row(u"first"_s), u"excerpt"_s);
    EXPECT_EQ(app().draftText(), u"first"_s);
    EXPECT_FALSE(app().showHistory());
    settle();
    open();
    clickIn(row(u"second"_s), u"loadButton"_s);
    EXPECT_EQ(app().draftText(), u"second"_s);
    EXPECT_FALSE(app().showHistory());
}

TEST_F(HistoryRow, CopyOnlyCopies) {
    const QString text = u"A text of more than fifty characters, which is copied as a whole."_s;
    openWith({text});
    pasteboard.contents = u"old"_s;
    clickIn(row(HistoryTexts::excerpt(text)), u"copyButton"_s);
    EXPECT_EQ(pasteboard.contents, text);
    EXPECT_TRUE(app().showHistory());
    EXPECT_EQ(app().draftText(), QString());
}

TEST_F(HistoryRow, TheAgentsButtonsSendTheText) {
    openWith({u"fix it"_s});
    runAgent(u"claude"_s, 1001);
    runAgent(u"opencode"_s, 1002);
    app().setAgentsIncluded(false);
    clickIn(row(u"fix it"_s), u"claudeButton"_s);
    EXPECT_FALSE(app().showHistory());
    scheduler.advance(2s);
    EXPECT_EQ(pasteboard.contents, u"fix it"_s);
    EXPECT_TRUE(feed().contains(u"Sent to Claude successfully"_s));
    settle();
    open();
    clickIn(row(u"fix it"_s), u"openCodeButton"_s);
    scheduler.advance(2s);
    EXPECT_TRUE(feed().contains(u"Sent to OpenCode successfully"_s));
}

TEST_F(HistoryRow, IsReadToThoseWhoCantSeeIt) {
    openWith({u"fix it"_s});
    QAccessibleInterface* const entry = accessible(row(u"fix it"_s));
    EXPECT_EQ(entry->role(), QAccessible::ListItem);
    EXPECT_EQ(entry->text(QAccessible::Name), u"fix it"_s);
    EXPECT_TRUE(entry->text(QAccessible::Description).endsWith(u" | 4.2s | en"_s));
    EXPECT_EQ(accessible(item(u"historyList"_s))->role(), QAccessible::List);
    QAccessibleInterface* const copy = accessible(part(row(u"fix it"_s), u"copyButton"_s));
    EXPECT_EQ(copy->text(QAccessible::Name), u"Copy"_s);
    entry->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(app().draftText(), u"fix it"_s);
}

TEST_F(HistoryRow, KeepsItsSizesAndDistances) {
    start();
    remember(u"fix it"_s, u"Claude"_s);
    showDialog();
    open();
    QQuickItem* const entry = row(u"fix it"_s);
    const auto frame = [&](const QString& name) {
        QQuickItem* const found = part(entry, name);
        return found->mapRectToItem(entry, found->boundingRect());
    };
    const auto fontSize = [&](const QString& name) {
        return part(entry, name)->property("font").value<QFont>().pixelSize();
    };
    EXPECT_EQ(fontSize(u"excerpt"_s), 13);
    EXPECT_EQ(fontSize(u"badgeText"_s), 10);
    EXPECT_EQ(fontSize(u"meta"_s), 11);
    EXPECT_EQ(frame(u"excerpt"_s).left(), 12);
    EXPECT_EQ(frame(u"badge"_s).right(), entry->width() - 12);
    EXPECT_EQ(frame(u"badge"_s).size() - frame(u"badgeText"_s).size(), QSizeF(16, 6));
    EXPECT_EQ(frame(u"loadButton"_s).right(), entry->width() - 12);
    EXPECT_EQ(frame(u"copyButton"_s).left() - frame(u"openCodeButton"_s).right(), 6);
    const QObject* const label =
        part(entry, u"copyButton"_s)->property("contentItem").value<QObject*>();
    EXPECT_EQ(frame(u"copyButton"_s).width(), label->property("implicitWidth").toDouble() + 20);
    EXPECT_EQ(frame(u"copyButton"_s).height(), label->property("implicitHeight").toDouble() + 8);
    EXPECT_GE(frame(u"claudeButton"_s).top(), frame(u"badge"_s).bottom());
}

TEST_F(HistoryRow, HoldsTogetherWithAnyText) {
    start();
    const QStringList texts{QString(50, u'W'), u"שלום עולם "_s.repeated(8),
                            u"👩‍👩‍👧‍👦🇩🇪"_s.repeated(30), u"two\nlines"_s,
                            u"<b>not bold</b>"_s};
    for (const QString& text : texts) {
        remember(text, QString(80, u'M'), 86399.96, u"zh-Hant-TW"_s.repeated(6));
    }
    showDialog();
    open();
    for (const QString& text : texts) {
        SCOPED_TRACE(text.toStdString());
        // Those out of sight are not made.
        QMetaObject::invokeMethod(
            item(u"historyList"_s), "positionViewAtIndex",
            Q_ARG(int, static_cast<int>(texts.size() - 1 - texts.indexOf(text))), Q_ARG(int, 1));
        settle();
        QQuickItem* const entry = row(HistoryTexts::excerpt(text));
        const auto frame = [&](const QString& name) {
            QQuickItem* const found = part(entry, name);
            return found->mapRectToItem(entry, found->boundingRect());
        };
        EXPECT_EQ(part(entry, u"excerpt"_s)->property("lineCount").toInt(), 1);
        EXPECT_LE(frame(u"excerpt"_s).right(), frame(u"badge"_s).left());
        EXPECT_LE(part(entry, u"excerpt"_s)->property("contentWidth").toDouble(),
                  frame(u"excerpt"_s).width());
        EXPECT_GT(part(entry, u"excerpt"_s)->width(), 200);
        EXPECT_LE(part(entry, u"meta"_s)->property("contentWidth").toDouble(),
                  frame(u"claudeButton"_s).left() - frame(u"meta"_s).left());
        EXPECT_TRUE(part(entry, u"meta"_s)->property("text").toString().endsWith(u'…'));
    }
}

TEST_F(HistoryRow, ItsOtherButtonsDontLoadToo) {
    openWith({u"fix it"_s});
    QStringList drafts;
    QObject::connect(&app(), &AppState::draftTextChanged,
                     [&] { drafts.append(app().draftText()); });
    clickIn(row(u"fix it"_s), u"copyButton"_s);
    EXPECT_TRUE(drafts.isEmpty());
    clickIn(row(u"fix it"_s), u"claudeButton"_s);
    EXPECT_EQ(drafts, QStringList{u"fix it"_s}) << "only once";
}
