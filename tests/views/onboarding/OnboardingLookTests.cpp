#include "OnboardingViewTest.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using Onboarding = OnboardingViewTest;

const QColor accent = hexColor(u"3b82f6"); // of the theme razer
const QColor border = hexColor(u"2a2a2a");
const QColor indigo = hexColor(u"6366f1");
const QColor amber = hexColor(u"f59e0b");

} // namespace

TEST_F(Onboarding, EachStepHasItsSymbolItsTextsAndItsButtons) {
    struct Row {
        Step step;
        QString symbol;
        double size;
        QString title;
        QString description;
        QStringList buttons;
    };
    const QList<Row> rows{
        {Step::microphone,
         u"mic.fill"_s,
         48,
         u"Microphone Access"_s,
         u"Quorvin needs microphone access to\nrecord and transcribe your voice."_s,
         {u"Grant Access"_s}},
        {Step::accessibility,
         u"keyboard"_s,
         44,
         u"Accessibility Access"_s,
         u"Quorvin needs Accessibility access to\ntype transcribed text into terminal apps."_s,
         {u"Open Settings"_s}},
        {Step::automation,
         u"gearshape.2"_s,
         44,
         u"Automation Access"_s,
         u"Quorvin needs Automation access to control\nTerminal, iTerm, and System Events.\n\n"
         u"Allow each prompt that appears, or open\nSettings → Privacy → Automation to enable."_s,
         {u"Allow Prompts"_s, u"Open Settings"_s}},
        {Step::done,
         u"checkmark.circle.fill"_s,
         56,
         u"All Set!"_s,
         u"Quorvin is ready to use.\nPress Ctrl+` to start recording."_s,
         {u"Get Started"_s}},
    };
    for (const Row& row : rows) {
        showWizardAt(row.step);
        ASSERT_EQ(step(), row.step);
        EXPECT_EQ(onPage(u"badgeSymbol"_s)->property("name").toString(), row.symbol);
        EXPECT_EQ(onPage(u"badgeSymbol"_s)->property("size").toDouble(), row.size);
        EXPECT_EQ(textOnPage(u"title"_s), row.title);
        EXPECT_EQ(textOnPage(u"description"_s), row.description);
        QStringList buttons;
        for (QQuickItem* button : onPage(u"buttons"_s)->childItems()) {
            buttons.append(button->property("text").toString());
        }
        EXPECT_EQ(buttons, row.buttons);
        const bool isPermission = row.step != Step::done;
        EXPECT_EQ(onPage(u"skipButton"_s)->isVisible(), isPermission);
        EXPECT_EQ(onPage(u"status"_s)->isVisible(), isPermission);
    }
}

TEST_F(Onboarding, TheIndicatorTicksOffWhatIsDone) {
    struct Row {
        Step step;
        QString count;
        QString dots; // p for past, c for current, f for future
    };
    for (const Row& row :
         {Row{Step::microphone, u"1/3"_s, u"cff"_s}, Row{Step::accessibility, u"2/3"_s, u"pcf"_s},
          Row{Step::automation, u"3/3"_s, u"ppc"_s}, Row{Step::done, QString(), u"ppp"_s}}) {
        showWizardAt(row.step);
        EXPECT_EQ(item(u"stepCount"_s)->property("text").toString(), row.count);
        QString dots;
        for (qsizetype i = 0; i < 3; ++i) {
            dots += items(u"pastDot"_s)[i]->isVisible()      ? u'p'
                    : items(u"currentDot"_s)[i]->isVisible() ? u'c'
                    : items(u"dotRing"_s)[i]->isVisible()    ? u'f'
                                                             : u'?';
        }
        EXPECT_EQ(dots, row.dots);
    }
}

