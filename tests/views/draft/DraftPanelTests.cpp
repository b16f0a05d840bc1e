#include "DraftViewTest.h"
#include "theme/HexColor.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using DraftPanel = DraftViewTest;

} // namespace

TEST_F(DraftPanel, HasItsMeasures) {
    showPanel();
    (void)grab();
    const QRectF panel = frameOf(item(u"panel"_s));
    const QRectF title = frameOf(item(u"draftTitle"_s));
    const QRectF counter = frameOf(item(u"draftCharsCounter"_s));
    const QRectF history = frameOf(item(u"historyButton"_s));
    const QRectF editorGround = frameOf(item(u"draftEditor"_s));
    EXPECT_EQ(title.left() - panel.left(), 12);
    EXPECT_NEAR(counter.left() - title.right(), 8, 0.5) << "on whole points";
    EXPECT_EQ(panel.right() - history.right(), 12);
    EXPECT_EQ(history.top() - panel.top(), 10);
    EXPECT_EQ(editorGround.top() - history.bottom(), 10);
    const QRectF bar = frameOf(item(u"imagePreviewBar"_s));
    EXPECT_EQ(bar.left() - panel.left(), 12);
    EXPECT_EQ(panel.right() - bar.right(), 12);
    const QRectF attach = frameOf(item(u"attachButton"_s));
    EXPECT_EQ(attach.left() - panel.left(), 12);
    EXPECT_EQ(attach.top() - bar.bottom(), 10);
    EXPECT_EQ(panel.bottom() - attach.bottom(), 10);
    EXPECT_EQ(textOf(u"draftTitle"_s), u"Draft"_s);
    EXPECT_EQ(propertyOf(u"draftTitle"_s, "font").value<QFont>().pixelSize(), 13);
    EXPECT_EQ(propertyOf(u"draftCharsCounter"_s, "font").value<QFont>().pixelSize(), 11);
}

TEST_F(DraftPanel, HasAThinLineAroundTheSurface) {
    showPanel();
    EXPECT_EQ(propertyOf(u"draftGround"_s, "radius"), 12);
    EXPECT_EQ(propertyOf(u"draftGround"_s, "lineWidth"), 1);
    EXPECT_EQ(propertyOf(u"draftGround"_s, "dash"), 0);
    expectColor(propertyOf(u"draftGround"_s, "fill").value<QColor>(), hexColor(u"111111"));
    expectColor(colorOf(u"draftGround"_s), hexColor(u"2a2a2a"));
    const QRectF panel = frameOf(item(u"panel"_s));
    const QPoint leftEdge(qRound(panel.left()), qRound(panel.center().y()));
    expectColor(color(leftEdge), hexColor(u"2a2a2a"));
    expectColor(color(leftEdge + QPoint(2, 0)), hexColor(u"111111"));
}

TEST_F(DraftPanel, SaysWhatItsButtonsDo) {
    showPanel();
    const struct {
        QString button;
        QString label;
        QString symbol;
    } rows[] = {{u"historyButton"_s, u"History"_s, u"clock.arrow.circlepath"_s},
                {u"attachButton"_s, u"Attach"_s, u"paperclip"_s},
                {u"selectionButton"_s, u"Selection"_s, u"text.viewfinder"_s},
                {u"copyButton"_s, u"Copy"_s, u"doc.on.doc"_s},
                {u"clearButton"_s, u"Clear"_s, u"trash"_s}};
    for (const auto& row : rows) {
        QQuickItem* const button = item(row.button);
        EXPECT_EQ(itemIn(button, u"actionLabel"_s)->property("text"), row.label);
        EXPECT_EQ(itemIn(button, u"actionSymbol"_s)->property("name"), row.symbol);
        EXPECT_EQ(accessible(button)->text(QAccessible::Name), row.label);
        EXPECT_EQ(accessible(button)->role(), QAccessible::Button);
    }
}

