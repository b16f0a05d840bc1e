#pragma once

#include "platform/KeyEvents.h"
#include "platform/Scheduler.h"
#include "platform/linux/x11/XcbConnection.h"

#include <memory>

namespace quorvin {

class XTestKeyboard;

/// Synthetic keys on an X11 desktop.
///
/// The paste chord is chosen by the class of the window that gets it (`pasteChord`), and each
/// symbol is looked up in the layout of that moment.
///
/// A modifier that the user still holds, mostly from a hot key, would change what is posted. A
/// key-down therefore waits until all are released. After 400 ms it is posted all the same: the
/// held keys are let go for its time, and those that are physically down then are pressed again
/// with the key-up. In the same way, and within the same bound, a key-down waits for the window
/// that this program has asked to be activated: on a busy machine that takes longer than anyone
/// expects, and the text would go to the wrong window. Caps Lock and Num Lock stay as they are;
/// they change neither chord.
class XTestKeyEvents final : public KeyEvents {
public:
    XTestKeyEvents(Scheduler& scheduler, XcbConnection& connection);
    ~XTestKeyEvents() override;

    [[nodiscard]] bool isTrusted() override;
    [[nodiscard]] Task<Result> post(KeyEvent event) override;
    /// Gives the application's highest window the keyboard focus from the key-down to the key-up,
    /// because terminals refuse the keys that programs send each other directly.
    [[nodiscard]] Task<Result> post(KeyEvent event, ProcessID process) override;

private:
    [[nodiscard]] static Task<Result> postWhenPossible(Scheduler& scheduler,
                                                       std::shared_ptr<XTestKeyboard> keyboard,
                                                       KeyEvent event,
                                                       std::optional<ProcessID> process);

    Scheduler& m_scheduler;
    /// Shared with the posts that wait, which may outlive this.
    std::shared_ptr<XTestKeyboard> m_keyboard;
};

} // namespace quorvin
