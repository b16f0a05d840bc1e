#pragma once

#include <QString>

namespace quorvin {

/// The general pasteboard, from which other programs paste plain text. Main thread only.
class Pasteboard {
public:
    Pasteboard() = default;
    Pasteboard(const Pasteboard&) = delete;
    Pasteboard& operator=(const Pasteboard&) = delete;
    virtual ~Pasteboard() = default;

    /// Afterwards there is nothing to paste.
    virtual void clearContents() = 0;
    /// To be called on a pasteboard that has just been cleared. Afterwards `text` is what a paste
    /// gives in every program, until somebody copies something else or this program ends. Any
    /// length; line breaks stay as they are.
    virtual void setString(const QString& text) = 0;
};

} // namespace quorvin
