#pragma once

#include "platform/Pasteboard.h"

#include <optional>

namespace quorvin::testing {

/// A pasteboard in memory. It refuses a text while the old one is still there, as the real one of
/// some systems does.
class FakePasteboard final : public Pasteboard {
public:
    void clearContents() override { contents.reset(); }

    void setString(const QString& text) override {
        if (!contents) {
            contents = text;
        }
    }

    /// What a paste gives.
    std::optional<QString> contents;
};

} // namespace quorvin::testing
