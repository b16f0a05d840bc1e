#pragma once

#include "platform/KeyEvents.h"
#include "platform/Scheduler.h"
#include "platform/Workspace.h"

#include <QObject>
#include <QPointer>

#include <optional>

namespace quorvin {

/// Presses the keys that put the pasteboard's text into an application and submit it.
class KeystrokeInjector {
public:
    KeystrokeInjector() = delete;

    /// Raises the application, when `toPID` is one that runs, and presses Command+V and Return for
    /// whoever has the keyboard focus then. `settleTab` first gives a tab that was just selected
    /// time to be there.
    ///
    /// Main thread, which is free during the waits. When `sender`, which the others outlive, goes
    /// in one of them, the rest is left out. Nothing is reported: an event that can't be posted is
    /// left out, too, and whether the application understood is not known.
    static Task<> pasteAndSubmit(Scheduler& scheduler, Workspace& workspace, KeyEvents& keyEvents,
                                 QPointer<const QObject> sender, std::optional<ProcessID> toPID,
                                 bool settleTab);

private:
    static Task<> press(Scheduler& scheduler, KeyEvents& keyEvents, QPointer<const QObject> sender,
                        VirtualKey key, KeyModifiers modifiers);
};

} // namespace quorvin
