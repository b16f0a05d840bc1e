#pragma once

#include "support/Task.h"

#include <QString>

#include <optional>

namespace quorvin {

/// Reads the texts that programs hold ready for others, this one included. Main thread only.
class TextSelections {
public:
    TextSelections() = default;
    TextSelections(const TextSelections&) = delete;
    TextSelections& operator=(const TextSelections&) = delete;
    virtual ~TextSelections() = default;

    /// What the user has selected, in whichever program. Absent when nothing is selected, when the
    /// system doesn't tell, or when the program that owns it doesn't answer within a second.
    [[nodiscard]] virtual Task<std::optional<QString>> selectedText() = 0;
    /// What a paste from the general pasteboard would give; absent likewise.
    [[nodiscard]] virtual Task<std::optional<QString>> pasteboardText() = 0;
};

} // namespace quorvin
