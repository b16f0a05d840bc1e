#include "SettingsViewTest.h"

#include <QFile>
#include <QSysInfo>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class AgentsSection : public SettingsViewTest {
protected:
    [[nodiscard]] QString count(const QString& chip) {
        return itemIn(item(chip), u"count"_s)->property("text").toString();
    }
};

class PermissionsSection : public SettingsViewTest {
protected:
    [[nodiscard]] QString status(const QString& rowName) {
        return itemIn(item(rowName), u"permissionStatus"_s)->property("text").toString();
    }
    [[nodiscard]] QQuickItem* grant(const QString& rowName) {
        return itemIn(item(rowName), u"grantButton"_s);
    }
    void expectRow(const QString& rowName, const QString& symbol, const QString& title,
                   const QString& description) {
        EXPECT_EQ(itemIn(item(rowName), u"permissionSymbol"_s)->property("name"), symbol);
        EXPECT_EQ(itemIn(item(rowName), u"permissionTitle"_s)->property("text"), title);
        EXPECT_EQ(itemIn(item(rowName), u"permissionDescription"_s)->property("text"), description);
    }
};

using ShortcutsSection = SettingsViewTest;
using AboutSection = SettingsViewTest;

} // namespace

TEST_F(AgentsSection, HasItsRows) {
    open(Tab::agents);
    EXPECT_EQ(cards(), QStringList({u"Detected Sessions: Claude Code sessions, OpenCode sessions, "
                                    u"Refresh sessions"_s,
                                    u"Orchestrator: Orchestrator Prefix, Orchestrator Role"_s,
                                    u"Send Behavior: Append Mode, Session picker"_s,
                                    u"Image Attachments: Max images per send"_s}));
    EXPECT_EQ(descriptionOf(u"Refresh sessions"_s),
              u"Scan running terminals for active agent sessions"_s);
    EXPECT_EQ(descriptionOf(u"Orchestrator Prefix"_s),
              u"Prepend ORCHESTRATOR CONTEXT to every message sent to Claude/OpenCode"_s);
    EXPECT_EQ(descriptionOf(u"Orchestrator Role"_s),
              u"Identifies you as the master orchestrator directing subagents"_s);
    EXPECT_EQ(descriptionOf(u"Append Mode"_s),
              u"Join consecutive transcriptions instead of replacing draft"_s);
    EXPECT_EQ(descriptionOf(u"Session picker"_s),
              u"Shown automatically when multiple sessions are running"_s);
    EXPECT_EQ(textOf(u"roleText"_s), u"Claude Opus"_s);
    EXPECT_EQ(textOf(u"pickerText"_s), u"Enabled"_s);
    EXPECT_EQ(textOf(u"imagesText"_s), u"18"_s);
    EXPECT_EQ(textOf(u"refreshSessionsButton"_s), u"Refresh"_s);
}

TEST_F(AgentsSection, CountsTheSessionsOfAScan) {
    open(Tab::agents);
    EXPECT_EQ(colorOf(u"claudeCount"_s), QColor(u"#8b5cf6"_s));
    EXPECT_EQ(colorOf(u"opencodeCount"_s), QColor(u"#10b981"_s));
    EXPECT_EQ(count(u"claudeCount"_s), u"0"_s);
    EXPECT_EQ(count(u"opencodeCount"_s), u"0"_s);
    runAgent(u"claude"_s, 1001);
    runAgent(u"claude"_s, 1002);
    runAgent(u"opencode"_s, 1003);
    clickOn(u"refreshSessionsButton"_s);
    scheduler.advance(2s);
    EXPECT_EQ(count(u"claudeCount"_s), u"2"_s);
    EXPECT_EQ(count(u"opencodeCount"_s), u"1"_s);
}

TEST_F(AgentsSection, ItsTogglesAreSettings) {
    open(Tab::agents);
    clickOn(control(u"Orchestrator Prefix"_s, u"toggle"_s));
    EXPECT_FALSE(app().agentsIncluded());
    clickOn(control(u"Append Mode"_s, u"toggle"_s));
    EXPECT_FALSE(app().appendMode());
}

