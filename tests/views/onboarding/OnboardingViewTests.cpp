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

QColor withAlpha(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

void expectColor(const QColor& actual, const QColor& expected) {
    EXPECT_NEAR(actual.redF(), expected.redF(), 0.003);
    EXPECT_NEAR(actual.greenF(), expected.greenF(), 0.003);
    EXPECT_NEAR(actual.blueF(), expected.blueF(), 0.003);
    EXPECT_NEAR(actual.alphaF(), expected.alphaF(), 0.003);
}

} // namespace

// --- Looks ---------------------------------------------------------------------------------------

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

TEST_F(Onboarding, OnlyOneStepShows) {
    for (const Step shown : {Step::microphone, Step::accessibility, Step::automation, Step::done}) {
        showWizardAt(shown);
        for (const QString& name :
             {u"microphonePage"_s, u"accessibilityPage"_s, u"automationPage"_s, u"donePage"_s}) {
            EXPECT_EQ(item(name)->isVisible(), name == pageName()) << name.toStdString();
        }
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

TEST_F(Onboarding, GrantAccessGoesWithTheGrantAndNothingElseMoves) {
    showWizardAt(Step::microphone);
    const QRectF status = frameOf(onPage(u"status"_s));
    audioHost.authorization = MicrophoneAuthorization::authorized;
    advance(1500ms + 400ms);
    ASSERT_EQ(step(), Step::microphone);
    EXPECT_FALSE(onPage(u"grantButton"_s)->isEnabled());
    EXPECT_EQ(onPage(u"grantButton"_s)->opacity(), 0);
    EXPECT_EQ(frameOf(onPage(u"status"_s)).y(), status.y());
    clickOnPage(u"grantButton"_s);
    EXPECT_FALSE(wizard().isMicRequestPending());
}

TEST_F(Onboarding, AHintTellsWhatToDoHereWhileAStepWaits) {
    const PermissionHints& hints = platform().permissionHints;
    const QList<QPair<Step, QString>> rows{{Step::microphone, hints.microphone},
                                           {Step::accessibility, hints.accessibility},
                                           {Step::automation, hints.automation}};
    for (const auto& [wanted, hint] : rows) {
        showWizardAt(wanted);
        EXPECT_EQ(textOnPage(u"hint"_s), hint);
        EXPECT_EQ(onPage(u"hint"_s)->opacity(), 1);
    }
    terminalAutomation.permission = true;
    advance(2s + settled);
    EXPECT_EQ(onPage(u"hint"_s)->opacity(), 0);
    showWizardAt(Step::done);
    EXPECT_FALSE(onPage(u"hint"_s)->isVisible());
}

TEST_F(Onboarding, OneStepFadesIntoTheNextInAFifthOfASecond) {
    showWizardAt(Step::accessibility);
    wizard().continueWithoutTest();
    advance(16ms); // the frame that starts it
    advance(48ms);
    const double early = item(u"automationPage"_s)->opacity();
    EXPECT_GT(early, 0);
    EXPECT_LT(early, 0.25) << "it eases in";
    EXPECT_NEAR(item(u"accessibilityPage"_s)->opacity(), 1 - early, 1e-6);
    advance(144ms);
    EXPECT_EQ(item(u"automationPage"_s)->opacity(), 1);
    EXPECT_FALSE(item(u"accessibilityPage"_s)->isVisible());
}

TEST_F(Onboarding, TheStepThatItBeginsAtIsThereAtOnce) {
    audioHost.authorization = MicrophoneAuthorization::authorized;
    start();
    show(u"OnboardingView { width: 580; height: 850 }"_s, appState());
    EXPECT_EQ(item(u"accessibilityPage"_s)->opacity(), 1);
    EXPECT_FALSE(item(u"microphonePage"_s)->isVisible());
}

TEST_F(Onboarding, TheBadgeStandsStillFromStepToStep) {
    showWizardAt(Step::microphone);
    const QRectF place = frameOf(onPage(u"badge"_s));
    for (const Step shown : {Step::accessibility, Step::automation, Step::done}) {
        showWizardAt(shown);
        EXPECT_EQ(frameOf(onPage(u"badge"_s)), place);
    }
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

TEST_F(Onboarding, EverythingFitsAtEverySize) {
    for (const QSize size : {QSize(580, 850), QSize(1000, 1000), QSize(580, 700)}) {
        for (const Step shown :
             {Step::microphone, Step::accessibility, Step::automation, Step::done}) {
            showWizardAt(shown, size);
            advance(4s);
            ASSERT_EQ(step(), shown);
            const QRectF area(QPointF(0, 0), size);
            QList<QQuickItem*> stack{onPage(u"badge"_s), onPage(u"title"_s),
                                     onPage(u"description"_s), onPage(u"buttons"_s)};
            if (shown != Step::done) {
                stack << onPage(u"status"_s) << onPage(u"hint"_s);
            }
            if (shown == Step::accessibility) {
                stack << item(u"warningBox"_s) << item(u"continueButton"_s);
            }
            if (shown != Step::done) {
                stack << onPage(u"skipButton"_s);
            }
            double bottom = frameOf(item(u"stepIndicator"_s)).bottom();
            for (QQuickItem* part : stack) {
                const QRectF frame = frameOf(part);
                EXPECT_GE(frame.top(), bottom) << part->objectName().toStdString();
                EXPECT_TRUE(area.contains(frame)) << part->objectName().toStdString();
                bottom = frame.bottom();
            }
        }
    }
}

TEST_F(Onboarding, InALowWindowTheFocusScrollsItIntoView) {
    showWizardAt(Step::accessibility, {580, 420});
    advance(4s);
    key(Qt::Key_Backtab);
    ASSERT_TRUE(onPage(u"skipButton"_s)->hasActiveFocus());
    EXPECT_TRUE(QRectF(0, 0, 580, 420).contains(frameOf(onPage(u"skipButton"_s))));
    key(Qt::Key_Tab);
    EXPECT_TRUE(QRectF(0, 0, 580, 420).contains(frameOf(onPage(u"accessibilitySettingsButton"_s))));
}

TEST_F(Onboarding, AnIdleStepSpinsOnlyWhereItWaits) {
    showWizardAt(Step::microphone);
    const auto runningSpinners = [this] {
        int running = 0;
        for (QQuickItem* spinner : items(u"waitingSpinner"_s)) {
            running +=
                spinner->findChild<QObject*>(u"spinnerTimer"_s)->property("running").toBool();
        }
        return running;
    };
    EXPECT_EQ(runningSpinners(), 1);
    window().hide();
    EXPECT_EQ(runningSpinners(), 0);
    showWizardAt(Step::done);
    EXPECT_EQ(runningSpinners(), 0);
}

// --- Deeds ---------------------------------------------------------------------------------------

TEST_F(Onboarding, GrantAccessAsksOnceHoweverOftenItIsClicked) {
    showWizardAt(Step::microphone);
    clickOnPage(u"grantButton"_s);
    clickOnPage(u"grantButton"_s);
    advance(100ms);
    EXPECT_EQ(audioHost.accessRequests, 1);
}

TEST_F(Onboarding, TheButtonsOfTheOtherStepsDoWhatTheySay) {
    showWizardAt(Step::accessibility);
    clickOnPage(u"accessibilitySettingsButton"_s);
    EXPECT_EQ(workspace.openedURLs.size(), 1U);
    EXPECT_TRUE(workspace.openedURLs.back().endsWith(u"Privacy_Accessibility"));
    advance(3s + settled);
    clickOnPage(u"continueButton"_s);
    ASSERT_EQ(step(), Step::automation);
    advance(settled);
    clickOnPage(u"allowButton"_s);
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
    clickOnPage(u"automationSettingsButton"_s);
    EXPECT_TRUE(workspace.openedURLs.back().endsWith(u"Privacy_Automation"));
    terminalAutomation.permission = true;
    advance(4s);
    ASSERT_EQ(step(), Step::done);
    EXPECT_TRUE(app().needsOnboarding());
    clickOnPage(u"getStartedButton"_s);
    EXPECT_FALSE(app().needsOnboarding());
    EXPECT_TRUE(app().onboardingComplete());
}

TEST_F(Onboarding, SkipForNowEndsTheWizardFromEachStep) {
    for (const Step skipped : {Step::microphone, Step::accessibility, Step::automation}) {
        defaults.setBoolean(u"onboardingComplete"_s, false);
        showWizardAt(skipped);
        ASSERT_EQ(step(), skipped);
        EXPECT_EQ(textOnPage(u"skipButton"_s), u"Skip for now"_s);
        clickOnPage(u"skipButton"_s);
        EXPECT_FALSE(app().needsOnboarding());
        EXPECT_EQ(step(), skipped);
    }
}

TEST_F(Onboarding, ReturnPressesTheFirstButtonOfEachStep) {
    showWizardAt(Step::accessibility);
    key(Qt::Key_Return);
    EXPECT_EQ(workspace.openedURLs.size(), 1U);
    keyEvents.trusted = true;
    advance(1s + 800ms + settled);
    ASSERT_EQ(step(), Step::automation);
    key(Qt::Key_Space);
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
    terminalAutomation.permission = true;
    advance(2s + 800ms + settled);
    ASSERT_EQ(step(), Step::done);
    key(Qt::Key_Enter);
    EXPECT_FALSE(app().needsOnboarding());
}

TEST_F(Onboarding, TabGoesThroughTheButtonsOfTheStepAlone) {
    showWizardAt(Step::automation);
    for (const QString& name : {u"automationSettingsButton"_s, u"skipButton"_s, u"allowButton"_s}) {
        key(Qt::Key_Tab);
        QQuickItem* const button = onPage(name);
        EXPECT_TRUE(button->hasActiveFocus()) << name.toStdString();
        EXPECT_TRUE(button->findChild<QQuickItem*>(u"focusRing"_s)->isVisible());
    }
    terminalAutomation.permission = true;
    advance(2s + 800ms + settled);
    EXPECT_TRUE(onPage(u"getStartedButton"_s)->property("visualFocus").toBool())
        << "who uses the keys still sees where they go";
}

TEST_F(Onboarding, IsReadAndOperatedByAssistants) {
    showWizardAt(Step::automation);
    QAccessibleInterface* const button = accessible(onPage(u"allowButton"_s));
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), u"Allow Prompts"_s);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
    EXPECT_EQ(accessible(onPage(u"title"_s))->text(QAccessible::Name), u"Automation Access"_s);
    EXPECT_EQ(accessible(onPage(u"statusText"_s))->text(QAccessible::Name),
              u"Waiting for permission..."_s);
    accessible(onPage(u"skipButton"_s))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(app().needsOnboarding());
}
