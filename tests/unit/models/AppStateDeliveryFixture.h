#pragma once

#include "AppStateFixture.h"

namespace quorvin::testing {

/// A desktop with one terminal, in which agents can be started.
class Delivery : public AppStateTest {
protected:
    Delivery() { runTerminal(); }

    /// With the start-up's own lines in the feed already.
    AppState& start() {
        AppState& app = AppStateTest::start();
        scheduler.runPosted();
        return app;
    }

    /// A take has begun while that was in front, and was dropped.
    AppState& startWithTarget(const RunningApplication& target) {
        AppState& app = start();
        workspace.frontmost = target;
        app.startRecording();
        app.cancelRecording();
        return app;
    }

    /// Long enough for any delivery.
    void settle() { scheduler.advance(std::chrono::seconds(2)); }

    /// The messages that came after this call's moment.
    [[nodiscard]] QStringList feedSince(qsizetype mark) const { return feed().mid(mark); }

    const RunningApplication editor{5000, QStringLiteral("Editor"), std::nullopt};
    const QString terminalID = QStringLiteral("com.apple.Terminal");
    [[nodiscard]] static QUrl image(const QString& path) { return QUrl::fromLocalFile(path); }
};

} // namespace quorvin::testing
