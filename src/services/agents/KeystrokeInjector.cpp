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
                                         KeyEvents& keyEvents, std::optional<ProcessID> toPID,
                                         bool settleTab) {
    using Direction = KeyEvent::Direction;
    if (settleTab) {
        co_await scheduler.sleep(tabSettling);
    }
    if (toPID && workspace.application(*toPID)) {
        workspace.activate(*toPID);
        co_await scheduler.sleep(activation);
    }
    co_await keyEvents.post({VirtualKey::v, Direction::down, KeyModifiers::command});
    co_await scheduler.sleep(keyHold);
    co_await keyEvents.post({VirtualKey::v, Direction::up, KeyModifiers::command});
    co_await scheduler.sleep(pasting);
    co_await keyEvents.post({VirtualKey::returnKey, Direction::down, KeyModifiers::none});
    co_await scheduler.sleep(keyHold);
    co_await keyEvents.post({VirtualKey::returnKey, Direction::up, KeyModifiers::none});
}

} // namespace quorvin