TEST_F(ShortcutsSection, HasItsRows) {
    open(Tab::shortcuts);
    const QList<std::pair<QString, QString>> shortcuts{
        {u"Toggle Compact Mode"_s, u"Ctrl + `"_s},  {u"Start Recording"_s, u"Click ring"_s},
        {u"Stop Recording"_s, u"⌥ Space"_s},        {u"Cancel Recording"_s, u"Esc"_s},
        {u"Send to Terminal"_s, u"⌘ →"_s},          {u"Delete Last Phrase"_s, u"← button"_s},
        {u"Load Previous Phrase"_s, u"↑ button"_s}, {u"Attach Image"_s, u"📎 button"_s},
    };
    EXPECT_EQ(cards(),
              QStringList({u"Global: Toggle Compact Mode, Start Recording, Stop Recording, Cancel "
                           u"Recording, Send to Terminal"_s,
                           u"Compact Mode Only: Delete Last Phrase, Load Previous Phrase, Attach "
                           u"Image"_s,
                           u"Notes: "_s}));
    for (const auto& [label, keys] : shortcuts) {
        EXPECT_EQ(accessible(control(label, u"keysPill"_s))->text(QAccessible::Name), keys);
        EXPECT_TRUE(keys.endsWith(control(label, u"shortcutKeys"_s)->property("text").toString()));
        const bool isClip = keys.startsWith(u"📎");
        EXPECT_EQ(control(label, u"keysSymbol"_s)->isVisible(), isClip);
    }
    const auto symbols = items(u"infoSymbol"_s);
    const auto texts = items(u"infoText"_s);
    const QList<std::pair<QString, QString>> notes{
        {u"info.circle"_s, u"Shortcuts cannot be customized in this version."_s},
        {u"keyboard"_s, u"Global shortcuts work even when the app is in the background."_s},
        {u"arrow.right.to.line"_s,
         u"⌘→ pastes the draft into the last focused terminal via Cmd+V → Enter."_s},
    };
    ASSERT_EQ(texts.size(), notes.size());
    for (qsizetype i = 0; i < notes.size(); ++i) {
        EXPECT_EQ(symbols[i]->property("name"), notes[i].first);
        EXPECT_EQ(texts[i]->property("text"), notes[i].second);
    }
}

TEST_F(PermissionsSection, HasItsRows) {
    open(Tab::permissions);
    EXPECT_EQ(cards(), QStringList({u"Required: "_s, u"Optional: "_s,
                                    u"Actions: Re-run Permission Wizard"_s}));
    expectRow(u"microphoneRow"_s, u"mic.fill"_s, u"Microphone"_s,
              u"Record and transcribe your voice"_s);
    expectRow(u"accessibilityRow"_s, u"keyboard"_s, u"Accessibility"_s,
              u"Type transcribed text into terminal apps"_s);
    expectRow(u"automationRow"_s, u"gearshape.2"_s, u"Automation"_s,
              u"Control terminal apps (iTerm, Terminal.app) for tab switching"_s);
    EXPECT_EQ(descriptionOf(u"Re-run Permission Wizard"_s),
              u"Start onboarding flow from scratch"_s);
    EXPECT_EQ(textOf(u"wizardButton"_s), u"Open Wizard"_s);
}

TEST_F(PermissionsSection, AsksAnewWhenItAppears) {
    open(Tab::general);
    ASSERT_TRUE(app().microphoneAuthorized());
    audioHost.authorization = MicrophoneAuthorization::denied;
    keyEvents.trusted = false;
    terminalAutomation.permission = false;
    selectSection(Tab::permissions);
    for (const QString& name : {u"microphoneRow"_s, u"accessibilityRow"_s, u"automationRow"_s}) {
        EXPECT_EQ(status(name), u"Denied"_s) << name.toStdString();
        EXPECT_TRUE(grant(name)->isVisible());
        EXPECT_EQ(grant(name)->property("text"), u"Grant"_s);
    }
    EXPECT_FALSE(app().microphoneAuthorized());
    EXPECT_FALSE(app().accessibilityAuthorized());
    EXPECT_FALSE(app().agentService().accessibilityGranted());
    EXPECT_FALSE(app().automationAuthorized());
    selectSection(Tab::general);
    audioHost.authorization = MicrophoneAuthorization::authorized;
    keyEvents.trusted = true;
    terminalAutomation.permission = true;
    selectSection(Tab::permissions);
    for (const QString& name : {u"microphoneRow"_s, u"accessibilityRow"_s, u"automationRow"_s}) {
        EXPECT_EQ(status(name), u"Granted"_s) << name.toStdString();
        EXPECT_FALSE(grant(name)->isVisible());
    }
    EXPECT_TRUE(app().agentService().accessibilityGranted());
}

