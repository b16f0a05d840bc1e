#pragma once

#include "platform/TextSelections.h"
#include "support/fakes/FakePasteboard.h"

namespace quorvin::testing {

/// A selection that the test makes, beside the pasteboard in memory.
class FakeTextSelections final : public TextSelections {
public:
    explicit FakeTextSelections(const FakePasteboard& pasteboard) : m_pasteboard(pasteboard) {}

    Task<std::optional<QString>> selectedText() override {
        co_return std::optional(selection); // the member itself would be moved out
    }
    Task<std::optional<QString>> pasteboardText() override { co_return m_pasteboard.contents; }

    std::optional<QString> selection;

private:
    const FakePasteboard& m_pasteboard;
};

} // namespace quorvin::testing
