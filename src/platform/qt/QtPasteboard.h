#pragma once

#include "platform/Pasteboard.h"

namespace quorvin {

/// The clipboard of the desktop. Where there is a primary selection besides (X11), it gets the same
/// text, since terminals differ in which of the two they paste. Needs the QGuiApplication, whose
/// event loop serves the text to other programs.
class QtPasteboard final : public Pasteboard {
public:
    void clearContents() override;
    void setString(const QString& text) override;
};

} // namespace quorvin