TEST_F(PermissionsSection, LeadsToWhereTheyAreGranted) {
    audioHost.authorization = MicrophoneAuthorization::denied;
    keyEvents.trusted = false;
    terminalAutomation.permission = false;
    open(Tab::permissions);
    workspace.openedURLs.clear();
    clickOn(grant(u"microphoneRow"_s));
    clickOn(grant(u"accessibilityRow"_s));
    EXPECT_EQ(terminalAutomation.permissionRequests, 0);
    clickOn(grant(u"automationRow"_s));
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
    const QString pane = u"x-apple.systempreferences:com.apple.preference.security?"_s;
    EXPECT_EQ(workspace.openedURLs,
              (std::vector{pane + u"Privacy_Microphone"_s, pane + u"Privacy_Accessibility"_s,
                           pane + u"Privacy_Automation"_s}));
}

TEST_F(PermissionsSection, ReRunsTheWizard) {
    defaults.setBoolean(u"onboardingComplete"_s, true);
    open(Tab::permissions);
    ASSERT_FALSE(app().needsOnboarding());
    clickOn(u"wizardButton"_s);
    EXPECT_TRUE(app().needsOnboarding());
    EXPECT_FALSE(app().onboardingComplete());
}

TEST_F(AboutSection, TellsWhatRuns) {
    open(Tab::about);
    EXPECT_EQ(cards(), QStringList({u"App Info: Version, Platform, Whisper Engine"_s,
                                    u"Links: GitHub Repository, Release Notes"_s,
                                    u"Diagnostics: Send Diagnostic Paste, Clear Activity Log, "
                                    u"Clear Transcription History"_s}));
    EXPECT_EQ(textOf(u"versionText"_s), u"v1.2.3"_s);
    EXPECT_EQ(textOf(u"platformText"_s), QSysInfo::prettyProductName());
    EXPECT_EQ(textOf(u"engineText"_s), u"Loaded"_s);
    EXPECT_EQ(colorOf(u"engineText"_s), QColor(u"#22c55e"_s));
    app().setEngineTier(u"medium"_s);
    QFile model(bundle.home + u"/models/ggml-medium.bin"_s);
    ASSERT_TRUE(model.open(QIODevice::WriteOnly));
    app().applyEngineTier(); // its load waits in the queue
    EXPECT_EQ(textOf(u"engineText"_s), u"Not loaded"_s);
    EXPECT_EQ(colorOf(u"engineText"_s), QColor(u"#ef4444"_s));
    EXPECT_EQ(descriptionOf(u"Send Diagnostic Paste"_s),
              u"Sends TEST_QUORVIN to focused terminal"_s);
}

TEST_F(AboutSection, ShowsANewerVersionInOrange) {
    open(Tab::about);
    network.answer(0, R"({"version": "v2.0.0"})");
    EXPECT_EQ(textOf(u"versionText"_s), u"v1.2.3 → v2.0.0"_s);
    EXPECT_EQ(colorOf(u"versionText"_s), QColor(u"#ff9f0a"_s));
}

TEST_F(AboutSection, LeadsToThePagesOfTheProject) {
    open(Tab::about);
    EXPECT_EQ(textOf(u"repositoryButton"_s), u"Open"_s);
    EXPECT_EQ(textOf(u"releasesButton"_s), u"Releases"_s);
    workspace.openedURLs.clear();
    clickOn(u"repositoryButton"_s);
    clickOn(u"releasesButton"_s);
    ASSERT_EQ(workspace.openedURLs.size(), 2U);
    EXPECT_TRUE(workspace.openedURLs[0].startsWith(u"https://"_s));
    EXPECT_TRUE(workspace.openedURLs[1].startsWith(u"https://"_s));
    EXPECT_NE(workspace.openedURLs[0], workspace.openedURLs[1]);
}

TEST_F(AboutSection, RunsTheDiagnosticAndClears) {
    open(Tab::about);
    dictate(u"Fix the login."_s);
    app().loadHistory();
    ASSERT_FALSE(app().historyEntries().isEmpty());
    EXPECT_EQ(textOf(u"diagnosticButton"_s), u"Run Test"_s);
    clickOn(u"diagnosticButton"_s);
    scheduler.runPosted();
    EXPECT_TRUE(feed().contains(u"=== Send Diagnostic ==="_s));
    EXPECT_EQ(textOf(u"clearLogButton"_s), u"Clear"_s);
    clickOn(u"clearLogButton"_s);
    EXPECT_TRUE(app().activityLog().isEmpty());
    EXPECT_EQ(textOf(u"clearHistoryButton"_s), u"Clear"_s);
    clickOn(u"clearHistoryButton"_s);
    EXPECT_TRUE(app().historyEntries().isEmpty());
    EXPECT_TRUE(history().isEmpty());
}
