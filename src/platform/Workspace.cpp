#include "platform/Workspace.h"

#include <algorithm>

namespace quorvin {

namespace {

template <typename Predicate>
std::optional<RunningApplication> firstOf(const std::vector<RunningApplication>& applications,
                                          Predicate matches) {
    const auto found = std::find_if(applications.begin(), applications.end(), matches);
    return found == applications.end() ? std::nullopt : std::optional(*found);
}

} // namespace

std::optional<RunningApplication> Workspace::application(ProcessID processIdentifier) {
    return firstOf(runningApplications(), [processIdentifier](const RunningApplication& candidate) {
        return candidate.processIdentifier == processIdentifier;
    });
}

std::optional<RunningApplication> Workspace::application(const QString& bundleIdentifier) {
    return firstOf(runningApplications(), [&bundleIdentifier](const RunningApplication& candidate) {
        return candidate.bundleIdentifier == bundleIdentifier;
    });
}

} // namespace quorvin
