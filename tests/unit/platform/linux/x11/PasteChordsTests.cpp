#include "platform/linux/x11/PasteChords.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr KeyChord shiftInsert{{XKB_KEY_Shift_L}, 1, XKB_KEY_Insert};
constexpr KeyChord controlShiftV{{XKB_KEY_Control_L, XKB_KEY_Shift_L}, 2, XKB_KEY_V};

} // namespace

TEST(PasteChords, AreShiftInsertForTerminalsAndForEverythingElse) {
    for (const QString& windowClass : {u"XTerm"_s, u"kitty"_s, u"Alacritty"_s, u"konsole"_s,
                                       u"Gnome-terminal"_s, u"firefox"_s, u""_s}) {
        EXPECT_EQ(pasteChord(windowClass), shiftInsert) << windowClass.toStdString();
    }
}

TEST(PasteChords, KnowTheTerminalsThatWantAnotherOne) {
    EXPECT_EQ(pasteChord(u"dev.warp.Warp"_s), controlShiftV);
    EXPECT_EQ(pasteChord(u"DEV.WARP.WARP"_s), controlShiftV);
}

TEST(PasteChords, ListTheModifiersInTheOrderOfPressing) {
    EXPECT_EQ(pasteChord(u"dev.warp.Warp"_s).modifiers()[0], xkb_keysym_t(XKB_KEY_Control_L));
    EXPECT_EQ(pasteChord(u"xterm"_s).modifiers().size(), 1U);
}
