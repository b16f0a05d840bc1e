#pragma once

#include "platform/AudioHost.h"
#include "platform/linux/pulse/PulseMainloop.h"
#include "platform/linux/pulse/PulseSources.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/subscribe.h>

namespace quorvin {

/// The program's one connection with the sound server, which keeps a list of its sources current.
/// It mends itself: when the server is gone it tries again after 1, 2, 4 and so on up to 30
/// seconds, and whenever somebody asks for it.
///
/// Everything but the mainloop is used under its lock.
class PulseConnection {
public:
    PulseConnection();
    ~PulseConnection();
    PulseConnection(const PulseConnection&) = delete;
    PulseConnection& operator=(const PulseConnection&) = delete;

    [[nodiscard]] PulseMainloop& mainloop() { return m_mainloop; }

    /// Connects if need be, and waits for that and for a list of sources that is on its way: until
    /// `deadline`, and for nothing longer than a second after it was asked for, so that a server
    /// which doesn't answer is waited for once. Returns whether the server is there. Main thread.
    [[nodiscard]] bool
    connect(PulseMainloop::Clock::time_point deadline = PulseMainloop::Clock::time_point::max());

    /// Connects if need be, and calls `answer` with the outcome on the capture thread, or at once
    /// when it is known. The destructor answers what is still waiting with no.
    void connectThen(std::function<void(bool connected)> answer);

    /// Asks the server for its sources anew. It tells of changes itself, but of the loss of a
    /// stream before that of the source.
    void refresh();

    /// Why there is no connection.
    [[nodiscard]] AudioHostError error() const;

    /// The present one, or the last one; null before the first.
    [[nodiscard]] pa_context* context() const { return m_context; }
    /// Empty while not connected.
    [[nodiscard]] const std::vector<PulseSource>& sources() const { return m_sources; }
    [[nodiscard]] const std::string& defaultSourceName() const { return m_defaultSourceName; }

private:
    /// `connecting` lasts until the list of sources is there.
    enum class State { down, connecting, connected };

    void openContext();
    void dropContext();
    void connectIfDown();
    void contextChanged();
    void contextLost();
    void settle();
    void addSource(const pa_source_info& source);
    void sourcesComplete();

    PulseMainloop m_mainloop;
    State m_state = State::down;
    pa_context* m_context = nullptr;
    int m_errorCode = 0;
    PulseMainloop::Clock::time_point m_patienceEnd;
    PulseMainloop::Clock::duration m_retryDelay{};
    std::optional<PulseMainloop::Timer> m_retry;
    std::vector<std::function<void(bool)>> m_answers;

    std::vector<PulseSource> m_sources;
    std::string m_defaultSourceName;
    std::vector<PulseSource> m_incomingSources;
    bool m_refreshing = false;
    bool m_refreshAgain = false;
};

} // namespace quorvin
