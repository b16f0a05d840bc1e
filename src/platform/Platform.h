#pragma once

#include "platform/PermissionHints.h"
#include "platform/ProcessTable.h"

#include <functional>

namespace quorvin {

class ApplicationBundle;
class AudioHost;
class HttpClient;
class KeyEvents;
class KeyMonitor;
class Pasteboard;
class ProcessRunner;
class Scheduler;
class SoundPlayers;
class StatusItem;
class TerminalAutomation;
class TextSelections;
class UpdateInstaller;
class UserDefaults;
class UserNotifications;
class WindowSystem;
class Workspace;

/// What the program needs of a system. The members outlive everything that is given them.
struct Platform {
    Scheduler& scheduler;
    ApplicationBundle& applicationBundle;
    UserDefaults& userDefaults;
    AudioHost& audioHost;
    ProcessRunner& processRunner;
    Workspace& workspace;
    WindowSystem& windowSystem;
    UserNotifications& userNotifications;
    SoundPlayers& soundPlayers;
    Pasteboard& pasteboard;
    TextSelections& textSelections;
    KeyEvents& keyEvents;
    KeyMonitor& keyMonitor;
    StatusItem& statusItem;
    TerminalAutomation& terminalAutomation;
    HttpClient& httpClient;
    UpdateInstaller& updateInstaller;
    ProcessTableFactory makeProcessTable;
    /// Runs `work` once on another thread.
    std::function<void(std::function<void()> work)> runInBackground;
    /// Ends the program in order. Main thread only.
    std::function<void()> terminate;
    PermissionHints permissionHints = {};
};

} // namespace quorvin
