#include "platform/linux/terminals/GnomeTerminalTabs.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

Task<TabControl::Answer> GnomeTerminalTabs::show(TerminalSession session,
                                                 const TerminalProcesses& /*processes*/) {
    const QString service =
        QString::fromUtf8(session.environment.value("GNOME_TERMINAL_SERVICE"_ba));
    const QString screen = QString::fromUtf8(session.environment.value("GNOME_TERMINAL_SCREEN"_ba));
    if (service.isEmpty() || screen.isEmpty()) {
        co_return Answer{};
    }
    // Another terminal that was started in a tab has inherited its environment.
    const std::optional<ProcessID> process = co_await m_bus.processOf(service);
    if (!process || !session.descendsFrom(*process)) {
        co_return Answer{};
    }
    // The object's path is the tab's identifier with the hyphens replaced.
    const QString identifier = screen.section(u'/', -1).replace(u'_', u'-');
    const SessionBus::Method activate{service, u"/org/gnome/Terminal/SearchProvider"_s,
                                      u"org.gnome.Shell.SearchProvider2"_s, u"ActivateResult"_s};
    const QVariantList arguments{identifier, QStringList(), m_windows.time()};
    const auto shown = co_await m_bus.call(activate, arguments);
    co_return Answer{shown ? TabFocus::Result::found : TabFocus::Result::notScriptable,
                     std::nullopt};
}

} // namespace quorvin
