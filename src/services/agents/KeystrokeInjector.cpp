#include "services/agents/KeystrokeInjector.h"

using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto tabSettling = 120ms;
constexpr auto activation = 100ms;
constexpr auto keyHold = 20ms;
constexpr auto pasting = 160ms;

} // namespace

Task<> KeystrokeInjector::pasteAndSubmit(Scheduler& scheduler, Workspace& workspace,
                                         KeyEvents& keyEvents, QPointer<const QObject> sender,
                                         std::optional<ProcessID> toPID, bool settleTab) {
    if (settleTab) {
        co_await scheduler.sleep(tabSettling);
    }
    if (sender && toPID && workspace.application(*toPID)) {
        workspace.activate(*toPID);
        co_await scheduler.sleep(activation);
    }
    co_await press(scheduler, keyEvents, sender, VirtualKey::v, KeyModifiers::command);
    co_await scheduler.sleep(pasting);
    co_await press(scheduler, keyEvents, sender, VirtualKey::returnKey, KeyModifiers::none);
}

Task<> KeystrokeInjector::press(Scheduler& scheduler, KeyEvents& keyEvents,
                                QPointer<const QObject> sender, VirtualKey key,
                                KeyModifiers modifiers) {
    if (!sender) {
        co_return;
    }
    co_await keyEvents.post({key, KeyEvent::Direction::down, modifiers});
    co_await scheduler.sleep(keyHold);
    if (sender) { // or else the end of the key events has let the key go
        co_await keyEvents.post({key, KeyEvent::Direction::up, modifiers});
    }
}

} // namespace quorvin
