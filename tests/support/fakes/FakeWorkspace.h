#pragma once

#include "platform/Workspace.h"

#include <vector>

namespace quorvin::testing {

/// A desktop that a test lays out by hand: what is running and in front are plain fields, and so
/// are the requests that were made of it.
class FakeWorkspace final : public Workspace {
public:
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        return frontmost;
    }

    [[nodiscard]] std::vector<RunningApplication> runningApplications() override { return running; }

    Request activate(ProcessID processIdentifier) override {
        activated.push_back(processIdentifier);
        return activateAnswer;
    }

    Request openURL(const QString& url) override {
        openedURLs.push_back(url);
        return openURLAnswer;
    }

    std::optional<RunningApplication> frontmost;
    std::vector<RunningApplication> running;

    /// What the requests answer; they are recorded whatever the answer is.
    Request activateAnswer = Request::made;
    Request openURLAnswer = Request::made;

    std::vector<ProcessID> activated;
    std::vector<QString> openedURLs;
};

} // namespace quorvin::testing