TEST_F(Onboarding, TheDotsHaveTheirMeasuresAndGlows) {
    showWizardAt(Step::accessibility);
    for (QQuickItem* dot : items(u"stepDot"_s)) {
        EXPECT_EQ(dot->size(), QSizeF(24, 24));
    }
    QQuickItem* const past = items(u"pastFill"_s)[0];
    expectColor(colorOf(past), accent);
    EXPECT_EQ(past->property("lineWidth").toDouble(), 0);
    expectColor(colorOf(past, "shadowColor"), withAlpha(accent, 0.5));
    EXPECT_EQ(past->property("shadowRadius").toDouble(), 6);
    QQuickItem* const mark = items(u"pastSymbol"_s)[0];
    EXPECT_EQ(mark->property("name").toString(), u"checkmark"_s);
    EXPECT_EQ(mark->property("size").toDouble(), 11);
    expectColor(colorOf(mark), Qt::white);
    QQuickItem* const fill = items(u"currentFill"_s)[1];
    expectColor(colorOf(fill), withAlpha(accent, 0.2));
    expectColor(colorOf(fill, "shadowColor"), withAlpha(accent, 0.4));
    EXPECT_EQ(fill->property("shadowRadius").toDouble(), 6);
    QQuickItem* const ring = items(u"currentRing"_s)[1];
    expectColor(colorOf(ring), accent);
    EXPECT_EQ(ring->property("lineWidth").toDouble(), 1.5);
    QQuickItem* const future = items(u"dotRing"_s)[2];
    expectColor(colorOf(future), border);
    EXPECT_EQ(future->property("lineWidth").toDouble(), 1.5);
}

TEST_F(Onboarding, TheDotsAreDrawnThatWay) {
    showWizardAt(Step::accessibility);
    const auto middle = [this](int index) { return middleOf(items(u"stepDot"_s)[index]); };
    const QImage picture = grab();
    EXPECT_EQ(picture.pixelColor(middle(0) + QPoint(0, -8)), accent);
    EXPECT_GT(picture.pixelColor(middle(0) + QPoint(0, 14)).blue(), 30) << "its glow";
    EXPECT_NEAR(picture.pixelColor(middle(1)).blue(), 11 + 0.2 * 246, 12) << "a fill of a fifth";
    EXPECT_NEAR(picture.pixelColor(middle(1) + QPoint(11, 0)).blue(), accent.blue(), 40);
    EXPECT_LT(picture.pixelColor(middle(2)).blue(), 30) << "empty";
}

TEST_F(Onboarding, ThePrimaryButtonIsWhiteOnIndigoWithAShadow) {
    showWizardAt(Step::microphone);
    QQuickItem* const button = onPage(u"grantButton"_s);
    EXPECT_EQ(button->property("leftPadding").toDouble(), 28);
    EXPECT_EQ(button->property("topPadding").toDouble(), 11);
    EXPECT_EQ(button->property("font").value<QFont>().pixelSize(), 14);
    expectColor(colorOf(onPage(u"buttonText"_s)), Qt::white);
    expectColor(colorOf(onPage(u"buttonGround"_s)), indigo);
    EXPECT_EQ(onPage(u"buttonGround"_s)->property("radius").toDouble(), 8);
    QQuickItem* const shadow = onPage(u"buttonShadow"_s);
    expectColor(colorOf(shadow), withAlpha(indigo, 0.4));
    EXPECT_EQ(shadow->property("radius").toDouble(), 8);
    const QRectF frame = frameOf(button);
    EXPECT_EQ(color((frame.topLeft() + QPointF(14, 8)).toPoint()), indigo);
}

TEST_F(Onboarding, TheSecondaryButtonIsAFaintPaneWithABorder) {
    showWizardAt(Step::automation);
    QQuickItem* const button = onPage(u"automationSettingsButton"_s);
    EXPECT_EQ(button->property("leftPadding").toDouble(), 24);
    EXPECT_EQ(button->property("topPadding").toDouble(), 10);
    EXPECT_EQ(button->property("font").value<QFont>().pixelSize(), 14);
    QQuickItem* const ground = button->findChild<QQuickItem*>(u"buttonGround"_s);
    EXPECT_EQ(ground->property("radius").toDouble(), 8);
    const QColor fill = colorOf(ground);
    EXPECT_EQ(fill.name(QColor::HexRgb), u"#ffffff"_s);
    EXPECT_LE(fill.alphaF(), 0.1F);
    EXPECT_EQ(ground->property("border").value<QObject*>()->property("width").toInt(), 1);
    EXPECT_FALSE(button->findChild<QQuickItem*>(u"buttonShadow"_s)->isVisible());
}

