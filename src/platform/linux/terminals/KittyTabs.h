#pragma once

#include "platform/Scheduler.h"
#include "platform/linux/terminals/TabControl.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QObject>

namespace quorvin {

/// kitty by its remote control, where the user has switched that on and given it a socket. It is
/// spoken to in its published protocol, since its own client program takes a third of a second for
/// each request.
class KittyTabs final : public TabControl {
public:
    explicit KittyTabs(Scheduler& scheduler) : m_scheduler(scheduler) {}

    [[nodiscard]] Task<Answer> show(TerminalSession session,
                                    const TerminalProcesses& processes) override;

private:
    /// What kitty answers to one command; absent when it refuses, isn't there, or has not answered
    /// in time. Throws AutomationEnded.
    [[nodiscard]] Task<std::optional<QJsonValue>> request(QByteArray socket, QString command,
                                                          QJsonObject payload);

    Scheduler& m_scheduler;
    QObject m_sockets; // owns those in use
};

} // namespace quorvin
