#include "services/agents/AgentError.h"
#include "unit/services/agents/DeliveryFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class AgentServiceDeliveryTest : public DeliveryTest {
protected:
    AgentServiceDeliveryTest() {
        terminalAutomation.onFocus = [this] {
            keyEvents.note(u"focus, pasteboard: "_s + pasteboard.contents.value_or(u"nothing"_s));
        };
    }

    /// Delivers, lets a second pass and returns the error, if there was one.
    std::optional<AgentError::Case> send(const QString& text, const AgentSessionInfo& to) {
        return deliver([&] { return service->sendText(text, to); });
    }
    std::optional<AgentError::Case> send(const QString& text, const QList<QUrl>& images,
                                         const AgentSessionInfo& to) {
        return deliver([&] { return service->sendTextAndImages(text, images, to); });
    }

    const QList<QUrl> image{QUrl::fromLocalFile(u"/tmp/a b.png"_s)};
    const QString keysAfterActivation = u"220 Cmd+V down\n"
                                        "240 Cmd+V up\n"
                                        "400 Return down\n"
                                        "420 Return up"_s;
    const QString keysWithoutActivation = u"120 Cmd+V down\n"
                                          "140 Cmd+V up\n"
                                          "300 Return down\n"
                                          "320 Return up"_s;

private:
    template <typename Send>
    std::optional<AgentError::Case> deliver(Send start) {
        std::optional<AgentError::Case> error;
        bool isDone = false;
        const auto run = [&]() -> Task<> {
            try {
                co_await start();
            } catch (const AgentError& caught) {
                error = caught.errorCase();
            }
            isDone = true;
        };
        const Task<> running = run();
        scheduler.advance(1s);
        EXPECT_TRUE(isDone);
        return error;
    }
};

} // namespace

TEST_F(AgentServiceDeliveryTest, TextGoesOnThePasteboardBeforeTheTabIsFocused) {
    runTerminal(60);
    pasteboard.contents = u"what the user had copied"_s;
    EXPECT_EQ(send(u"fix this"_s, session()), std::nullopt);
    EXPECT_EQ(keyEvents.keystrokes(), u"0 focus, pasteboard: fix this\n"
                                      "120 activate 60\n"_s +
                                          keysAfterActivation);
    EXPECT_EQ(terminalAutomation.focused, QStringList{u"com.apple.Terminal /dev/ttys003"_s});
    EXPECT_EQ(pasteboard.contents, u"fix this"_s);
    EXPECT_TRUE(service->accessibilityGranted());
}

TEST_F(AgentServiceDeliveryTest, WithImagesTheTabIsFocusedBeforeThePasteboardIsTouched) {
    runTerminal(60);
    pasteboard.contents = u"what the user had copied"_s;
    EXPECT_EQ(send(u"fix this"_s, image, session()), std::nullopt);
    EXPECT_EQ(keyEvents.keystrokes(), u"0 focus, pasteboard: what the user had copied\n"
                                      "120 activate 60\n"_s +
                                          keysAfterActivation);
}

TEST_F(AgentServiceDeliveryTest, AfterADeliveryThePasteboardHoldsTheWholeMessage) {
    const QString header = QString(49, u'-') + u"\n### Request\n"_s + QString(49, u'-') + u"\n"_s;
    EXPECT_EQ(send(u"fix this"_s, image, session(AgentType::opencode)), std::nullopt);
    EXPECT_EQ(pasteboard.contents,
              header + u"fix this\n\n### Images Attached:\n\"/tmp/a b.png\"\n"_s);
}

TEST_F(AgentServiceDeliveryTest, TextForOpenCodeWithoutImagesIsSentUnchanged) {
    EXPECT_EQ(send(u"fix this"_s, session(AgentType::opencode)), std::nullopt);
    EXPECT_EQ(pasteboard.contents, u"fix this"_s);
}

TEST_F(AgentServiceDeliveryTest, WithoutPermissionNothingHappensToThePasteboard) {
    runTerminal(60);
    EXPECT_EQ(send(u"first"_s, session()), std::nullopt);
    const QString before = keyEvents.keystrokes();
    keyEvents.trusted = false;
    EXPECT_EQ(send(u"second"_s, session()), AgentError::Case::accessibilityRequired);
    EXPECT_EQ(send(u"second"_s, image, session()), AgentError::Case::accessibilityRequired);
    EXPECT_EQ(pasteboard.contents, u"first"_s);
    EXPECT_EQ(keyEvents.keystrokes(), before);
    EXPECT_FALSE(service->accessibilityGranted());
}

TEST_F(AgentServiceDeliveryTest, TextWithoutARunningTerminalIsTypedWithoutFocusing) {
    EXPECT_EQ(send(u"fix this"_s, session()), std::nullopt);
    EXPECT_EQ(keyEvents.keystrokes(), keysWithoutActivation);
}