TEST_F(Onboarding, TheWarningIsAnAmberBoxWithMarkdown) {
    showWizardAt(Step::accessibility);
    EXPECT_FALSE(item(u"warning"_s)->isVisible());
    advance(3s);
    advance(settled);
    ASSERT_TRUE(item(u"warning"_s)->isVisible());
    QQuickItem* const box = item(u"warningBox"_s);
    expectColor(colorOf(box), withAlpha(amber, 0.08));
    EXPECT_EQ(box->property("radius").toDouble(), 8);
    QObject* const edge = box->property("border").value<QObject*>();
    EXPECT_EQ(edge->property("width").toInt(), 1);
    expectColor(edge->property("color").value<QColor>(), withAlpha(amber, 0.25));
    QQuickItem* const words = item(u"warningText"_s);
    EXPECT_EQ(words->position(), QPointF(14, 10));
    EXPECT_EQ(words->height() + 20, box->height());
    EXPECT_EQ(words->property("text").toString(),
              u"**Toggle not working?** Remove Quorvin using the **−** button below the list, then "
              u"re-add it with **+** to refresh the permission."_s);
    EXPECT_EQ(words->property("textFormat").toInt(), 3) << "Text.MarkdownText";
    QQuickItem* const button = item(u"continueButton"_s);
    EXPECT_EQ(button->property("text").toString(), u"I've granted it — Continue"_s);
    EXPECT_EQ(button->property("font").value<QFont>().pixelSize(), 13);
    EXPECT_EQ(button->property("font").value<QFont>().weight(), QFont::Medium);
    expectColor(colorOf(button, "tint"), indigo);
    EXPECT_FALSE(accessible(words)->text(QAccessible::Name).contains(u'*'));
}

TEST_F(Onboarding, TheStatusTellsWhetherThePermissionIsGranted) {
    showWizardAt(Step::microphone);
    EXPECT_EQ(textOnPage(u"statusText"_s), u"Waiting for permission..."_s);
    EXPECT_TRUE(onPage(u"waitingSpinner"_s)->isVisible());
    EXPECT_FALSE(onPage(u"grantedSymbol"_s)->isVisible());
    audioHost.authorization = MicrophoneAuthorization::authorized;
    advance(1500ms);
    ASSERT_EQ(step(), Step::microphone);
    EXPECT_EQ(textOnPage(u"statusText"_s), u"Permission granted"_s);
    EXPECT_FALSE(onPage(u"waitingSpinner"_s)->isVisible());
    EXPECT_TRUE(onPage(u"grantedSymbol"_s)->isVisible());
    expectColor(colorOf(onPage(u"grantedSymbol"_s)), hexColor(u"22c55e"));
    expectColor(colorOf(onPage(u"statusText"_s)), hexColor(u"22c55e"));
}

TEST_F(Onboarding, FollowsTheTheme) {
    theme.setTheme(u"latte"_s);
    showWizardAt(Step::microphone);
    expectColor(colorOf(root()), hexColor(u"eff1f5"));
    expectColor(colorOf(onPage(u"title"_s)), hexColor(u"4c4f69"));
    expectColor(colorOf(onPage(u"description"_s)), hexColor(u"5c5f77"));
    expectColor(colorOf(onPage(u"statusText"_s)), hexColor(u"5c5f77"));
    theme.setTheme(u"synthwave"_s);
    advance(500ms);
    expectColor(colorOf(root()), hexColor(u"0d0015"));
    expectColor(colorOf(onPage(u"title"_s)), hexColor(u"f0e0ff"));
}
