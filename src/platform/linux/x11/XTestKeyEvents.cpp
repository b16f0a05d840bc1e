#include "platform/linux/x11/XTestKeyEvents.h"

#include "platform/linux/x11/XTestKeyboard.h"

using namespace std::chrono_literals;

namespace quorvin {

namespace {

constexpr auto patience = 400ms;
constexpr auto pollPeriod = 5ms;

} // namespace

XTestKeyEvents::XTestKeyEvents(Scheduler& scheduler, XcbConnection& connection)
    : m_scheduler(scheduler), m_keyboard(std::make_shared<XTestKeyboard>(connection)) {}

XTestKeyEvents::~XTestKeyEvents() {
    m_keyboard->close();
}

bool XTestKeyEvents::isTrusted() {
    return m_keyboard->isUsable();
}

Task<KeyEvents::Result> XTestKeyEvents::post(KeyEvent event) {
    return postWhenPossible(m_scheduler, m_keyboard, event, std::nullopt);
}

Task<KeyEvents::Result> XTestKeyEvents::post(KeyEvent event, ProcessID process) {
    return postWhenPossible(m_scheduler, m_keyboard, event, process);
}

Task<KeyEvents::Result> XTestKeyEvents::postWhenPossible(Scheduler& scheduler,
                                                         std::shared_ptr<XTestKeyboard> keyboard,
                                                         KeyEvent event,
                                                         std::optional<ProcessID> process) {
    if (event.direction == KeyEvent::Direction::down) {
        const auto isTooEarly = [&keyboard, &process] {
            return keyboard->isUserHoldingModifier() ||
                   (!process && keyboard->isActivationUnderWay());
        };
        const auto bound = scheduler.monotonicTime() + patience;
        while (keyboard->isUsable() && isTooEarly() && scheduler.monotonicTime() < bound) {
            co_await scheduler.sleep(pollPeriod);
        }
    }
    if (!keyboard->isUsable()) { // its display may have gone meanwhile
        co_return Result::notPossibleHere;
    }
    if (event.direction == KeyEvent::Direction::up) {
        co_return keyboard->release(event.key);
    }
    keyboard->stopExpectingActivation();
    co_return keyboard->press(event, process);
}

} // namespace quorvin