TEST_F(DraftPanel, OpensTheHistory) {
    showPanel();
    app().historyService()->add(u"Earlier words."_s, u"en"_s, 1, QString());
    click(u"historyButton"_s);
    EXPECT_TRUE(app().showHistory());
    ASSERT_EQ(app().historyEntries().size(), 1);
    EXPECT_EQ(app().historyEntries().first().text, u"Earlier words."_s);
}

TEST_F(DraftPanel, AttachesWhatThePickerGives) {
    showPanel();
    const QList<QUrl> images = pictures(2);
    click(u"attachButton"_s);
    pickImages(images);
    EXPECT_EQ(app().attachedImages(), images);
    click(u"addImagesButton"_s);
    pickImages(pictures(1, Qt::blue));
    EXPECT_EQ(app().attachedImages().size(), 3);
}

TEST_F(DraftPanel, TakesWhatIsSelectedElsewhere) {
    showPanel();
    textSelections.selection = u"  from a terminal\n"_s;
    click(u"selectionButton"_s);
    advance(16ms);
    EXPECT_EQ(app().draftText(), u"from a terminal"_s);
    EXPECT_EQ(shownText(), u"from a terminal"_s);
    click(u"selectionButton"_s);
    advance(16ms);
    EXPECT_EQ(shownText(), u"from a terminal from a terminal"_s);
    textSelections.selection = u" \n "_s;
    click(u"selectionButton"_s);
    advance(16ms);
    EXPECT_EQ(shownText(), u"from a terminal from a terminal"_s);
}

TEST_F(DraftPanel, CopiesTheDraft) {
    showPanel();
    app().setDraftText(u"e\u0301 👩‍👩‍👧\n\tindented "_s);
    pasteboard.contents = u"something else"_s;
    click(u"copyButton"_s);
    EXPECT_EQ(pasteboard.contents, u"e\u0301 👩‍👩‍👧\n\tindented "_s);
    EXPECT_EQ(app().draftText(), u"e\u0301 👩‍👩‍👧\n\tindented "_s);
}

TEST_F(DraftPanel, ClearsTheTextAndTheImages) {
    showPanel();
    app().setDraftText(u"words"_s);
    app().attachImages(pictures(2));
    click(u"clearButton"_s);
    EXPECT_EQ(app().draftText(), QString());
    EXPECT_EQ(shownText(), QString());
    EXPECT_TRUE(app().attachedImages().isEmpty());
    EXPECT_TRUE(item(u"imageDropZone"_s)->isVisible());
}

TEST_F(DraftPanel, IsWalkedThroughByTab) {
    showPanel();
    app().attachImages(pictures(2));
    item(u"toggle"_s)->forceActiveFocus();
    const auto next = [this] {
        key(Qt::Key_Tab);
        return window().activeFocusItem()->objectName();
    };
    QStringList order;
    for (int step = 0; step < 10; ++step) {
        order.append(next());
    }
    EXPECT_EQ(order, QStringList({u"historyButton"_s, u"draftText"_s, u"addImagesButton"_s,
                                  u"clearImagesButton"_s, u"removeImageButton"_s,
                                  u"removeImageButton"_s, u"attachButton"_s, u"selectionButton"_s,
                                  u"copyButton"_s, u"clearButton"_s}));
}

TEST_F(DraftPanel, IsWorkedByTheKeyboard) {
    showPanel();
    app().setDraftText(u"words"_s);
    item(u"clearButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(itemIn(item(u"clearButton"_s), u"focusRing"_s)->isVisible());
    key(Qt::Key_Return);
    EXPECT_EQ(app().draftText(), QString());
    item(u"imageDropZone"_s)->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Enter);
    pickImages(pictures(3));
    item(u"removeImageButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    EXPECT_EQ(app().attachedImages().size(), 2);
    item(u"clearImagesButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    EXPECT_TRUE(app().attachedImages().isEmpty());
}
