#pragma once

#include "platform/StatusItem.h"

#include <QString>

#include <functional>

namespace quorvin {

class AppDelegate;

/// The program's status item. Main thread only.
class StatusBarController {
public:
    explicit StatusBarController(StatusItem& statusItem) : m_statusItem(statusItem) {}

    /// Makes the item and its menu. `appDelegate` outlives it; `terminate` ends the program.
    void setup(AppDelegate& appDelegate, std::function<void()> terminate);
    void updateIcon(bool isRecording, bool isTranscribing);

private:
    StatusItem& m_statusItem;
};

/// The name of the symbol that stands for the program in a state.
[[nodiscard]] QString statusSymbol(bool isRecording, bool isTranscribing);

} // namespace quorvin
