#include "platform/linux/x11/PasteChords.h"

#include <QStringView>

#include <algorithm>

namespace quorvin {

namespace {

struct ClassChord {
    QStringView windowClass;
    KeyChord chord;
};

// Understood by text fields as well as by terminals, and never asks about text of several lines,
// as some terminals do after Ctrl+Shift+V.
constexpr KeyChord shiftInsert{{XKB_KEY_Shift_L}, 1, XKB_KEY_Insert};
constexpr KeyChord controlShiftV{{XKB_KEY_Control_L, XKB_KEY_Shift_L}, 2, XKB_KEY_V};

// Those who don't know Shift+Insert.
constexpr std::array exceptions{
    ClassChord{u"dev.warp.Warp", controlShiftV},
};

} // namespace

KeyChord pasteChord(const QString& windowClass) {
    const auto* const found = std::find_if(
        exceptions.begin(), exceptions.end(), [&windowClass](const ClassChord& exception) {
            return exception.windowClass.compare(windowClass, Qt::CaseInsensitive) == 0;
        });
    return found == exceptions.end() ? shiftInsert : found->chord;
}

} // namespace quorvin
