#pragma once

#include "platform/KeyEvents.h"
#include "platform/Scheduler.h"

#include <QStringList>

#include <chrono>

namespace quorvin::testing {

/// A keyboard that writes down what is posted, each event in a line like "220 Cmd+V down" or, when
/// it goes to one process, "220 Cmd+V down -> 4711". The number is the time in milliseconds since
/// the fake was made, so that a whole sequence is compared as one text.
class FakeKeyEvents final : public KeyEvents {
public:
    explicit FakeKeyEvents(Scheduler& scheduler)
        : m_scheduler(scheduler), m_start(scheduler.monotonicTime()) {}

    [[nodiscard]] bool isTrusted() override { return trusted; }
    [[nodiscard]] bool requestTrust() override {
        ++trustRequests;
        return trusted;
    }

    [[nodiscard]] Task<Result> post(KeyEvent event) override { return record(event, {}); }

    [[nodiscard]] Task<Result> post(KeyEvent event, ProcessID process) override {
        return record(event, QStringLiteral(" -> %1").arg(process));
    }

    /// Adds a line of the test's own, at the present time.
    void note(const QString& text) {
        using std::chrono::duration_cast;
        using std::chrono::milliseconds;
        const auto elapsed =
            duration_cast<milliseconds>(m_scheduler.monotonicTime() - m_start).count();
        m_lines.append(QStringLiteral("%1 %2").arg(elapsed).arg(text));
    }

    /// Everything so far, a line each, without a line break at the end.
    [[nodiscard]] QString keystrokes() const { return m_lines.join(u'\n'); }

    bool trusted = true;
    /// How often the user was asked.
    int trustRequests = 0;
    /// What posting answers; impossible events aren't written down.
    Result answer = Result::posted;
    /// How long each key-down waits before it is posted, as for a modifier that is still held.
    Scheduler::Duration delay{0};

private:
    Task<Result> record(KeyEvent event, QString receiver) {
        const bool isDown = event.direction == KeyEvent::Direction::down;
        if (isDown && delay > Scheduler::Duration::zero()) {
            co_await m_scheduler.sleep(delay);
        }
        if (answer == Result::posted) {
            note(name(event) + (isDown ? QStringLiteral(" down") : QStringLiteral(" up")) +
                 receiver);
        }
        co_return answer;
    }

    static QString name(const KeyEvent& event) {
        const QString key =
            event.key == VirtualKey::v ? QStringLiteral("V") : QStringLiteral("Return");
        return event.modifiers == KeyModifiers::command ? QStringLiteral("Cmd+") + key : key;
    }

    Scheduler& m_scheduler;
    Scheduler::Duration m_start;
    QStringList m_lines;
};

} // namespace quorvin::testing
