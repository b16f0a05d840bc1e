#include "platform/linux/x11/ApplicationIdentifiers.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace quorvin {

namespace {

struct Terminal {
    QStringView name; // of a class or an executable, in lower case
    QStringView bundleIdentifier;
};

constexpr QStringView stockTerminal = u"com.apple.Terminal";

constexpr std::array terminals{
    Terminal{u"alacritty", u"org.alacritty"},
    Terminal{u"kitty", u"net.kovidgoyal.kitty"},
    Terminal{u"dev.warp.warp", u"dev.warp.Warp-Stable"},
    Terminal{u"warp-terminal", u"dev.warp.Warp-Stable"},
    Terminal{u"hyper", u"co.zeit.hyper"},

    Terminal{u"gnome-terminal", stockTerminal},
    Terminal{u"gnome-terminal-server", stockTerminal},
    Terminal{u"kgx", stockTerminal},
    Terminal{u"gnome-console", stockTerminal},
    Terminal{u"org.gnome.console", stockTerminal},
    Terminal{u"ptyxis", stockTerminal},
    Terminal{u"org.gnome.ptyxis", stockTerminal},
    Terminal{u"konsole", stockTerminal},
    Terminal{u"org.kde.konsole", stockTerminal},
    Terminal{u"yakuake", stockTerminal},
    Terminal{u"xfce4-terminal", stockTerminal},
    Terminal{u"mate-terminal", stockTerminal},
    Terminal{u"lxterminal", stockTerminal},
    Terminal{u"qterminal", stockTerminal},
    Terminal{u"io.elementary.terminal", stockTerminal},
    Terminal{u"deepin-terminal", stockTerminal},
    Terminal{u"terminator", stockTerminal},
    Terminal{u"tilix", stockTerminal},
    Terminal{u"xterm", stockTerminal},
    Terminal{u"uxterm", stockTerminal},
    Terminal{u"urxvt", stockTerminal},
    Terminal{u"urxvtd", stockTerminal},
    Terminal{u"rxvt", stockTerminal},
    Terminal{u"st", stockTerminal},
    Terminal{u"st-256color", stockTerminal},
    Terminal{u"foot", stockTerminal},
    Terminal{u"footclient", stockTerminal},
    Terminal{u"ghostty", stockTerminal},
    Terminal{u"com.mitchellh.ghostty", stockTerminal},
    Terminal{u"wezterm", stockTerminal},
    Terminal{u"wezterm-gui", stockTerminal},
    Terminal{u"org.wezfurlong.wezterm", stockTerminal},
};

} // namespace

std::optional<QString> terminalBundleIdentifier(const QString& windowInstance,
                                                const QString& windowClass,
                                                const QString& executable) {
    for (const QString& name : {windowClass, windowInstance, executable}) {
        const auto found =
            std::find_if(terminals.begin(), terminals.end(), [&name](const Terminal& terminal) {
                return terminal.name.compare(name, Qt::CaseInsensitive) == 0;
            });
        if (found != terminals.end()) {
            return found->bundleIdentifier.toString();
        }
    }
    return std::nullopt;
}

} // namespace quorvin
