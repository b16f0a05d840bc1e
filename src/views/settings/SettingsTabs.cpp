#include "views/settings/SettingsTabs.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

struct Tab {
    QString title;
    QString symbol;
};

const Tab& at(SettingsTabs::SettingsTab tab) {
    static const std::array tabs{
        Tab{u"General"_s, u"gearshape.fill"_s},
        Tab{u"Audio"_s, u"mic.fill"_s},
        Tab{u"Appearance"_s, u"paintpalette.fill"_s},
        Tab{u"Agents"_s, u"cpu.fill"_s},
        Tab{u"Shortcuts"_s, u"keyboard.fill"_s},
        Tab{u"Permissions"_s, u"lock.shield.fill"_s},
        Tab{u"Updates"_s, u"arrow.down.circle.fill"_s},
        Tab{u"About"_s, u"info.circle.fill"_s},
    };
    return tabs.at(static_cast<std::size_t>(tab));
}

} // namespace

int SettingsTabs::count() {
    return static_cast<int>(SettingsTab::about) + 1;
}

QString SettingsTabs::title(SettingsTab tab) {
    return at(tab).title;
}

QString SettingsTabs::symbol(SettingsTab tab) {
    return at(tab).symbol;
}

} // namespace quorvin