TEST_F(AgentServiceDeliveryTest, ImagesFocusTheTabEvenWithoutARunningTerminal) {
    EXPECT_EQ(send(u"fix this"_s, image, session()), std::nullopt);
    EXPECT_EQ(keyEvents.keystrokes(), u"0 focus, pasteboard: nothing\n"_s + keysWithoutActivation);
}

TEST_F(AgentServiceDeliveryTest, ASessionWithoutATerminalGoesToWhateverIsInFront) {
    runTerminal(60);
    AgentSessionInfo unbound = session();
    unbound.terminalBundleID.reset();
    EXPECT_EQ(send(u"fix this"_s, unbound), std::nullopt);
    EXPECT_EQ(keyEvents.keystrokes(), keysWithoutActivation);
    EXPECT_TRUE(terminalAutomation.focused.isEmpty());
}

TEST_F(AgentServiceDeliveryTest, AStaleSessionIsSentAllTheSame) {
    runTerminal(60);
    terminalAutomation.onFocus = nullptr;
    terminalAutomation.answer = {TabFocus::Result::notFound, std::nullopt};
    EXPECT_EQ(send(u"fix this"_s, session()), std::nullopt);
    EXPECT_EQ(keyEvents.keystrokes(), u"120 activate 60\n"_s + keysAfterActivation);
}

TEST_F(AgentServiceDeliveryTest, OfSeveralTerminalsOfOneKindTheFirstIsActivated) {
    runTerminal(60);
    runTerminal(61);
    terminalAutomation.onFocus = nullptr;
    EXPECT_EQ(send(u"fix this"_s, session()), std::nullopt);
    EXPECT_EQ(keyEvents.keystrokes(), u"120 activate 60\n"_s + keysAfterActivation);
}

TEST_F(AgentServiceDeliveryTest, TheTerminalThatShowsTheTabIsActivatedWhenItIsKnown) {
    runTerminal(60);
    runTerminal(61);
    terminalAutomation.onFocus = nullptr;
    terminalAutomation.answer = {TabFocus::Result::found, 61};
    EXPECT_EQ(send(u"fix this"_s, session()), std::nullopt);
    EXPECT_EQ(keyEvents.keystrokes(), u"120 activate 61\n"_s + keysAfterActivation);
    EXPECT_EQ(send(u"fix this"_s, image, session()), std::nullopt);
    EXPECT_TRUE(keyEvents.keystrokes().contains(u"1120 activate 61"_s));
}

TEST_F(AgentServiceDeliveryTest, ASessionWithAnEmptyTtyIsNotFocused) {
    runTerminal(60);
    AgentSessionInfo withoutTty = session();
    withoutTty.tty = u""_s;
    EXPECT_EQ(send(u"fix this"_s, withoutTty), std::nullopt);
    withoutTty.tty.reset();
    EXPECT_EQ(send(u"fix this"_s, image, withoutTty), std::nullopt);
    EXPECT_TRUE(terminalAutomation.focused.isEmpty());
    EXPECT_TRUE(keyEvents.keystrokes().startsWith(u"120 activate 60\n"_s + keysAfterActivation));
}

TEST_F(AgentServiceDeliveryTest, OverlappingDeliveriesShareOnePasteboard) {
    const Task<> first = service->sendText(u"first"_s, session());
    scheduler.advance(50ms);
    const Task<> second = service->sendText(u"second"_s, session());
    EXPECT_EQ(pasteboard.contents, u"second"_s);
    scheduler.advance(1s);
    EXPECT_EQ(keyEvents.keystrokes(), u"120 Cmd+V down\n"
                                      "140 Cmd+V up\n"
                                      "170 Cmd+V down\n"
                                      "190 Cmd+V up\n"
                                      "300 Return down\n"
                                      "320 Return up\n"
                                      "350 Return down\n"
                                      "370 Return up"_s);
}

TEST_F(AgentServiceDeliveryTest, TheServiceMayGoWhileATabIsFocused) {
    runTerminal(60);
    terminalAutomation.onFocus = [this] { service.reset(); };
    const Task<> delivery = service->sendText(u"fix this"_s, session());
    scheduler.advance(1s);
    EXPECT_EQ(keyEvents.keystrokes(), u""_s);
}

TEST_F(AgentServiceDeliveryTest, ThePermissionToAutomateIsAskedForAndNotKept) {
    std::optional<bool> granted;
    const auto check = [&]() -> Task<> { granted = co_await service->checkAutomationPermission(); };
    check();
    EXPECT_EQ(granted, true);
    terminalAutomation.permission = false;
    check();
    EXPECT_EQ(granted, false);
    EXPECT_FALSE(service->automationGranted());
    service->requestAutomationPermissions();
    EXPECT_EQ(terminalAutomation.permissionRequests, 1);
}

TEST_F(AgentServiceDeliveryTest, TheSettingsPagesAreOpenedByURL) {
    service->openAccessibilitySettings();
    service->openAutomationSettings();
    EXPECT_EQ(
        workspace.openedURLs,
        (QStringList{
            u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_s,
            u"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"_s}));
}
