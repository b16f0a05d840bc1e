#include "platform/linux/x11/ApplicationIdentifiers.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<QString> byClass(const QString& instanceName, const QString& className) {
    return terminalBundleIdentifier(instanceName, className, u"python3.11"_s);
}

} // namespace

TEST(ApplicationIdentifiers, TerminalsOfTheTableStandOnTheirOwnRows) {
    EXPECT_EQ(byClass(u"Alacritty"_s, u"Alacritty"_s), u"org.alacritty"_s);
    EXPECT_EQ(byClass(u"kitty"_s, u"kitty"_s), u"net.kovidgoyal.kitty"_s);
    EXPECT_EQ(byClass(u"dev.warp.Warp"_s, u"dev.warp.Warp"_s), u"dev.warp.Warp-Stable"_s);
    EXPECT_EQ(byClass(u"hyper"_s, u"Hyper"_s), u"co.zeit.hyper"_s);
}

TEST(ApplicationIdentifiers, StockTerminalsStandForTheSystemsOwn) {
    const std::pair<QString, QString> classes[] = {
        {u"gnome-terminal-server"_s, u"Gnome-terminal"_s},
        {u"kgx"_s, u"org.gnome.Console"_s},
        {u"konsole"_s, u"konsole"_s},
        {u"xfce4-terminal"_s, u"Xfce4-terminal"_s},
        {u"mate-terminal"_s, u"Mate-terminal"_s},
        {u"lxterminal"_s, u"Lxterminal"_s},
        {u"terminator"_s, u"Terminator"_s}, // written in Python, so known by its class alone
        {u"tilix"_s, u"Tilix"_s},
        {u"xterm"_s, u"XTerm"_s},
        {u"urxvt"_s, u"URxvt"_s},
        {u"st-256color"_s, u"st-256color"_s},
        {u"foot"_s, u"foot"_s},
        {u"ghostty"_s, u"com.mitchellh.ghostty"_s},
        {u"org.wezfurlong.wezterm"_s, u"org.wezfurlong.wezterm"_s},
    };
    for (const auto& [instanceName, className] : classes) {
        EXPECT_EQ(byClass(instanceName, className), u"com.apple.Terminal"_s)
            << qUtf8Printable(className);
    }
}

TEST(ApplicationIdentifiers, TheExecutableTellsWhereTheClassWasChanged) {
    EXPECT_EQ(terminalBundleIdentifier(u"scratchpad"_s, u"Scratchpad"_s, u"xterm"_s),
              u"com.apple.Terminal"_s);
    EXPECT_EQ(terminalBundleIdentifier(u"scratchpad"_s, u"Scratchpad"_s, u"kitty"_s),
              u"net.kovidgoyal.kitty"_s);
    EXPECT_EQ(terminalBundleIdentifier({}, {}, u"urxvtd"_s), u"com.apple.Terminal"_s);
}

TEST(ApplicationIdentifiers, TheClassComesBeforeTheExecutable) {
    EXPECT_EQ(terminalBundleIdentifier(u"Alacritty"_s, u"Alacritty"_s, u"kitty"_s),
              u"org.alacritty"_s);
}

TEST(ApplicationIdentifiers, OtherProgramsHaveNone) {
    EXPECT_EQ(terminalBundleIdentifier(u"Navigator"_s, u"firefox"_s, u"firefox"_s), std::nullopt);
    EXPECT_EQ(terminalBundleIdentifier(u"code"_s, u"Code"_s, u"code"_s), std::nullopt);
    EXPECT_EQ(terminalBundleIdentifier(u"xterm-like"_s, u"Stacer"_s, u"python3"_s), std::nullopt);
    EXPECT_EQ(terminalBundleIdentifier({}, {}, {}), std::nullopt);
}
