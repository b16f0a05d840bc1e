#pragma once

#include <QStringView>

#include <array>

namespace quorvin {

/// A terminal application that sessions can be bound to.
struct TerminalApp {
    QStringView name;
    QStringView bundleID;
};

/// All of them. The order is a priority: of several that run, the first takes the sessions whose
/// own terminal can't be found.
inline constexpr std::array<TerminalApp, 6> terminalApps{{
    {u"iTerm", u"com.googlecode.iterm2"},
    {u"Terminal", u"com.apple.Terminal"},
    {u"Warp", u"dev.warp.Warp-Stable"},
    {u"Alacritty", u"org.alacritty"},
    {u"Kitty", u"net.kovidgoyal.kitty"},
    {u"Hyper", u"co.zeit.hyper"},
}};

} // namespace quorvin
